#!/usr/bin/env python3
"""Reads lines `size,picture,peer,op,best_mpx_s,median_mpx_s` and prints what they say of the library: its speed, against the best
peer, against the limit of the machine, and against what bench/targets.txt wants. Of lines that repeat, the best one counts."""
import argparse
import datetime
import re
import statistics
import sys
from pathlib import Path

HEADER = "size,picture,peer,op,best_mpx_s,median_mpx_s"
HERE = Path(__file__).resolve().parent
# What an operation of a kind has to move at least.
LIMITS = {"MEASURE": "byte-sum", "BLEND": "read-two-write-one", "EFFECT": "complement", "FILTER": "complement"}
# The library as a whole at another commit, and as it is now; "fennic" is its code in the program that the peers are in.
BEFORE, NOW = "before", "now"
NO_PEERS = {"fennic", "limit", "wasm", BEFORE, NOW}


def kinds():
    """{operation: kind}, of the list of all operations."""
    return {name: kind for kind, name in re.findall(r'^OPERATION\((\w+),[^"]*"([^"]+)"', (HERE.parent / "jni/Operations.def").read_text(), re.M)}


class Figures:
    """The best and the median of each (size, picture), peer and operation, in millions of pixels a second."""

    def __init__(self, lines):
        self.rows = {}
        for line in lines:
            fields = line.rstrip("\n").split(",")
            if line.rstrip("\n") == HEADER:
                continue
            if len(fields) != 6:
                sys.exit(f"benchmark: {line.strip()}")
            size, picture, peer, op, best, median = fields
            key = (int(size), picture), peer, op
            self.rows[key] = max(self.rows.get(key, (0.0, 0.0)), (float(best), float(median)))
            if sys.stderr.isatty():
                print(f"\r\x1b[K{size} x {size}  {picture}  {peer}  {op}", end="", file=sys.stderr, flush=True)
        if sys.stderr.isatty():
            print("\r\x1b[K", end="", file=sys.stderr)
        self.kinds = kinds()

    def motifs(self):
        return list(dict.fromkeys(motif for motif, _, _ in self.rows))

    def ops(self, motif, peer="fennic"):
        return [op for each, of, op in self.rows if (each, of) == (motif, peer)]

    def best(self, motif, peer, op):
        return self.rows.get((motif, peer, op), (None, None))[0]

    def best_peer(self, motif, op):
        """(Mpx/s, name) or None."""
        return max(((best, peer) for (each, peer, of), (best, _) in self.rows.items()
                    if (each, of) == (motif, op) and peer not in NO_PEERS), default=None)

    def kind(self, op):
        """Of a numbered operation the name stands before the number."""
        return self.kinds.get(op) or self.kinds.get(op.rpartition("-")[0])

    def ratio(self, motif, op, to):
        """None where there is nothing to compare with."""
        ours, other = self.best(motif, "fennic", op), None
        if to == "peer":
            peer = self.best_peer(motif, op)
            other = peer and peer[0]
        elif to == "before":
            ours, other = self.best(motif, NOW, op), self.best(motif, BEFORE, op)
        elif to == "at-1024":
            other = self.best((1024, motif[1]), "fennic", op)
        else:
            other = self.best(motif, "limit", to)
        return ours / other if ours and other else None


def column(ratio):
    return f"{ratio:8.2f}" if ratio else " " * 8


def print_motif(figures, motif):
    size, picture = motif
    print(f"\n{size} x {size}, {picture}, Mpx/s")
    print(f"{'':19}{'best':>8}{'median':>8}  {'best peer':15}{'ratio':>8}  {'limit':18}{'ratio':>8}{'before':>8}")
    for op in figures.ops(motif, "limit"):
        print("{:19}{:8.0f}{:8.0f}".format(f"({op})", *figures.rows[motif, "limit", op]))
    for op in figures.ops(motif):
        best, median = figures.rows[motif, "fennic", op]
        peer, limit = figures.best_peer(motif, op), LIMITS[figures.kind(op)]
        peer_column = f"{peer[1]:8}{peer[0]:7.0f}" if peer else " " * 15
        ratios = [column(figures.ratio(motif, op, to)) for to in ("peer", limit, "before")]
        print(f"{op:19}{best:8.0f}{median:8.0f}  {peer_column}{ratios[0]}  {limit:18}{ratios[1]}{ratios[2]}".rstrip())
    compared = [ratio for op in figures.ops(motif) if figures.kind(op) == "BLEND" and (ratio := figures.ratio(motif, op, "peer"))]
    if compared:
        print(f"Geometric mean of {len(compared)} blends against the best peer of each: {statistics.geometric_mean(compared):.2f}")


def print_calls(figures, motif):
    """A call on one pixel: its cost, since the bitmap calls behind it do nothing."""
    cost = {op: 1000 / figures.best(motif, "fennic", op) for op in figures.ops(motif)}
    print(f"\nA call on 1 x 1: {sorted(cost.values())[len(cost) // 2]:.0f} ns in the middle; over 200 ns: "
          + ", ".join(f"{op} {each:.0f}" for op, each in cost.items() if each > 200))


def print_targets(figures, lines, vectors):
    """Met or not, line by line; below a line that is not met what fails, with the ratios found."""
    print("\nWhat is wanted")
    for line in lines:
        words = line.partition("#")[0].split()
        if not words:
            continue
        motif, wanted = (int(words[0]), words[1]), words[2]
        wishes = [word.split(">=") for word in words[3:] if ">=" in word]
        names = [word for word in words[3:] if ">=" not in word]
        if wanted not in ("*", vectors):
            continue
        found = {op: [(figures.ratio(motif, op, to), float(least)) for to, least in wishes] for op in figures.ops(motif)
                 if "*" in names or op in names or figures.kind(op) in names}
        found = {op: known for op, each in found.items() if (known := [pair for pair in each if pair[0]])}
        if not found:
            continue
        failing = {op: each for op, each in found.items() if not any(ratio >= least for ratio, least in each)}
        wish = " or ".join(f"{to} >= {least}" for to, least in wishes)
        what = " ".join(names).replace("*", "all")
        print(f"{'NOT met' if failing else 'met    '}  {motif[0]:4} {motif[1]:10} {wish}: {what}" +
              (f" ({len(found) - len(failing)} of {len(found)})" if failing else ""))
        for op, each in sorted(failing.items(), key=lambda item: max(ratio / least for ratio, least in item[1])):
            print(f"{'':15}{op:19}" + " ".join(f"{ratio:.2f}" for ratio, _ in each))


def print_readme(figures):
    """A table of all operations with a peer, each beside its fastest peer on each picture."""
    pictures = [motif for motif in figures.motifs() if motif[0] == 1024 and motif[1] != "clear"]
    print("| | " + " | ".join(picture for _, picture in pictures) + " |\n|---" + "|---:" * len(pictures) + "|")
    for op in figures.ops(pictures[0]):
        peers = [(figures.best(motif, "fennic", op), figures.best_peer(motif, op)) for motif in pictures]
        if all(peer for _, peer in peers):
            print(f"| {op} | " + " | ".join(f"{ours:.0f} ({peer[1]} {peer[0]:.0f})" for ours, peer in peers) + " |")


def print_beside(names, figures, others, peer="fennic"):
    """The library's code and another form of it, side by side."""
    print(f"\n{'1024 x 1024, Mpx/s':19}{names[0]:>8}{names[1]:>8}{'ratio':>8}")
    motif = 1024, "random"
    ratios = []
    for op in others.ops(motif, peer):
        best, slower = figures.best(motif, "fennic", op), others.best(motif, peer, op)
        ratios.append(best / slower)
        print(f"{op:19}{best:8.0f}{slower:8.0f}{best / slower:8.2f}")
    print(f"{len(ratios)} operations: in the middle {statistics.median(ratios):.2f}, geometric mean "
          f"{statistics.geometric_mean(ratios):.2f}, over 6: {sum(ratio > 6 for ratio in ratios)}")


def machine():
    """The processor's name, and the widest vectors that the library has code for."""
    text = Path("/proc/cpuinfo").read_text(encoding="utf-8")
    model = re.search(r"^model name\s*:\s*(.*)$", text, re.MULTILINE)
    vectors = next((name for flag, name in (("avx512vl", "AVX-512"), ("avx2", "AVX2")) if flag in text), "none")
    return model.group(1) if model else "unknown processor", vectors


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--csv", metavar="FILE", action="append", default=[], help="keep the lines in a file")
    parser.add_argument("--oldest", metavar="FILE", help="compare with the lines of a file, which are of the oldest level")
    parser.add_argument("--wasm", metavar="FILE", help="compare with the lines of a file, which are of the WebAssembly module")
    parser.add_argument("--readme", action="store_true", help="only the README's table")
    options = parser.parse_args()
    figures = Figures(sys.stdin)
    for path in options.csv:
        with open(path, "w", encoding="utf-8") as csv:
            print(HEADER, file=csv)
            for ((size, picture), peer, op), (best, median) in figures.rows.items():
                print(f"{size},{picture},{peer},{op},{best:.2f},{median:.2f}", file=csv)
    processor, vectors = machine()
    print(f"{processor}, {vectors}, {datetime.date.today()}, one thread")
    if options.readme:
        print_readme(figures)
    elif options.oldest:
        with open(options.oldest, encoding="utf-8") as oldest:
            print_beside(("newest", "oldest"), figures, Figures(oldest))
    elif options.wasm:
        with open(options.wasm, encoding="utf-8") as wasm:
            print_beside(("native", "wasm"), figures, Figures(wasm), "wasm")
    else:
        for motif in sorted(figures.motifs()):
            if motif[0] == 1:
                print_calls(figures, motif)
            else:
                print_motif(figures, motif)
        print_targets(figures, (HERE / "targets.txt").read_text(encoding="utf-8").splitlines(), vectors)


if __name__ == "__main__":
    main()
