"""Checks in the machine code that the pixel loops are vectorised, and that nothing stayed out of line.

usage: check_vectorised.py BINARY --level LEVEL --machine MACHINE --compiler ID [--objdump PROGRAM] [--leak-free] [--list]

For every operation that jni/Operations.def lists as a BLEND or EFFECT, the binary must hold a loop that stores whole vectors of the level's
width, computes on such vectors, and makes no call and no arithmetic on single floats. A build with clones is checked clone by
clone; its default clone, for processors without fused multiply-add, is not (the plain baseline build is).
"""

import argparse
import collections
import re
import subprocess
import sys
from pathlib import Path

arguments = argparse.ArgumentParser()
arguments.add_argument("binary")
arguments.add_argument("--level", required=True)
arguments.add_argument("--machine", required=True)
arguments.add_argument("--compiler", required=True)
arguments.add_argument("--objdump", default="objdump")
arguments.add_argument("--leak-free", action="store_true", help="the build allocates nothing per pixel")
arguments.add_argument("--list", action="store_true", help="one line for every loop that passes")
options = arguments.parse_args()

# How many loops an operation must have, where it is not one: one for each formula of the mode-indexed blend and its modes without
# one, and, in a build that allocates nothing, for its whole colours; exclusion's two stores.
expected_loops = {"KorvGraphics2D::BitmapExclusion": 2, "KorvPSBlendingMode::TkPSBlendingMode": 21 if options.leak_free else 20}
# What no loop of vectors computes: a table of 256 results, one sincosf for each pixel of a swirl, and pixels that each start from the
# last one's sums (Kuwahara); what allocates for every pixel in the default build; what does not pay in SSE2's pairs of doubles; and
# where g++ 12 keeps a branch, in the filters around the truncation of a clamped value.
exempt = {"KorvGraphics2D::EraseGray", "KorvImageFilter::BitmapSwirl", "KorvImageFilter::BitmapKuwahara"}
if not options.leak_free:
    exempt |= {"KorvGraphics2D::BitmapHue"}
if options.level == "x86-64":
    exempt |= {"KorvGraphics2D::BitmapDenoise"}
if options.compiler == "GNU":
    exempt |= {"KorvGraphics2D::BitmapAdd", "KorvGraphics2D::BitmapCrosshatch"}
    filters = ["Sepia", "Saturation", "Exposure", "MonoChrome", "Vignette", "Sharpness", "Emboss"]
    exempt |= {f"KorvImageFilter::Bitmap{filter}" for filter in filters}

# The only functions of the library beside its methods: a rule, a combinator or a frame among them would have left its clone.
out_of_line = {"_ZL7logRectRK6Pixels", "_ZnamRKSt9nothrow_t", "_ZdaPv", "_ZdaPvm"}

arm = options.machine == "aarch64"
registers = {"x86-64-v4": "%zmm", "x86-64-v3": "%ymm", "x86-64": "%xmm"}
branch = re.compile(r"(b\.?\w*|cbn?z|tbn?z)\s" if arm else r"j\w+\s")
call = re.compile(r"(bl|blr)\s" if arm else r"call")
single = re.compile(r"f(mul|add|sub|div|madd|msub|sqrt)\s+s\d" if arm else r"v?(mul|add|sub|div|sqrt|fn?m(add|sub)\w*)ss\s")


def vector_store(text, register):
    if arm:
        return re.match(r"st[rp1u]\w*\s+(\{\s*)?[qv]\d", text)
    return re.match(rf"v?mov\w+\s+{register}\d+,\S*\(", text)


def vector_arithmetic(text, register):
    if arm:
        return re.match(r"(f\w+|add|sub|mul|mla|eor|and|bic|bsl|bit|bif|cm\w+|[su]min|[su]max|\w*cvt\w*)\s+v\d+\.", text)
    return re.match(rf"v?((mul|add|sub|div|sqrt|fn?m\w+|cvt\w+|and|or|xor)(ps|pd|dq)|p(add|sub|mul|and|or|xor|cmp|min|max|s[lr]l|shuf|tern)\w*)\s.*{register}", text)


def loops(instructions):
    """The innermost loops: spans from a backward branch's target to the branch with no other such span inside."""
    spans = []
    for index, (address, text) in enumerate(instructions):
        target = branch.match(text) and re.search(r"\b([0-9a-f]{3,})\b(?=\s*<|$)", text)
        if target and instructions[0][0] <= int(target[1], 16) <= address:
            spans.append((int(target[1], 16), index))
    for start, end in spans:
        body = [text for address, text in instructions[: end + 1] if address >= start]
        inner = [s for s, e in spans if (s, e) != (start, end) and s >= start and e <= end]
        if not inner:
            yield body


def functions():
    disassembly = subprocess.run([options.objdump, "-d", "--no-show-raw-insn", options.binary], check=True, capture_output=True, text=True)
    name, instructions = None, []
    for line in disassembly.stdout.splitlines():
        if header := re.match(r"[0-9a-f]+ <(.*)>:$", line):
            yield name, instructions
            name, instructions = header[1], []
        elif instruction := re.match(r"\s*([0-9a-f]+):\s+(\S.*)", line):
            instructions.append((int(instruction[1], 16), instruction[2]))
    yield name, instructions


def method_and_clone(symbol):
    """Class::method and the clone's suffix of a mangled static method, else None; c++filt does not know clang's suffixes."""
    symbol = symbol.removesuffix("@plt")
    name, _, clone = symbol.partition(".")
    parts, rest = [], name[3:] if name.startswith("_ZN") else ""
    while length := re.match(r"\d+", rest):
        end = length.end() + int(length[0])
        parts.append(rest[length.end() : end])
        rest = rest[end:]
    return ("::".join(parts), clone) if len(parts) == 2 and rest.startswith("E") else None


table = (Path(__file__).resolve().parent.parent / "jni/Operations.def").read_text()
lines = re.findall(r'^(?:BLEND|EFFECT)\(\w+,\s*(\w+),\s*(\w+),\s*"([^"]+)"', table, re.M)
listed = {f"{type}::{method}": name for type, method, name in lines}
overloads = collections.Counter(f"{type}::{method}" for type, method, name in lines)
found, faults = {}, []
for symbol, instructions in functions():
    method = symbol and method_and_clone(symbol)
    if options.level == "clones" and symbol and symbol.startswith("_Z") and not method and symbol not in out_of_line:
        faults.append(f"{symbol} stayed out of line")
    if not method or method[0] not in listed or method[0] in exempt:
        continue
    name, clone = method[0], method[1].replace("_v", "-v").replace("x86_64", "x86-64")
    if options.level == "clones" and not clone.startswith("arch_"):
        continue
    level = re.search(r"x86-64-v\d", clone)[0] if clone else options.level
    register = "" if arm else registers[level]
    good = [
        body
        for body in loops(instructions)
        if any(vector_store(text, register) for text in body)
        and any(vector_arithmetic(text, register) for text in body)
        and not any(call.match(text) or single.match(text) for text in body)
    ]
    found.setdefault(name, []).append(level)
    wanted = expected_loops.get(name, 1)
    if good and options.list:
        print(f"{listed[name]:24} {level:10} {min(map(len, good)):4} instructions, {len(good)} loops")
    if len(good) < wanted:
        faults.append(f"{name} ({listed[name]}, {level}) has {len(good)} vector loops of {wanted}")

for name in sorted(set(listed) - exempt):
    versions = overloads[name] * (2 if options.level == "clones" else 1)
    if len(found.get(name, [])) != versions:
        faults.append(f"{name}: {len(found.get(name, []))} of {versions} versions found")
for fault in faults:
    print(fault)
print(f"{len(listed)} operations, {len(exempt)} exempt: {'not all vectorised' if faults or not listed else 'vectorised'}")
sys.exit(1 if faults or not listed else 0)
