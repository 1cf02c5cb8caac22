#!/usr/bin/env python3
"""Times `pvcompare --content` against its peers on the same data, in one run,
the two of each case interleaved (as bench/speed.py does), and prints medians:

  pvcompare -s --content, 20,000 files of 1-64 KiB in 2,000 directories, 1 %
  changed (half of those keeping their length)     against  diff -rq
                                                   and      rsync -rnc
  pvcompare --content, two identical large files   against  cmp

Targets (warm cache, 2 cores): at most 0.8x diff -rq, 0.5x rsync -rnc, 1.0x cmp.

Usage: bench/content.py [--build DIR] [--runs N] [--big-mib N] [--data DIR]
"""

import argparse
import os
import random
import shutil
import statistics
import sys
import tempfile

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from speed import same_time, timed, write  # noqa: E402


def build_tree(root):
    marker = os.path.join(root, ".complete")
    if os.path.exists(marker):
        return
    shutil.rmtree(root, ignore_errors=True)
    rnd = random.Random(23)
    n = 0
    for d in range(2000):
        rel = os.path.join("d%02d" % (d // 100), "e%02d" % (d % 100))
        left = os.path.join(root, "left", rel)
        right = os.path.join(root, "right", rel)
        os.makedirs(left)
        os.makedirs(right)
        for f in range(10):
            n += 1
            body = rnd.randbytes(rnd.randint(1024, 64 * 1024))
            other = body
            if n % 100 == 0:  # 1 % changed: half keep their length
                other = body[:-1] + bytes([body[-1] ^ 1]) if n % 200 == 0 else body + b"+"
            name = "f%02d.dat" % f
            write(os.path.join(left, name), body)
            write(os.path.join(right, name), other)
            same_time(os.path.join(left, name), os.path.join(right, name))
    write(marker, b"")


def build_big(root, mib):
    marker = os.path.join(root, ".complete%d" % mib)
    if os.path.exists(marker):
        return
    shutil.rmtree(root, ignore_errors=True)
    for side in ("left", "right"):
        os.makedirs(os.path.join(root, side))
    block = random.Random(1).randbytes(1 << 20)
    for side in ("left", "right"):
        with open(os.path.join(root, side, "big.bin"), "wb") as f:
            for _ in range(mib):
                f.write(block)
    same_time(os.path.join(root, "left", "big.bin"), os.path.join(root, "right", "big.bin"))
    write(marker, b"")


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    ap = argparse.ArgumentParser()
    ap.add_argument("--build", default=os.path.join(here, "..", "build"))
    ap.add_argument("--runs", type=int, default=5)
    ap.add_argument("--big-mib", type=int, default=1024)
    ap.add_argument("--data", default=None)
    args = ap.parse_args()

    pvcompare = os.path.join(args.build, "src", "pvcompare")
    if not os.access(pvcompare, os.X_OK):
        sys.exit("%s not found: build the target pvcompare first" % pvcompare)
    data = args.data or tempfile.mkdtemp(prefix="pairview-content.")
    home = os.path.join(data, "home")
    os.makedirs(home, exist_ok=True)
    os.environ["PAIRVIEW_HOME"] = home

    tree, big = os.path.join(data, "tree"), os.path.join(data, "big")
    build_tree(tree)
    build_big(big, args.big_mib)
    tl, tr = os.path.join(tree, "left"), os.path.join(tree, "right")
    bl, br = os.path.join(big, "left"), os.path.join(big, "right")
    ours_tree = [pvcompare, "-s", "--content", tl, tr]
    cases = [
        ("tree: diff -rq", ours_tree, ["diff", "-rq", tl, tr], 0.8),
        ("tree: rsync -rnc", ours_tree,
         ["rsync", "-rnc", "--itemize-changes", tl + "/", tr + "/"], 0.5),
        ("%d MiB identical: cmp" % args.big_mib, [pvcompare, "--content", bl, br],
         ["cmp", os.path.join(bl, "big.bin"), os.path.join(br, "big.bin")], 1.0),
    ]
    times = {label: ([], []) for label, *_ in cases}
    for r in range(args.runs + 1):  # round 0 warms the page cache
        for label, ours, peer, _ in cases:
            pair = [(0, ours), (1, peer)]
            if r % 2:
                pair.reverse()
            for who, command in pair:
                t = timed(command, os.path.join(data, "output.txt"))
                if r:
                    times[label][who].append(t)

    print("%-28s %9s %9s %6s %7s   %9s %9s" % ("case (%d runs)" % args.runs, "Pairview", "peer",
                                             "ratio", "target", "CPU ours", "CPU peer"))
    for label, _, _, target in cases:
        ours, theirs = times[label]
        oe = statistics.median(t[0] for t in ours)
        pe = statistics.median(t[0] for t in theirs)
        print("%-28s %8.3fs %8.3fs %5.2fx %6.1fx   %8.3fs %8.3fs" %
              (label, oe, pe, oe / pe, target, statistics.median(t[1] for t in ours),
               statistics.median(t[1] for t in theirs)))
    if not args.data:
        shutil.rmtree(data, ignore_errors=True)


if __name__ == "__main__":
    main()
