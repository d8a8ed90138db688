#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlPackagesTest.sh BUILD WORK: makes the Debian packages, installs them into a root of their own with the package
# manager, runs the program from there, and removes them: nothing may stay behind.
set -euo pipefail
build=$1 work=$2
rm -rf "$work"
mkdir -p "$work/packages" "$work/root/var/lib/dpkg/"{info,updates,triggers}
touch "$work/root/var/lib/dpkg/status"
cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work/packages" >"$work/log" 2>&1 || {
    cat "$work/log"
    exit 1
}
packages=("$work"/packages/*.deb)
[ ${#packages[@]} -ge 3 ] || { echo "only ${packages[*]}"; exit 1; }

dependencies() { dpkg-deb -f "$work"/packages/"$1"_*.deb Depends; }
dependencies liborlcore0.81 | grep 'libutf8proc2' >/dev/null || { echo "the library forgets what it links"; exit 1; }
dependencies liborlcore0.81-dev | grep '^liborlcore0.81 (= ' >/dev/null || { echo "headers without their library"; exit 1; }

manage() {
    dpkg --root="$work/root" --force-not-root --force-bad-path --force-script-chrootless --force-depends \
        --log="$work/dpkg.log" "$@" >>"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
}
manage --install "${packages[@]}"
library=$(find "$work/root/usr/lib" -name 'liborlCore_0_81.so')
echo "installed $library"
if [ -x "$work/root/usr/bin/orl" ]; then
    LD_LIBRARY_PATH=$(dirname "$library") "$work/root/usr/bin/orl" --version
fi
names=()
for package in "${packages[@]}"; do
    names+=("$(dpkg-deb -f "$package" Package)")
done
manage --remove "${names[@]}"
left=$(find "$work/root" -path "$work/root/var" -prune -o -type f -print)
[ -z "$left" ] || { echo "left behind: $left"; exit 1; }
