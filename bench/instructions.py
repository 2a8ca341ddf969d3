#!/usr/bin/env python3
"""Counts the arm64 instructions that each operation takes for a pixel.

qemu runs a program one instruction at a time and writes a line for each; the lines between the program's marks are counted. A
pixel's cost is what 16 more rows of 64 pixels take. Beside it stands what the same pixel costs in ideal surroundings
(bench/Ideal.h): the loop alone, over rows of a length that the compiler knows. Counts don't depend on the machine, so they are
held against a kept table, which is renewed by

    bench/instructions.py build/benchmark-arm64 > bench/arm64-instructions.txt

With --emulator qemu-arm-static --plain it counts those of 32-bit ARM, which knows no ideal (the preset benchmark-armel).
"""
import argparse
import os
import subprocess
import sys

TOLERANCE = 0.05  # of the kept count
LIMIT = 1.5  # times the ideal
SEARCHES = {"outside"}  # whose steps depend on the picture
IDEAL = 512, 6  # the size that bench/Ideal.h knows


def counts(emulator, program, width, height):
    """The instructions of each operation on a picture of that size."""
    # Old and new qemu know the mode by different names.
    environment = os.environ | {"QEMU_SINGLESTEP": "1", "QEMU_ONE_INSN_PER_TB": "1"}
    command = [emulator, "-d", "exec,nochain", "-D", "/dev/stderr", program, str(width), str(height)]
    found, start = [], 0
    with subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as qemu:
        for number, line in enumerate(qemu.stderr):
            if line.endswith(b"] count_from\n"):
                start = number
            elif line.endswith(b"] count_to\n"):
                found.append(number - start)
        operations = qemu.stdout.read().decode().split()
    if qemu.returncode or len(found) != len(operations):
        sys.exit(f"{program} failed under qemu")
    return dict(zip(operations, found))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", help="with run_fennic and run_ideal, built for arm64")
    parser.add_argument("--emulator", default="qemu-aarch64-static")
    parser.add_argument("--plain", action="store_true", help="without the ideal loops")
    parser.add_argument("--check", metavar="FILE", help=f"fails where an operation is {TOLERANCE:.0%} away from this table, or "
                        f"takes more than {LIMIT} times its ideal")
    options = parser.parse_args()
    low, high = (counts(options.emulator, f"{options.folder}/run_fennic", 64, height) for height in (8, 24))
    table = {op: (high[op] - low[op]) / (64 * 16) for op in high}
    ideal = {} if options.plain else counts(options.emulator, f"{options.folder}/run_ideal", *IDEAL)
    ideal = {op: count / (IDEAL[0] * IDEAL[1]) for op, count in ideal.items()}
    print("# Instructions for a pixel, and in an ideal loop, by bench/instructions.py")
    for op, per_pixel in table.items():
        print(f"{op:20}{per_pixel:9.2f}" + (f"{ideal[op]:9.2f}" if ideal else ""))
    if not options.check:
        return
    with open(options.check, encoding="utf-8") as file:
        kept = {op: float(count) for op, count, _ in (line.split() for line in file if not line.startswith("#"))}
    faults = [f"{op}: {kept.get(op, 'not')} kept, {table.get(op, 'not')} counted" for op in sorted(table.keys() | kept.keys())
              if op not in table or op not in kept or abs(table[op] - kept[op]) > TOLERANCE * kept[op]]
    faults += [f"{op}: more than {LIMIT} times its ideal" for op in table.keys() - SEARCHES if table[op] > LIMIT * ideal[op]]
    sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
