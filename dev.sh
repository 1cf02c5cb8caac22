#!/usr/bin/env bash
# Sets up a fresh Debian machine for Pairview, builds it, and then either starts
# the program (./dev.sh run), runs every test (./dev.sh test) or builds the Debian
# package (./dev.sh package).
set -euo pipefail
cd "$(dirname "$0")"

packages=(g++ cmake ninja-build pkg-config qt6-base-dev qt6-qpa-plugins libqt6test6
          libgtest-dev libgmock-dev libpcre2-dev xdg-utils libqt6svg6 libdtl-dev libcli11-dev
          dpkg-dev file desktop-file-utils appstream lintian
          libssh-dev openssh-server)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  if [ "$(id -u)" = 0 ]; then
    apt-get update -qq && DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}"
  elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
    sudo apt-get update -qq && sudo DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}"
  else
    echo "Pairview needs these packages. Run, as root:"
    echo "  apt-get install -y ${missing[*]}"
    exit 1
  fi
fi

# "run" builds the three programs only; the tests are built by "test" (and by
# "package", which installs from a complete build).
programs=(--target pairview pvcompare pvcmd)
case "${1:-run}" in
  run|test|package) cmake --preset default >/dev/null ;;
  *)    echo "usage: ./dev.sh [run|test|package]"; exit 2 ;;
esac
case "${1:-run}" in
  run)  shift || true
        cmake --build --preset default "${programs[@]}"
        exec ./build/src/pairview "$@" ;;
  test) cmake --build --preset default
        QT_QPA_PLATFORM=offscreen ctest --preset default ;;
  package)
        cmake --build --preset default
        cpack --config build/CPackConfig.cmake -B build/package >/dev/null
        ls build/package/*.deb ;;
esac
