#!/usr/bin/env python3
"""Counts the arm64 instructions that each operation takes for a pixel.

qemu runs the program run_once one instruction at a time and writes a line for each; the lines between the program's marks are
counted. Counts don't depend on the machine, so they are held against a kept table, which is renewed by

    bench/instructions.py build/benchmark-arm64/run_once > bench/arm64-instructions.txt
"""
import argparse
import os
import subprocess
import sys

PIXELS = 64 * (24 - 8)  # by which the two runs of an operation differ
TOLERANCE = 0.05


def counts(program):
    """How many instructions run between each pair of marks, and what the program prints."""
    # Old and new qemu know the mode by different names.
    environment = os.environ | {"QEMU_SINGLESTEP": "1", "QEMU_ONE_INSN_PER_TB": "1"}
    command = ["qemu-aarch64-static", "-d", "exec,nochain", "-D", "/dev/stderr", program]
    found, start = [], 0
    with subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as qemu:
        for number, line in enumerate(qemu.stderr):
            if line.endswith(b"] count_from\n"):
                start = number
            elif line.endswith(b"] count_to\n"):
                found.append(number - start)
        operations = qemu.stdout.read().decode().split()
    if qemu.returncode or len(found) != 2 * len(operations):
        sys.exit(f"{program} failed under qemu")
    return operations, found


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", help="run_once, built for arm64")
    parser.add_argument("--check", metavar="FILE", help=f"fails where an operation is {TOLERANCE:.0%} away from this table")
    options = parser.parse_args()
    operations, found = counts(options.program)
    table = {op: (found[2 * i + 1] - found[2 * i]) / PIXELS for i, op in enumerate(operations)}
    print("# arm64 instructions for a pixel, by bench/instructions.py")
    for op, per_pixel in table.items():
        print(f"{op:20}{per_pixel:9.2f}")
    if not options.check:
        return
    with open(options.check, encoding="utf-8") as file:
        kept = {op: float(count) for op, count in (line.split() for line in file if not line.startswith("#"))}
    different = [op for op in table.keys() | kept.keys()
                 if op not in table or op not in kept or abs(table[op] - kept[op]) > TOLERANCE * kept[op]]
    for op in sorted(different):
        print(f"{op}: {kept.get(op, 'not')} kept, {table.get(op, 'not')} counted", file=sys.stderr)
    sys.exit(1 if different else 0)


if __name__ == "__main__":
    main()
