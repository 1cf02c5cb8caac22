#!/usr/bin/env bash
# Builds the Debian package, unpacks it and checks what it holds and needs, and
# validates the desktop entry and the AppStream metadata.
set -euo pipefail
build=$1
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
fail() { echo "FAIL: $*"; exit 1; }

cpack --config "$build/CPackConfig.cmake" -B "$tmp/out" >/dev/null
deb=$(ls "$tmp"/out/*.deb)
dpkg-deb -x "$deb" "$tmp/root"
for f in usr/bin/pairview usr/bin/pvcompare usr/bin/pvcmd usr/share/pairview/CompareSelectedFile.cmd \
         usr/share/applications/pairview.desktop usr/share/icons/hicolor/scalable/apps/pairview.svg \
         usr/share/metainfo/org.pairview.Pairview.metainfo.xml \
         usr/share/man/man1/pairview.1.gz usr/share/man/man1/pvcompare.1.gz usr/share/man/man1/pvcmd.1.gz \
         usr/share/doc/pairview/copyright usr/share/doc/pairview/changelog.gz; do
  [ -e "$tmp/root/$f" ] || fail "not in the package: $f"
done
! dpkg-deb -c "$deb" | grep -q -E 'test_|/include/' || fail "the package holds test programs or headers"

depends=$(dpkg-deb -f "$deb" Depends)
for lib in libqt6widgets6 libqt6core6 libpcre2-8-0 libc6 libstdc++6 libqt6svg6; do
  grep -q "$lib" <<<"$depends" || fail "Depends lacks $lib: $depends"
done
[ "$(dpkg-deb -f "$deb" Section)" = utils ] || fail "section"
[ -n "$(dpkg-deb -f "$deb" Maintainer)" ] || fail "maintainer"
version=$(dpkg-deb -f "$deb" Version)
grep -q "release version=\"$version\"" "$tmp/root/usr/share/metainfo/org.pairview.Pairview.metainfo.xml" ||
  fail "the metadata names another version than the package ($version)"

desktop-file-validate "$tmp/root/usr/share/applications/pairview.desktop" | grep -v '^.*: hint: ' && fail "desktop entry" || true
appstreamcli validate --no-net "$tmp/root/usr/share/metainfo/org.pairview.Pairview.metainfo.xml" >/dev/null ||
  fail "appstreamcli rejects the metadata"
# Debian's own package checker, where it is installed: no error and no warning.
if command -v lintian >/dev/null; then
  report=$(lintian --tag-display-limit 0 "$deb" 2>&1 || true)
  ! grep -E '^[EW]: ' <<<"$report" || fail "lintian reports errors or warnings"
fi
echo "package $deb: $depends"
