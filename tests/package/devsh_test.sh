#!/usr/bin/env bash
# Runs dev.sh with stand-ins for cmake, ctest and the program, and checks what
# each command builds: "run" the programs only, "test" everything.
set -euo pipefail
source_dir=$1
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

mkdir -p "$tmp/repo/build/src" "$tmp/bin"
cp "$source_dir/dev.sh" "$tmp/repo/"
for tool in cmake ctest; do
  printf '#!/bin/sh\necho "%s $*" >> "%s/calls"\n' "$tool" "$tmp" > "$tmp/bin/$tool"
done
printf '#!/bin/sh\necho "pairview $*" >> "%s/calls"\n' "$tmp" > "$tmp/repo/build/src/pairview"
# Every package counts as installed.
printf '#!/bin/sh\necho "install ok installed"\n' > "$tmp/bin/dpkg-query"
chmod +x "$tmp/bin/"* "$tmp/repo/build/src/pairview"

PATH="$tmp/bin:$PATH" "$tmp/repo/dev.sh" run -ini x.ini
builds=$(grep '^cmake --build' "$tmp/calls")
[ "$builds" = "cmake --build --preset default --target pairview pvcompare pvcmd" ] ||
  fail "./dev.sh run builds more than the programs: $builds"
grep -qx 'pairview -ini x.ini' "$tmp/calls" || fail "./dev.sh run did not start pairview"

: > "$tmp/calls"
PATH="$tmp/bin:$PATH" "$tmp/repo/dev.sh" test
[ "$(grep '^cmake --build' "$tmp/calls")" = "cmake --build --preset default" ] ||
  fail "./dev.sh test does not build everything"
grep -q '^ctest ' "$tmp/calls" || fail "./dev.sh test runs no tests"

status=0
PATH="$tmp/bin:$PATH" "$tmp/repo/dev.sh" bogus >/dev/null || status=$?
[ "$status" = 2 ] || fail "an unknown command gave $status"
echo "dev.sh builds what each command needs"
