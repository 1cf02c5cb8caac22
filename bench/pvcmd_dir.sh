#!/bin/sh
# Times pvcmd's "dir /s" against "ls -lR" on a generated tree of 100,000 files.
#   bench/pvcmd_dir.sh [PVCMD] [TREE]
# PVCMD defaults to build/src/pvcmd; TREE (default /tmp/pvbench-dir) is generated
# once and reused. Target: within 2x of ls -lR.
set -eu
PVCMD=$(realpath "${1:-build/src/pvcmd}")
TREE=${2:-/tmp/pvbench-dir}
OUT=${TMPDIR:-/tmp}/pvbench-dir-out.$$
mkdir -p "$OUT"
trap 'rm -rf "$OUT"' EXIT

if [ ! -f "$TREE/.complete" ]; then
    python3 - "$TREE" <<'PY'
import os, sys
root = sys.argv[1]
for d in range(200):
    dpath = os.path.join(root, "dir%03d" % (d // 10), "sub%d" % (d % 10))
    os.makedirs(dpath, exist_ok=True)
    for f in range(500):
        with open(os.path.join(dpath, "File_%04d.dat" % f), "w") as fh:
            fh.write("x" * (f % 97))
open(os.path.join(root, ".complete"), "w").close()
PY
fi
echo "tree: $(find "$TREE" -type f | wc -l) files"

timeit() { # label, command...
    label=$1; shift
    "$@" >"$OUT/warm" 2>&1 || true
    start=$(date +%s.%N)
    "$@" >"$OUT/$label" 2>&1 || true
    end=$(date +%s.%N)
    echo "$end - $start" | bc
}

cd "$TREE"
l=$(timeit ls ls -lR .)
p=$(timeit dir "$PVCMD" dir /s)
printf 'ls -lR %ss (%s lines)  dir /s %ss (%s lines)  ratio %s\n' \
    "$l" "$(wc -l <"$OUT/ls")" "$p" "$(wc -l <"$OUT/dir")" "$(echo "scale=2; $p / $l" | bc)"
