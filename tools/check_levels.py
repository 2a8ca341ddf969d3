"""Checks that no code may wander from one processor level to another.

usage: check_levels.py [--nm PROGRAM] OBJECT...

An inline function with external linkage is weak: of several copies the linker keeps one, and if that were a newer level's, the oldest
processors would run it. So nothing that a level's object defines may be weak but what bears the name of that level. The level of an
object is that of the functions it defines.
"""

import argparse
import re
import subprocess
import sys

arguments = argparse.ArgumentParser()
arguments.add_argument("--nm", default="nm")
arguments.add_argument("objects", nargs="+")
options = arguments.parse_args()

faults, levels = [], {}
for path in options.objects:
    lines = subprocess.run([options.nm, "--defined-only", path], check=True, capture_output=True, text=True).stdout.splitlines()
    symbols = [line.split()[-2:] for line in lines]
    named = {match[1] for kind, name in symbols if kind == "T" and (match := re.match(r"_ZN\d+(level_(?:baseline|v\d))", name))}
    if len(named) != 1:
        faults.append(f"{path}: functions of {len(named)} levels")
        continue
    level = named.pop()
    levels[level] = levels.get(level, 0) + 1
    faults += [f"{path}: {name} may be shared" for kind, name in symbols if kind in "WVuw" and level not in name]

for fault in faults:
    print(fault)
if len(set(levels.values())) != 1:
    faults.append("levels of unlike size")
print(", ".join(f"{count} objects of {level}" for level, count in sorted(levels.items())) + (": wrong" if faults else ": apart"))
sys.exit(1 if faults else 0)
