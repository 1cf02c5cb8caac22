#!/bin/sh
# Times pvcmd's findstr against grep on a generated tree of C sources (>= 200 MB).
#   bench/pvcmd_findstr.sh [PVCMD] [TREE]
# PVCMD defaults to build/src/pvcmd; TREE (default /tmp/pvbench-findstr) is
# generated once and reused. Output goes to files, not /dev/null: grep stops at
# the first match when it writes to /dev/null.
# Targets: literal within 1.5x of grep -rF, regex within 2x of grep -rE.
set -eu
PVCMD=$(realpath "${1:-build/src/pvcmd}")
TREE=${2:-/tmp/pvbench-findstr}
OUT=${TMPDIR:-/tmp}/pvbench-out.$$
mkdir -p "$OUT"
trap 'rm -rf "$OUT"' EXIT

if [ ! -f "$TREE/.complete" ]; then
    python3 - "$TREE" <<'PY'
import os, random, sys
root = sys.argv[1]
random.seed(7)
words = ["int", "char", "return", "static", "const", "value", "buffer", "count", "index",
         "result", "struct", "size_t", "while", "for", "if", "else", "pointer", "length",
         "foo", "fooobar1", "data", "node", "list", "next", "prev", "error", "status"]
total = 0
target = 220 * 1024 * 1024
d = 0
while total < target:
    dpath = os.path.join(root, "mod%03d" % (d // 20), "part%02d" % (d % 20))
    os.makedirs(dpath, exist_ok=True)
    for f in range(20):
        ext = (".c", ".h", ".c", ".txt")[f % 4]
        lines = []
        for _ in range(2500):
            n = random.randint(3, 12)
            line = "    " + " ".join(random.choice(words) for _ in range(n)) + ";"
            if random.random() < 0.001:
                line += " /* pairview_needle marker */"
            lines.append(line)
        data = "\n".join(lines) + "\n"
        with open(os.path.join(dpath, "file%02d%s" % (f, ext)), "w") as fh:
            fh.write(data)
        total += len(data)
    d += 1
open(os.path.join(root, ".complete"), "w").close()
PY
fi
echo "tree: $(du -sh "$TREE" | cut -f1) in $(find "$TREE" -type f | wc -l) files"

timeit() { # label, command...
    label=$1; shift
    "$@" >"$OUT/warm" 2>&1 || true
    start=$(date +%s.%N)
    "$@" >"$OUT/$label" 2>&1 || true
    end=$(date +%s.%N)
    echo "$end - $start" | bc
}

cd "$TREE"
g1=$(timeit grepF grep -rF --include='*.c' --include='*.h' pairview_needle .)
p1=$(timeit pvL "$PVCMD" findstr /s /c:"pairview_needle" '*.c' '*.h')
g2=$(timeit grepE grep -rE --include='*.c' --include='*.h' 'fo*bar[0-9];' .)
p2=$(timeit pvR "$PVCMD" findstr /s /r "fo*bar[0-9];" '*.c' '*.h')
printf 'literal: grep %ss (%s lines)  findstr %ss (%s lines)  ratio %s\n' \
    "$g1" "$(wc -l <"$OUT/grepF")" "$p1" "$(wc -l <"$OUT/pvL")" "$(echo "scale=2; $p1 / $g1" | bc)"
printf 'regex:   grep %ss (%s lines)  findstr %ss (%s lines)  ratio %s\n' \
    "$g2" "$(wc -l <"$OUT/grepE")" "$p2" "$(wc -l <"$OUT/pvR")" "$(echo "scale=2; $p2 / $g2" | bc)"
