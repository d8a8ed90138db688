#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlAbi.sh check LIBRARY ...: compares the binary interface of each library with the picture of it that is kept here.
# What was added is told; what was changed or taken away is told and is a failure.
# orlAbi.sh keep LIBRARY ...: makes the pictures anew.
#
# The libraries must have been compiled with debug information.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
headers=(--headers-dir "$here/../src/core/public" --headers-dir "$here/../src/ffmpeg/public")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Neither the machine nor the place of the sources is to be seen in a picture.
picture() {
    abidw "${headers[@]}" --exported-interfaces-only --drop-private-types --no-corpus-path --no-comp-dir-path \
        --no-show-locs --no-elf-needed --no-parameter-names --type-id-style hash --out-file "$2" "$1"
}

check() {
    local library=$1 name status=0
    name=$(basename "$library" .so)
    xz --decompress --stdout "$here/$name.abi.xz" >"$work/$name.before"
    picture "$library" "$work/$name.now"
    abidiff "$work/$name.before" "$work/$name.now" >"$work/report" || status=$?
    if [ "$status" -eq 0 ]; then
        echo "$name: as it was"
        return
    fi
    cat "$work/report"
    # Additions alone leave the interface as it was for those who use it.
    if abidiff --no-added-syms "$work/$name.before" "$work/$name.now" >/dev/null; then
        echo "$name: something was added; CONTRIBUTING.md tells when to keep the new interface"
    else
        echo "$name: programs that were linked with it before may not run with it now"
        return 1
    fi
}

keep() {
    local name
    name=$(basename "$1" .so)
    picture "$1" "$work/$name.abi"
    xz --force --stdout "$work/$name.abi" >"$here/$name.abi.xz"
    echo "kept $name"
}

command=$1
shift
failed=0
for library in "$@"; do
    "$command" "$library" || failed=1
done
exit "$failed"
