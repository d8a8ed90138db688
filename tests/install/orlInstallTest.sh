#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlInstallTest.sh BUILD PREFIX: installs the build there, and compares what lies there then with the list beside this
# script. The library's folder and the manual's are called by one name whatever the system calls them.
set -euo pipefail
build=$1 prefix=$2
rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null
found=$(cd "$prefix" && find . \( -type f -o -type l \) | sed -e 's|^\./||' -e 's|^lib/[^/]*-linux-gnu[^/]*/|lib/|' |
    sed -e 's|^lib64/|lib/|' -e 's|Targets-[a-z]*\.cmake$|Targets-CONFIG.cmake|' | LC_ALL=C sort)
diff -u "$(dirname "$0")/installed-files.txt" - <<<"$found"

# The library is known by its file's name, which holds its version.
for library in "$prefix"/lib*/liborl*.so "$prefix"/lib/*/liborl*.so; do
    [ -e "$library" ] || continue
    readelf -d "$library" | grep -F "Library soname: [${library##*/}]" >/dev/null || {
        echo "$library has another SONAME"
        exit 1
    }
done
