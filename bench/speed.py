#!/usr/bin/env python3
"""Times Pairview's tools against their peers on the same data, in one run.

Each case runs the Pairview command and its peer in pairs, the two interleaved
(the order alternates from round to round, so a burst of load on a shared
machine hits both), and prints the median of each and their ratio:

  pvcompare flat / nested / large tree   against  rsync -rn --itemize-changes
  fc text (100 changed lines)            against  diff
  fc /lb32767 and fc /lb1000 /1000 on files that differ everywhere
                                         against  diff
  fc /b (1,000 differing bytes)          against  cmp -l
  xcopy /s /e /i                         against  cp -r

Usage: bench/speed.py [--build DIR] [--runs N] [--large N] [--data DIR] [--only NAME]

--large sets the file count of the large nested tree (default 200,000 in 2,000
directories; 1000000 builds the million-file pair, which takes a few minutes and
about 2 million inodes). --data keeps the generated trees and files in DIR, so a
second run skips building them. The compare window is timed by bench/compare_trees.
"""

import argparse
import os
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

DAY_AGO = time.time() - 86400


def write(path, data):
    with open(path, "wb") as f:
        f.write(data)


def same_time(*paths):
    for p in paths:
        os.utime(p, (DAY_AGO, DAY_AGO))


def build_pair(root, dirs, per_dir):
    """Two trees with dirs x per_dir files each; about 2 % differ or are on one side."""
    marker = os.path.join(root, ".complete")
    if os.path.exists(marker):
        return
    shutil.rmtree(root, ignore_errors=True)
    n = 0
    for d in range(dirs):
        rel = "" if dirs == 1 else os.path.join("d%03d" % (d // 100), "e%03d" % (d % 100))
        left = os.path.join(root, "left", rel)
        right = os.path.join(root, "right", rel)
        os.makedirs(left, exist_ok=True)
        os.makedirs(right, exist_ok=True)
        for f in range(per_dir):
            n += 1
            name = "file%06d.txt" % f
            body = b"line %d\n" % n
            kind = n % 150
            if kind == 1:  # left only
                write(os.path.join(left, name), body)
                continue
            if kind == 2:  # right only
                write(os.path.join(right, name), body)
                continue
            write(os.path.join(left, name), body)
            write(os.path.join(right, name), body + (b"changed\n" if kind == 3 else b""))
            same_time(os.path.join(left, name), os.path.join(right, name))
    write(marker, b"")


def build_files(data):
    marker = os.path.join(data, "files.complete")
    if os.path.exists(marker):
        return
    lines = 50 * 1024 * 1024 // 64
    text = b"".join(b"line %010d the quick brown fox jumps over the lazy dog %06d\r\n"
                    % (i, i % 997) for i in range(lines))
    write(os.path.join(data, "a.txt"), text)
    # Every line different from a.txt's (and from each other).
    write(os.path.join(data, "other.txt"), b"".join(
        b"LINE %010d THE QUICK BROWN FOX JUMPS OVER THE LAZY DOG %06d\r\n" % (i, i % 991)
        for i in range(lines)))
    changed = bytearray(text)
    step = lines // 101
    for k in range(1, 101):  # 100 one-line changes spread over the file
        at = k * step * 64 + 50
        changed[at:at + 3] = b"cat"
    write(os.path.join(data, "b.txt"), bytes(changed))
    blob = bytearray(os.urandom(50 * 1024 * 1024))
    write(os.path.join(data, "a.bin"), bytes(blob))
    import random
    rng = random.Random(7)
    for _ in range(1000):
        pos = rng.randrange(len(blob))
        blob[pos] ^= 0x5A
    write(os.path.join(data, "b.bin"), bytes(blob))
    write(marker, b"")


def build_copy_source(root):
    marker = os.path.join(root, ".complete")
    if os.path.exists(marker):
        return
    shutil.rmtree(root, ignore_errors=True)
    for d in range(100):
        sub = os.path.join(root, "src", "d%02d" % (d // 10), "e%d" % (d % 10))
        os.makedirs(sub, exist_ok=True)
        for f in range(100):
            write(os.path.join(sub, "f%03d.dat" % f), b"x" * (100 + 37 * f))
    os.makedirs(os.path.join(root, "src", "empty"), exist_ok=True)
    write(marker, b"")


def timed(command, output, before=None):
    """Elapsed and CPU (user + system, children included) seconds of one run.

    The output goes to a real file: some tools (cmp) notice /dev/null and stop at
    the first difference."""
    if before:
        before()
    r0 = resource.getrusage(resource.RUSAGE_CHILDREN)
    t0 = time.perf_counter()
    with open(output, "wb") as out:
        subprocess.run(command, stdout=out, stderr=subprocess.DEVNULL)
    elapsed = time.perf_counter() - t0
    r1 = resource.getrusage(resource.RUSAGE_CHILDREN)
    return elapsed, (r1.ru_utime - r0.ru_utime) + (r1.ru_stime - r0.ru_stime)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    ap = argparse.ArgumentParser()
    ap.add_argument("--build", default=os.path.join(here, "..", "build"))
    ap.add_argument("--runs", type=int, default=5)
    ap.add_argument("--large", type=int, default=200000)
    ap.add_argument("--data", default=None)
    ap.add_argument("--only", default=None, help="run only the cases whose name holds this")
    args = ap.parse_args()

    pvcompare = os.path.join(args.build, "src", "pvcompare")
    pvcmd = os.path.join(args.build, "src", "pvcmd")
    for tool in (pvcompare, pvcmd):
        if not os.access(tool, os.X_OK):
            sys.exit("%s not found: build the targets pvcompare and pvcmd first" % tool)
    have_rsync = shutil.which("rsync") is not None
    data = args.data or tempfile.mkdtemp(prefix="pairview-bench.")
    os.makedirs(data, exist_ok=True)
    home = os.path.join(data, "home")  # where pvcompare writes its script and results file
    os.makedirs(home, exist_ok=True)
    write(os.path.join(home, "Pairview.ini"),
          b"[COMPARECONTROL]\r\nLIST_DateTime=True\r\nLIST_Length=True\r\n")
    env = dict(os.environ, PAIRVIEW_HOME=home)
    os.environ.update(env)

    large_dirs = max(1, args.large // 100)
    trees = {
        "flat20k": (1, 20000),
        "nested50k": (5000, 10),
        "flat100k": (1, 100000),
        "large": (large_dirs, args.large // large_dirs),
    }
    cases = []
    for name, (dirs, per) in trees.items():
        label = "pvcompare %s" % ("large %d files in %d dirs" % (dirs * per, dirs)
                                  if name == "large" else name)
        root = os.path.join(data, name)
        sub = ["-s"] if dirs > 1 else []
        cases.append((label, lambda r=root, d=dirs, p=per: build_pair(r, d, p),
                      [pvcompare] + sub + [os.path.join(root, "left"), os.path.join(root, "right")],
                      ["rsync", "-rn", "--itemize-changes", os.path.join(root, "left") + "/",
                       os.path.join(root, "right") + "/"] if have_rsync else None, None))
    f = lambda n: os.path.join(data, n)
    files = lambda: build_files(data)
    cases += [
        ("fc text, 100 changed lines", files, [pvcmd, "fc", f("a.txt"), f("b.txt")],
         ["diff", f("a.txt"), f("b.txt")], None),
        ("fc /lb32767, all lines differ", files, [pvcmd, "fc", "/lb32767", f("a.txt"), f("other.txt")],
         ["diff", f("a.txt"), f("other.txt")], None),
        ("fc /lb1000 /1000, all differ", files,
         [pvcmd, "fc", "/lb1000", "/1000", f("a.txt"), f("other.txt")],
         ["diff", f("a.txt"), f("other.txt")], None),
        ("fc /b, 1000 bytes differ", files, [pvcmd, "fc", "/b", f("a.bin"), f("b.bin")],
         ["cmp", "-l", f("a.bin"), f("b.bin")], None),
    ]
    copy_root = os.path.join(data, "copy")
    dest = os.path.join(copy_root, "dest")
    clear = lambda: shutil.rmtree(dest, ignore_errors=True)
    cases.append(("xcopy /s /e, 10,000 files", lambda: build_copy_source(copy_root),
                  [pvcmd, "xcopy", "/s", "/e", "/i", "/q", "/y", os.path.join(copy_root, "src"), dest],
                  ["cp", "-r", os.path.join(copy_root, "src"), dest], clear))
    if args.only:
        cases = [c for c in cases if args.only in c[0]]

    for label, prepare, _, _, _ in cases:
        t0 = time.perf_counter()
        prepare()
        spent = time.perf_counter() - t0
        if spent > 1:
            print("prepared %-36s in %.0f s" % (label, spent), flush=True)

    times = {label: ([], []) for label, *_ in cases}
    for r in range(args.runs + 1):  # round 0 warms the page cache and is not counted
        for label, _, ours, peer, before in cases:
            pair = [("ours", ours), ("peer", peer)]
            if r % 2:
                pair.reverse()
            for who, command in pair:
                if command is None:
                    continue
                t = timed(command, os.path.join(data, "output.txt"), before)
                if r:
                    times[label][0 if who == "ours" else 1].append(t)
    clear()

    # Elapsed time is what a user waits; CPU time is steadier on a shared machine.
    print("%-38s %25s   %25s" % ("", "elapsed (median)", "CPU, user + system (median)"))
    print("%-38s %9s %8s %6s   %9s %8s %6s" % ("case (%d runs)" % args.runs, "Pairview", "peer",
                                              "ratio", "Pairview", "peer", "ratio"))
    for label, _, _, peer, _ in cases:
        ours, theirs = times[label]
        oe = statistics.median(t[0] for t in ours)
        oc = statistics.median(t[1] for t in ours)
        if peer is None:
            print("%-38s %8.3fs %8s %6s   %8.3fs" % (label, oe, "needs rsync", "-", oc))
            continue
        pe = statistics.median(t[0] for t in theirs)
        pc = statistics.median(t[1] for t in theirs)
        print("%-38s %8.3fs %7.3fs %5.2fx   %8.3fs %7.3fs %5.2fx" %
              (label, oe, pe, oe / pe, oc, pc, oc / max(pc, 1e-3)))
    if not args.data:
        shutil.rmtree(data, ignore_errors=True)


if __name__ == "__main__":
    main()
