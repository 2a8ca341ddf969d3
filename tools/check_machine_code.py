"""Checks in the machine code that the pixel loops are vectorised, and that no operation leaves its processor level.

usage: check_machine_code.py BINARY --levels LEVEL... --machine MACHINE [--objdump PROGRAM] [--calls-only] [--list]

For every blend, effect and filter of jni/Operations.def but the "scalar" ones, the code of each level must hold a loop that stores
whole vectors of the level's width, computes on such vectors, and makes no call and no arithmetic on single floats. It may stand in
a function of the same level that the operation calls. What a level calls beside its own functions must be known below.

32-bit x86 owes the same as the oldest 64-bit level, and so does WebAssembly, whose one level calls what its linker lets it. On ARMv7 loops stay scalar, and must: its vectors take denormals for 0, so no
float may be in one.
"""

import argparse
import re
import subprocess
import sys
from pathlib import Path

arguments = argparse.ArgumentParser()
arguments.add_argument("binary")
arguments.add_argument("--levels", nargs="+", required=True)
arguments.add_argument("--machine", required=True)
arguments.add_argument("--objdump", default="objdump")
arguments.add_argument("--calls-only", action="store_true", help="loops may be scalar")
arguments.add_argument("--list", action="store_true", help="one line for every loop that passes")
options = arguments.parse_args()

# How many loops an operation must have, where it is not one: exclusion's two stores; two for each formula of the numbered modes and
# for modes without one, since opaque pixels have a loop of their own, and one for those of whole colours.
expected_loops = {"BitmapExclusion": 2, "TkPSBlendingMode": 43}
# What a level may call: the platform, and of the library its memory.
outside = re.compile(r"(AndroidBitmap_\w+|__android_log_print|fprintf|abort|mem(set|cpy)|free|malloc|fmod|tan|atan|sin|sincosf|exp2|"
                     r"nextafterf|_Zna[jm]\w*|_ZdaPv\w*|_Z11leaveArraysi|__aeabi_\w+|__u?(div|mod)[ds]i3)(@plt)?|\*.*")

arm, arm32, wasm = (options.machine == machine for machine in ("aarch64", "armv7-a", "wasm32"))
registers = {"v4": "%zmm", "v3": "%ymm", "baseline": "%xmm"}
branch = re.compile(r"(b\.?\w*|cbn?z|tbn?z)\s" if arm or arm32 else r"j\w+\s")
call = re.compile(r"(bl|blx|blr)\s" if arm or arm32 else r"call")
float_vector = re.compile(r"v\w+(\.f32\s+d\d|\.\w+\s+.*\bq\d)")
single = re.compile(r"f32\.(mul|add|sub|div|sqrt)\s*$" if wasm else r"f(mul|add|sub|div|madd|msub|sqrt)\s+s\d" if arm else r"v?(mul|add|sub|div|sqrt|fn?m(add|sub)\w*)ss\s")


def vector_store(text, register):
    if wasm:
        return re.match(r"v128\.store\s", text)
    if arm:
        return re.match(r"st[rp1u]\w*\s+(\{\s*)?[qv]\d", text)
    return re.match(rf"v?mov\w+\s+{register}\d+,\S*\(", text)


def vector_arithmetic(text, register):
    if wasm:
        return re.match(r"([fi]\d+x\d+\.(?!load|store|splat|extract|replace)|v128\.(and|or|xor|not|bitselect))", text)
    if arm:
        return re.match(r"(f\w+|add|sub|mul|mla|eor|and|bic|bsl|bit|bif|cm\w+|[su]min|[su]max|\w*cvt\w*)\s+v\d+\.", text)
    return re.match(rf"v?((mul|add|sub|div|sqrt|fn?m\w+|cvt\w+|and|or|xor)(ps|pd|dq)|p(add|sub|mul|and|or|xor|cmp|min|max|s[lr]l|shuf|tern)\w*)\s.*{register}", text)


def loops(instructions):
    """The innermost loops: spans from a backward branch's target to the branch with no other such span inside."""
    spans = []
    if wasm:
        yield from structured_loops(instructions)
        return
    for index, (address, text) in enumerate(instructions):
        target = branch.match(text) and re.search(r"\b([0-9a-f]{3,})\b(?=\s*<|$)", text)
        if target and instructions[0][0] <= int(target[1], 16) <= address:
            spans.append((int(target[1], 16), index))
    for start, end in spans:
        body = [text for address, text in instructions[: end + 1] if address >= start]
        inner = [s for s, e in spans if (s, e) != (start, end) and s >= start and e <= end]
        if not inner:
            yield body


def structured_loops(instructions):
    """The same of WebAssembly, where they are nested: from `loop` to its `end`."""
    opened = []
    for index, (_, text) in enumerate(instructions):
        word = text.split()[0]
        if word in ("block", "loop", "if", "try"):
            opened.append([word, index, True])
        elif word == "end" and opened:
            kind, start, innermost = opened.pop()
            if kind == "loop":
                if innermost:
                    yield [each for _, each in instructions[start : index + 1]]
                opened = [[each, at, False] for each, at, _ in opened]


def functions():
    """Every function of a level: symbol and instructions."""
    disassembly = subprocess.run([options.objdump, "-d", "--no-show-raw-insn", options.binary], check=True, capture_output=True, text=True)
    found, instructions = {}, []
    for line in disassembly.stdout.splitlines():
        if header := re.match(r"[0-9a-f]+ <(.*)>:$", line):
            instructions = found.setdefault(header[1], [])
        elif instruction := re.match(r"\s*([0-9a-f]+):\s+(\S.*)", line):
            instructions.append((int(instruction[1], 16), instruction[2]))
    return {symbol: body for symbol, body in found.items() if level_of(symbol) and "@plt" not in symbol}


def level_of(symbol):
    if wasm:  # names are not mangled
        return "baseline" if "level_baseline::" in symbol else None
    match = re.match(r"_Z+NK?\d+level_(baseline|v3|v4)", symbol)
    return match[1] if match else None


def method_of(symbol):
    """The name of a level's free function, None for anything else."""
    if wasm:  # or of the one that it is an instance for: calls go by number
        match = re.search(r"level_baseline::(\w+)\(", symbol)
        return match and match[1]
    match = re.match(r"_ZN\d+level_(?:baseline|v3|v4)(\d+)(.*)", symbol)
    return match[2][: int(match[1])] if match and match[2][int(match[1]) :].startswith("E") else None


def callees(instructions):
    """What a function calls or jumps to outside of itself."""
    for _, text in instructions:
        if (call.match(text) or branch.match(text) or re.match(r"jmp|b\s", text)) and (target := re.search(r"<([^>+]*)>$", text)):
            yield target[1]


table = (Path(__file__).resolve().parent.parent / "jni/Operations.def").read_text()
rows = re.findall(r'^OPERATION\((?:BLEND|EFFECT|FILTER|INNER),\s*\w+,\s*\w+,\s*(\w+),\s*"([^"]+)",\s*\w+,\s*"[^"]*",\s*"([^"]*)"', table, re.M)
def scalar(traits, level):
    return not {"scalar", f"scalar-{level}"}.isdisjoint(traits.split())


code, faults, checked = functions(), [], 0

for symbol, instructions in code.items():
    for callee in [] if wasm else callees(instructions):
        if level_of(callee) != level_of(symbol) and not outside.fullmatch(callee):
            faults.append(f"{symbol} leaves its level for {callee}")
    if arm32 and (text := next((text for _, text in instructions if float_vector.match(text)), None)):
        faults.append(f"{symbol} has a vector: {text}")

for level in options.levels:
    register = registers[level]
    if options.calls_only or arm32:
        continue
    listed = [(method, name) for method, name, traits in rows if not scalar(traits, level)]
    for method in sorted({method for method, _ in listed}):
        names = [name for each, name in listed if each == method]
        wanted = expected_loops.get(method, 1) * len(names)
        waiting = [symbol for symbol in code if level_of(symbol) == level and method_of(symbol) == method]
        reached = set()
        while waiting:
            symbol = waiting.pop()
            if symbol in code and level_of(symbol) == level and symbol not in reached:
                reached.add(symbol)
                waiting += callees(code[symbol])
        good = [body for symbol in reached for body in loops(code[symbol])
                if any(vector_store(text, register) for text in body)
                and any(vector_arithmetic(text, register) for text in body)
                and not any(call.match(text) or single.match(text) for text in body)]
        checked += 1
        if good and options.list:
            print(f"{' '.join(names):24} {level:10} {min(map(len, good)):4} instructions, {len(good)} loops")
        if len(good) < wanted:
            faults.append(f"{method} ({', '.join(names)}) at {level}: {len(good)} vector loops of {wanted}")

for fault in faults:
    print(fault)
nothing = not code or not (checked or options.calls_only or arm32)
print(f"{len(code)} functions at {', '.join(options.levels)}, loops of {checked} methods: {'wrong' if faults or nothing else 'as wanted'}")
sys.exit(1 if faults or nothing else 0)
