"""What the checks of published files share: faults are collected, told at the end, and decide how the program ends."""

import re
import subprocess
import sys
from pathlib import Path

root = Path(__file__).resolve().parent.parent
version = re.search(r"project\(fennic VERSION ([\d.]+)", (root / "CMakeLists.txt").read_text())[1]
faults = []


def demand(holds, fault):
    if not holds:
        faults.append(fault)


def run(*command, **options):
    done = subprocess.run([str(word) for word in command], capture_output=True, text=True, **options)
    demand(done.returncode == 0, f"{' '.join(map(str, command[:2]))}: {(done.stdout + done.stderr)[-1000:]}")
    return done.stdout


def finish(what, good):
    for fault in faults:
        print(fault)
    print(f"{what}: {'wrong' if faults else good}")
    sys.exit(1 if faults else 0)
