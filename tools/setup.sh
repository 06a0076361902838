#!/usr/bin/env bash
# Installs what the program needs from Debian, once: setup.sh run | test. Says nothing when all is there.
set -euo pipefail

build=(g++ cmake ninja-build pkg-config ccache mold
       qt6-base-dev qt6-svg-dev libsqlite3-dev unixodbc-dev libtomlplusplus-dev libxlsxwriter-dev libsodium-dev
       libgl-dev fonts-noto-core)
vnc=(xvfb openbox x11vnc x11-utils)
tests=(libgtest-dev libgmock-dev clang-16 libclang-rt-16-dev clang-format-14 clang-tidy-16 sqlfluff sqlite3 git python3
       libsqliteodbc odbc-postgresql postgresql tdsodbc poppler-utils unzip ledger)

case "${1:-run}" in
    run)  wanted=("${build[@]}") ;;
    vnc)  wanted=("${vnc[@]}") ;;
    test) wanted=("${build[@]}" "${tests[@]}") ;;
    *)    echo "usage: setup.sh run|vnc|test" >&2; exit 2 ;;
esac

missing=()
for package in "${wanted[@]}"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
echo "Installing ${#missing[@]} packages: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
