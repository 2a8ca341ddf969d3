#!/usr/bin/env python3
"""Reads lines `size,peer,op,best_mpx_s,median_mpx_s` and prints what they say of the library: its speed, against the best peer,
against the limit of the machine that fits the operation, and against the targets. Of lines that repeat, the best one counts."""
import argparse
import datetime
import math
import re
import sys

# The targets, at 1024 x 1024: so many times the best peer; and such a share of the limit, or at least so many Mpx/s.
TARGETS = {}


def target(names, limit, peer=None, share=None, floor=None):
    for name in names.split():
        TARGETS[name] = (limit, peer, share, floor)


BLENDS_WITH_PEERS = "darken multiply color-burn lighten screen color-dodge overlay soft-light hard-light difference exclusion hue"
target(BLENDS_WITH_PEERS, "float-line-of-two", peer=1.25)
target("soft-light", "float-line-of-two", peer=1.1)
target("linear-burn darker-color linear-dodge lighter-color overlay-b hard-light-b linear-light pin-light hard-mix subtract "
       "channel-through channel-through-2", "float-line-of-two", share=0.5)
# Divisions and square roots bound these.
target("color-burn-b overlay-c vivid-light divide add " + " ".join(f"mode-{mode}" for mode in range(3, 24)),
       "float-line-of-two", share=0.5, floor=1200)
target("visible invisible cut-off outside", "byte-sum", peer=2, share=0.5)
target("average average-from-alpha", "byte-sum", peer=8, share=0.5)
target("median", "byte-sum", peer=0.5)
target("complement pick-channel", "complement", share=0.8)
target("alpha", "float-line", share=0.8)
target("sepia saturation monochrome sharpen emboss", "float-line", peer=2)
target("exposure vignette black-and-white pixelate kuwahara", "float-line", peer=1)
target("invert erase-white greatest-channel", "complement")
target("relief", "float-line-of-two")
OTHERWISE = ("float-line", None, None, None)

GEOMETRIC_MEAN = 1.5  # of the blends that peers have, against the best of these
SMALL = 0.9           # of its ratio at 1024 x 1024 an operation keeps at 192 x 192
CALL_NANOSECONDS = 200
BASELINE = 6  # times slower than x86-64-v3 may the code for the oldest processors be


def read(lines):
    """{size: {peer: {op: (best, median)}}}, with a word about the progress on a terminal."""
    results = {}
    for line in lines:
        if line.startswith("size,"):
            continue
        fields = line.rstrip("\n").split(",")
        if len(fields) != 5:
            sys.exit(f"benchmark: {line.strip()}")
        size, peer, op, best, median = fields
        ops = results.setdefault(int(size), {}).setdefault(peer, {})
        ops[op] = max(ops.get(op, (0.0, 0.0)), (float(best), float(median)))
        if sys.stderr.isatty():
            print(f"\r\x1b[K{size} x {size}  {peer}  {op}", end="", file=sys.stderr, flush=True)
    if sys.stderr.isatty():
        print("\r\x1b[K", end="", file=sys.stderr)
    return results


def best_peer(of_size, op):
    """(Mpx/s, name) or None."""
    return max(((ops[op][0], peer) for peer, ops in of_size.items() if peer not in ("fennic", "limit") and op in ops),
               default=None)


def ratios(of_size, op):
    """Ours against the best peer and against the limit; None where there is nothing to compare with."""
    ours = of_size["fennic"][op][0]
    peer = best_peer(of_size, op)
    limit = of_size.get("limit", {}).get(TARGETS.get(op, OTHERWISE)[0])
    return ours / peer[0] if peer else None, ours / limit[0] if limit else None


def verdict(results, size, op):
    """The target in words and whether it is met."""
    of_size = results[size]
    to_peer, to_limit = ratios(of_size, op)
    if size == 192:
        reference = results.get(1024, {})
        if op not in reference.get("fennic", {}):
            return ""
        before = ratios(reference, op)
        now, before = (to_peer, before[0]) if to_peer and before[0] else (to_limit, before[1])
        if not now or not before:
            return ""
        return said(f"{SMALL} of {before:.2f} at 1024", now >= SMALL * before)
    if size != 1024:
        return ""
    _, peer, share, floor = TARGETS.get(op, OTHERWISE)
    wanted, met = [], True
    if peer and to_peer:
        wanted.append(f"{peer} x peer")
        met &= to_peer >= peer
    if share and to_limit:
        wanted.append(f"{share} of limit" + (f" or {floor}" if floor else ""))
        met &= to_limit >= share or (floor is not None and of_size["fennic"][op][0] >= floor)
    return said(", ".join(wanted), met) if wanted else ""


def said(wanted, met):
    return f"{'met    ' if met else 'NOT met'}  {wanted}"


def print_size(results, size):
    of_size = results[size]
    print(f"\n{size} x {size}, Mpx/s")
    print(f"{'':19}{'best':>8}{'median':>8}  {'best peer':15}{'ratio':>7}   {'limit':25}{'ratio':>5}   target")
    for name, (best, median) in of_size.get("limit", {}).items():
        print(f"{'(' + name + ')':19}{best:8.0f}{median:8.0f}")
    for op, (best, median) in of_size.get("fennic", {}).items():
        peer = best_peer(of_size, op)
        to_peer, to_limit = ratios(of_size, op)
        limit = TARGETS.get(op, OTHERWISE)[0]
        peer_columns = f"{peer[1]:8}{peer[0]:7.0f}{to_peer:7.2f}" if peer else f"{'':22}"
        limit_columns = f"{limit:18}{of_size['limit'][limit][0]:7.0f}{to_limit:5.2f}" if to_limit else f"{'':30}"
        print(f"{op:19}{best:8.0f}{median:8.0f}  {peer_columns}   {limit_columns}   {verdict(results, size, op)}".rstrip())
    blends = [ratio for op in BLENDS_WITH_PEERS.split() if op in of_size.get("fennic", {}) and (ratio := ratios(of_size, op)[0])]
    if blends:
        mean = math.exp(sum(map(math.log, blends)) / len(blends))
        verdict_of_mean = said(f"{GEOMETRIC_MEAN} x peer", mean >= GEOMETRIC_MEAN) if size == 1024 else ""
        print(f"Geometric mean of {len(blends)} blends against the best peer of each: {mean:.2f}   {verdict_of_mean}".rstrip())


def print_calls(of_size):
    """A call on one pixel: its cost, since the bitmap calls behind it do nothing."""
    cost = {op: 1000 / best for op, (best, _) in of_size.get("fennic", {}).items()}
    over = [op for op in cost if cost[op] > CALL_NANOSECONDS]
    middle = sorted(cost.values())[len(cost) // 2]
    print(f"\nA call on 1 x 1: {middle:.0f} ns in the middle   {said(f'each at most {CALL_NANOSECONDS} ns', not over)}")
    for op in over:
        print(f"  {op} {cost[op]:.0f} ns")


def print_baseline(results, baseline):
    """The code of two processor levels, side by side."""
    print(f"\n{'1024 x 1024, Mpx/s':19}{'v3':>8}{'baseline':>10}{'ratio':>7}   target")
    for op, (best, _) in results[1024]["fennic"].items():
        slower = baseline[1024]["fennic"][op][0]
        print(f"{op:19}{best:8.0f}{slower:10.0f}{best / slower:7.2f}   {said(f'at most {BASELINE}', best <= BASELINE * slower)}")


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as cpuinfo:
        text = cpuinfo.read()
    model = re.search(r"^model name\s*:\s*(.*)$", text, re.MULTILINE)
    vectors = next((name for flag, name in (("avx512vl", "AVX-512"), ("avx2", "AVX2")) if flag in text), "no AVX2")
    return f"{model.group(1) if model else 'unknown processor'}, {vectors}"


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--csv", metavar="FILE", action="append", default=[], help="keep the lines in a file")
    parser.add_argument("--baseline", metavar="FILE", help="compare with the lines of a file, which are of the oldest level")
    options = parser.parse_args()
    results = read(sys.stdin)
    for path in options.csv:
        with open(path, "w", encoding="utf-8") as csv:
            print("size,peer,op,best_mpx_s,median_mpx_s", file=csv)
            for size, peers in results.items():
                for peer, ops in peers.items():
                    for op, (best, median) in ops.items():
                        print(f"{size},{peer},{op},{best:.2f},{median:.2f}", file=csv)
    print(f"{machine()}, {datetime.date.today()}, one thread; random premultiplied pixels")
    if options.baseline:
        with open(options.baseline, encoding="utf-8") as baseline:
            print_baseline(results, read(baseline))
        return
    for size in sorted(results):
        if size == 1:
            print_calls(results[size])
        else:
            print_size(results, size)


if __name__ == "__main__":
    main()
