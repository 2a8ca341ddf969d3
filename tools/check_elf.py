"""Checks that Android's loader takes the library, from API 21 on and with pages of 16 KB, and that it brings nothing it should not.

usage: check_elf.py LIBRARY ABI

What it may take from the platform stands in android/symbols.txt; what it must export, tools/check_exports.py knows.
"""

import re
import subprocess
import sys
from pathlib import Path

root = Path(__file__).resolve().parent.parent
library, abi = sys.argv[1:]
page = 0x4000
# By ABI: class, machine, and what the header's flags must say (ARM: version 5 of its EABI, floats in general registers).
expected_header = {
    "arm64-v8a": ("ELF64", "AArch64", "0x0"),
    "armeabi-v7a": ("ELF32", "ARM", "0x5000200"),
    "x86_64": ("ELF64", "Advanced Micro Devices X86-64", "0x0"),
    "x86": ("ELF32", "Intel 80386", "0x0"),
}[abi]
# Nothing runs while it is loaded, and nothing is written into its code; packed relocations are newer than API 21.
forbidden = set("TEXTREL RPATH RUNPATH RELR ANDROID_REL ANDROID_RELA ANDROID_RELR INIT INIT_ARRAY PREINIT_ARRAY FINI FINI_ARRAY VERNEED"
                .split())


def readelf(*options):
    return subprocess.run(["llvm-readelf-19", "--wide", *options, library], check=True, capture_output=True, text=True).stdout


def field(name):
    found = re.search(rf"^ +{name}: +(.*)$", header, re.M)
    return found[1] if found else None


header = readelf("--file-header")
tags = re.findall(r"^ +0x\w+ \((\w+)\) +(.*)$", readelf("--dynamic-table"), re.M)
names = {tag for tag, _ in tags}
needed = {value[len("Shared library: ["):-1] for tag, value in tags if tag == "NEEDED"}
# type, offset, address, size in the file, size in memory, flags, alignment
segments = []
for line in readelf("--program-headers").splitlines():
    if match := re.match(r" +(\w+) +(0x\w+) (0x\w+) 0x\w+ (0x\w+) (0x\w+) ([RWE ]{3}) (0x\w+)$", line):
        segments.append((match[1], *(int(number, 16) for number in match.groups()[1:5]), match[6], int(match[7], 16)))
loads = [segment for segment in segments if segment[0] == "LOAD"]
symbols = [line.split() for line in readelf("--dyn-symbols").splitlines() if re.match(r" +[1-9]\d*:", line)]
undefined = {words[7] for words in symbols if words[6] == "UND"}
exported = {words[7] for words in symbols if words[6] != "UND"}
permitted = {}
for line in (root / "android/symbols.txt").read_text().splitlines():
    if line.startswith("lib"):
        permitted.setdefault(line.split()[0], set()).update(line.split()[1:])
available = set().union(*(permitted[name] for name in needed & permitted.keys()))
relocations = set(re.findall(r"\bR_\w+", readelf("--relocations")))

faults = []


def demand(holds, fault):
    if not holds:
        faults.append(fault)


demand((field("Class"), field("Machine"), field("Flags")) == expected_header,
       f"header says {field('Class')}, {field('Machine')}, flags {field('Flags')}")
demand(field("Type") == "DYN (Shared object file)", f"type {field('Type')}")
demand(int(field("Number of section headers")) > 0, "no section headers, which the loader asks for")
demand(("SONAME", f"Library soname: [{Path(library).name}]") in tags, "another soname than the file's name")
demand(needed <= permitted.keys(), f"needs {sorted(needed - permitted.keys())}")
for tag in sorted(names & forbidden):
    demand(False, f"has {tag}")
demand({"HASH", "GNU_HASH"} <= names, "not both hash tables: API 21 knows the older one, 23 the newer one")
demand(any(tag == "FLAGS" and "BIND_NOW" in value.split() for tag, value in tags), "symbols are bound late")
demand(len(loads) > 0, "no segments")
for _, offset, address, _, _, flags, alignment in loads:
    demand(alignment == page, f"a segment is aligned to {alignment:#x}, not 16 KB")
    demand((address - offset) % page == 0, f"the segment at {address:#x} does not lie on its place in the file")
    demand(not ("W" in flags and "E" in flags), f"the segment at {address:#x} can be written and run")
relro = [segment for segment in segments if segment[0] == "GNU_RELRO"]
for _, _, address, _, size, _, _ in relro:
    # Whole pages are protected: others' data in the last one would be, too, or what should be protected is not.
    end = address + size
    demand(end % page == 0 or any(end == load[2] + load[4] for load in loads), f"what is to be protected ends at {end:#x}, inside a page")
demand(len(relro) == 1, "nothing is protected after relocation")
demand([segment[5].strip() for segment in segments if segment[0] == "GNU_STACK"] == ["RW"], "the stack can be run")
demand(not any(segment[0] == "TLS" for segment in segments), "has variables of threads")
demand(not any("IRELATIVE" in each for each in relocations), "chooses functions while it is loaded")
demand(not any(words[3] in ("IFUNC", "TLS") for words in symbols), "exports a resolver or a thread's variable")
demand("NT_GNU_BUILD_ID" in readelf("--notes"), "no build id to find its symbols by")
for name in sorted(undefined - available):
    demand(False, f"takes {name}, which API 21's libraries may not have")
for name in sorted(name for name in exported if re.match(r"_ZN?K?S|_Zn|_Zd|_ZT|__|_U", name)):
    demand(False, f"exports {name} of a runtime")

for fault in faults:
    print(fault)
size = Path(library).stat().st_size
print(f"{abi}: {size} bytes, {len(undefined)} symbols of {', '.join(sorted(needed))}: {'wrong' if faults else 'as Android takes it'}")
sys.exit(1 if faults else 0)
