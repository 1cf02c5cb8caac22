#!/usr/bin/env bash
# Installs the build into a temporary prefix and uses the installed programs as a
# user would: no PAIRVIEW_HOME, so the program directory is the per-user data
# directory, the shipped script comes from the installed share folder, and the
# compare script runs under the installed pvcmd.
set -euo pipefail
build=$1
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

cmake --install "$build" --prefix "$tmp/prefix" >/dev/null
prefix=$tmp/prefix
for f in bin/pairview bin/pvcompare bin/pvcmd share/pairview/CompareSelectedFile.cmd \
         share/applications/pairview.desktop share/icons/hicolor/scalable/apps/pairview.svg \
         share/metainfo/org.pairview.Pairview.metainfo.xml \
         share/man/man1/pairview.1.gz share/man/man1/pvcompare.1.gz share/man/man1/pvcmd.1.gz \
         share/doc/pairview/copyright share/doc/pairview/changelog.gz; do
  [ -e "$prefix/$f" ] || fail "not installed: $f"
done

mkdir -p "$tmp/left" "$tmp/right" "$tmp/data" "$tmp/home"
printf 'one\r\ntwo\r\n' > "$tmp/left/a.txt"
printf 'one\r\nTWO\r\n' > "$tmp/right/a.txt"
printf 'same\r\n' > "$tmp/left/b.txt"
cp -p "$tmp/left/b.txt" "$tmp/right/b.txt"
touch -d '2020-01-01 00:00' "$tmp/right/a.txt"

run() {
  env -u PAIRVIEW_HOME -u PAIRVIEW_PVCMD HOME="$tmp/home" XDG_DATA_HOME="$tmp/data" \
      PAIRVIEW_EDITOR=true PATH=/usr/bin:/bin "$@"
}
printf '[COMPARECONTROL]\r\nLIST_DateTime=True\r\nLIST_Length=True\r\n' > "$tmp/settings.ini"
status=0
out=$(cd "$tmp" && run "$prefix/bin/pvcompare" -ini "$tmp/settings.ini" --run "$tmp/left" "$tmp/right") ||
  status=$?
[ "$status" = 1 ] || fail "pvcompare exit status $status, expected 1 (a.txt differs): $out"
grep -q -- '-different-' <<<"$out" || fail "no -different- line in: $out"

progdir=$tmp/data/pairview
[ -f "$progdir/Pairview.cmd" ] || fail "the compare script is not in the user's data directory"
cmp -s "$progdir/CompareSelectedFile.cmd" "$prefix/share/pairview/CompareSelectedFile.cmd" ||
  fail "the shipped script was not copied into the program directory"
[ ! -e "$prefix/bin/Pairview.cmd" ] || fail "the installed bin folder was written to"
for _ in $(seq 100); do
  grep -q 'TWO' "$progdir/Pairview.txt" 2>/dev/null && break
  sleep 0.1
done
grep -q 'Comparing files' "$progdir/Pairview.txt" || fail "no fc report in Pairview.txt"
grep -q 'TWO' "$progdir/Pairview.txt" || fail "the fc report does not show the changed line"

# A settings path with a blank is refused before anything is written.
status=0
(cd "$tmp" && run "$prefix/bin/pairview" -ini "$tmp/my ini.ini" 2>"$tmp/err") || status=$?
[ "$status" = 2 ] || fail "pairview with a blank in the settings path gave $status, expected 2"
grep -q '^Usage: pairview' "$tmp/err" || fail "no usage line for a settings path with a blank"
[ ! -e "$tmp/my" ] && [ ! -e "$tmp/my ini.ini" ] || fail "a settings file was created"

# The installed interpreter runs a tool on its own.
status=0
run "$prefix/bin/pvcmd" fc "$tmp/left/b.txt" "$tmp/right/b.txt" >/dev/null || status=$?
[ "$status" = 0 ] || fail "installed pvcmd fc on equal files gave $status"
echo "installed programs work from $prefix with program directory $progdir"
