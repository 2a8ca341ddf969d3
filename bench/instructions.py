#!/usr/bin/env python3
"""Counts the arm64 instructions that each operation takes for a pixel.

qemu runs a program one instruction at a time and writes a line for each; the lines between the program's marks are counted, and
among them the divisions, each of which may be of one number or of a vector of four. A pixel's cost is what 4 more rows of 512
random pixels take. Beside it stands what the same pixel costs in ideal surroundings (bench/Ideal.h): the loop alone, over rows of a
length that the compiler knows; and what it costs Debian's pixman for arm64. Counts don't depend on the machine, so they are held
against a kept table, which is renewed by

    bench/instructions.py build/benchmark-arm64 > bench/arm64-instructions.txt

With --emulator qemu-arm-static it counts those of 32-bit ARM, which knows no ideal (the preset benchmark-armel).
"""
import argparse
import os
import re
import subprocess
import sys

TOLERANCE = 0.05  # of the kept count
LIMIT = 1.5  # times the ideal
SEARCHES = {"outside"}  # whose steps depend on the picture
IDEAL = 512, 6  # the size that bench/Ideal.h knows


def divisions(program):
    """The addresses of its instructions that divide."""
    listing = subprocess.run(["llvm-objdump-19", "-d", "--no-show-raw-insn", program], capture_output=True, text=True, check=True)
    return {int(address, 16) for address in re.findall(r"^ *([0-9a-f]+):\s+[fus]div\s", listing.stdout, re.M)}


def counts(emulator, program, width, height):
    """Of each operation on a picture of that size: (instructions, divisions)."""
    dividing = divisions(program)
    # Old and new qemu know the mode by different names.
    environment = os.environ | {"QEMU_SINGLESTEP": "1", "QEMU_ONE_INSN_PER_TB": "1", "QEMU_LD_PREFIX": "/usr/aarch64-linux-gnu"}
    command = [emulator, "-d", "exec,nochain", "-D", "/dev/stderr", program, str(width), str(height)]
    found, start, divided = [], 0, 0
    with subprocess.Popen(command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as qemu:
        for number, line in enumerate(qemu.stderr):
            if line.endswith(b"] count_from\n"):
                start, divided = number, 0
            elif line.endswith(b"] count_to\n"):
                found.append((number - start, divided))
            elif int(line.split(b"/", 2)[1], 16) in dividing:
                divided += 1
        operations = qemu.stdout.read().decode().split()
    if qemu.returncode or len(found) != len(operations):
        sys.exit(f"{program} failed under qemu")
    return dict(zip(operations, found))


def for_a_pixel(emulator, program):
    """{operation: (instructions, divisions)}"""
    low, high = (counts(emulator, program, 512, height) for height in (2, 6))
    return {op: tuple((more - less) / (512 * 4) for more, less in zip(high[op], low[op])) for op in high}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", help="with run_fennic, run_ideal and run_pixman, built for arm64")
    parser.add_argument("--emulator", default="qemu-aarch64-static")
    parser.add_argument("--check", metavar="FILE", help=f"fails where an operation is {TOLERANCE:.0%} away from this table, or "
                        f"takes more than {LIMIT} times its ideal")
    options = parser.parse_args()
    table = for_a_pixel(options.emulator, f"{options.folder}/run_fennic")
    ideal, pixman = f"{options.folder}/run_ideal", f"{options.folder}/run_pixman"
    ideal = counts(options.emulator, ideal, *IDEAL) if os.path.exists(ideal) else {}
    ideal = {op: count / (IDEAL[0] * IDEAL[1]) for op, (count, _) in ideal.items()}
    pixman = for_a_pixel(options.emulator, pixman) if os.path.exists(pixman) else {}
    print("# For a pixel: instructions, these in an ideal loop, divisions among them, pixman's instructions; by bench/instructions.py")
    for op, (count, divided) in table.items():
        columns = [count, ideal.get(op), divided, pixman.get(op, [None])[0]]
        print(f"{op:20}" + "".join(f"{each:9.2f}" for each in columns if each is not None))
    if not options.check:
        return
    with open(options.check, encoding="utf-8") as file:
        kept = {line.split()[0]: float(line.split()[1]) for line in file if not line.startswith("#")}
    faults = [f"{op}: {kept.get(op, 'not')} kept, {table[op][0] if op in table else 'not'} counted"
              for op in sorted(table.keys() | kept.keys())
              if op not in table or op not in kept or abs(table[op][0] - kept[op]) > TOLERANCE * kept[op]]
    faults += [f"{op}: more than {LIMIT} times its ideal" for op in table.keys() - SEARCHES if table[op][0] > LIMIT * ideal[op]]
    sys.exit("\n".join(faults))


if __name__ == "__main__":
    main()
