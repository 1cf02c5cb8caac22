#!/usr/bin/env bash
# Speed and memory of `pvcmd fc` against GNU diff and cmp on the same files:
#   1. two 50 MB text files with 100 scattered one-line differences (fc vs diff)
#   2. two identical 50 MB text files                               (fc vs diff)
#   3. two 50 MB binary files with /b                               (fc /b vs cmp -l)
# Targets: fc no slower than diff on the text pairs; fc's maximum resident set
# stays near its line buffer whatever the file size.
#
# Usage: bench/pvcmd_fc.sh [PVCMD] [SIZE_MB]
set -euo pipefail

PVCMD=${1:-$(dirname "$0")/../build/src/pvcmd}
SIZE_MB=${2:-50}
WORK=$(mktemp -d "${TMPDIR:-/tmp}/pvcmd-bench.XXXXXX")
trap 'rm -rf "$WORK"' EXIT

[ -x "$PVCMD" ] || { echo "pvcmd not found at $PVCMD (build it first)" >&2; exit 2; }
[ -x /usr/bin/time ] || { echo "/usr/bin/time is needed (apt-get install time)" >&2; exit 2; }

lines=$((SIZE_MB * 1024 * 1024 / 64))
echo "Generating ${SIZE_MB} MB files ($lines lines) in $WORK ..."
awk -v n="$lines" 'BEGIN { for (i = 1; i <= n; i++) printf "line %010d the quick brown fox jumps over the lazy dog %06d\r\n", i, i % 997 }' > "$WORK/a.txt"
cp "$WORK/a.txt" "$WORK/same.txt"
# 100 one-line changes spread over the whole file.
awk -v n="$lines" 'BEGIN { step = int(n / 101) } { if (NR % step == 0 && NR / step <= 100) { sub(/fox/, "cat") } print }' "$WORK/a.txt" > "$WORK/b.txt"
head -c $((SIZE_MB * 1024 * 1024)) /dev/urandom > "$WORK/a.bin"
cp "$WORK/a.bin" "$WORK/b.bin"
# 1000 changed bytes in the binary pair.
python3 - "$WORK/b.bin" <<'PY'
import sys, random
random.seed(7)
with open(sys.argv[1], "r+b") as f:
    f.seek(0, 2)
    size = f.tell()
    for _ in range(1000):
        pos = random.randrange(size)
        f.seek(pos); b = f.read(1)
        f.seek(pos); f.write(bytes([b[0] ^ 0x5A]))
PY

measure() { # label, command...
    local label=$1; shift
    # Warm the page cache so both tools read from memory.
    /usr/bin/time -f "%e %M" -o "$WORK/time.txt" "$@" > "$WORK/out.txt" 2>/dev/null || true
    /usr/bin/time -f "%e %M" -o "$WORK/time.txt" "$@" > "$WORK/out.txt" 2>/dev/null || true
    read -r secs rss < <(tail -n 1 "$WORK/time.txt")
    printf "%-28s %8s s %10s KB max RSS  %10s bytes out\n" "$label" "$secs" "$rss" "$(stat -c %s "$WORK/out.txt")"
}

echo
echo "== 100 scattered one-line differences"
measure "pvcmd fc" "$PVCMD" fc "$WORK/a.txt" "$WORK/b.txt"
measure "diff" diff "$WORK/a.txt" "$WORK/b.txt"
echo "== identical files"
measure "pvcmd fc" "$PVCMD" fc "$WORK/a.txt" "$WORK/same.txt"
measure "diff" diff "$WORK/a.txt" "$WORK/same.txt"
echo "== binary, 1000 differing bytes"
measure "pvcmd fc /b" "$PVCMD" fc /b "$WORK/a.bin" "$WORK/b.bin"
measure "cmp -l" cmp -l "$WORK/a.bin" "$WORK/b.bin"
