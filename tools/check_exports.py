"""Checks the built library's boundary: what it exports, what it needs, and what it must not contain.

usage: check_exports.py LIBRARY

Exported must be exactly: one native for every line of jni/Operations.def that names one, and for every one that the Java class
declares; the public static methods that the class headers declare; and the one global. Needed libraries: libjnigraphics, liblog,
libm, libc.
"""

import re
import subprocess
import sys
from pathlib import Path

root = Path(__file__).resolve().parent.parent
library = sys.argv[1]
prefix, native_count = "Java_com_velmora_display_fennic_VelUIBitmapUtils_", 66


def tool(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def declared_methods():
    for header in sorted((root / "jni").glob("Korv*.h")):
        text = re.sub(r"//.*", "", header.read_text())
        for name, body in re.findall(r"class[^{;]*?(\w+) \{(.*?)\n\};", text, re.S):
            for method in re.findall(r"\bstatic\s+[\w\s*]+?[\s*](\w+)\(", body):
                yield f"{name}::{method}"


symbols = [line.split() for line in tool("nm", "--dynamic", "--defined-only", "--demangle", library).splitlines()]
exported = [" ".join(words[2:]) for words in symbols]
natives = {name for name in exported if name.startswith("Java_")}
methods = sorted(name.split("(")[0] for name in exported if "::" in name)
others = {name for name in exported if not name.startswith("Java_") and "::" not in name}

listed = re.findall(r"^OPERATION\(\w+, *(native\w+)", (root / "jni/Operations.def").read_text(), re.M)
expected_natives = {prefix + name for name in listed}
java = (root / "java/com/velmora/display/fennic/VelUIBitmapUtils.java").read_text()
java_natives = {prefix + name for name in re.findall(r"\bnative \w+ (\w+)\(", java)}
needed = set(re.findall(r"NEEDED.*\[(.*)\]", tool("readelf", "--dynamic", "--wide", library)))
allowed = re.compile(r"(libjnigraphics|liblog|libm|libc)\.so(\.\d+)?")
soname = re.findall(r"SONAME.*\[(.*)\]", tool("readelf", "--dynamic", "--wide", library))
alignment = {int(line.split()[-1], 16) for line in tool("readelf", "--segments", "--wide", library).splitlines() if " LOAD " in line}

faults = [f"not exported: {name}" for name in sorted(expected_natives - natives)]
faults += [f"exported, but not in the list of operations: {name}" for name in sorted(natives - expected_natives)]
faults += [f"declared in Java, but not exported: {name}" for name in sorted(java_natives - natives)]
faults += [f"exported, but not declared in Java: {name}" for name in sorted(natives - java_natives)]
faults += [f"{len(natives)} natives, not {native_count}"] if len(natives) != native_count else []
faults += [f"declared, but not exported: {name}" for name in sorted(set(declared_methods()) - set(methods))]
faults += [f"exported, but not declared: {name}" for name in sorted(set(methods) - set(declared_methods()))]
faults += [f"exported, but no part of the interface: {name}" for name in sorted(others - {"numaaaa"})]
faults += [f"needs {name}" for name in sorted(needed) if not allowed.fullmatch(name)]
faults += [f"soname {soname}, not libfennic.so"] if soname != ["libfennic.so"] else []
faults += [f"segments aligned to {alignment}, less than 16 KB"] if min(alignment) < 0x4000 else []
if not listed or not methods:
    faults.append("nothing to compare: the list or the library is empty")

for fault in faults:
    print(fault)
print(f"{len(natives)} natives, {len(methods)} methods, needs {' '.join(sorted(needed))}: {'wrong' if faults else 'as declared'}")
sys.exit(1 if faults else 0)
