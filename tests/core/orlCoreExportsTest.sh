#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlCoreExportsTest.sh LIBRARY: every symbol that the shared library exports belongs to ORL_0_81, none to its
# hidden parts, and what applications need is among them.
set -euo pipefail
library=$1
exports=$(nm --dynamic --defined-only --demangle "$library" | cut -d' ' -f3-)
failed=0

# By mangled names: a demangled one may begin with a function's result.
foreign=$(nm --dynamic --defined-only "$library" | cut -d' ' -f3- |
    grep -vE '^_Z(T[CISTV]|GV|T[hvc].*_)?Z?NK?8ORL_0_81' | c++filt || true)
if [ -n "$foreign" ]; then
    printf 'Not of ORL_0_81:\n%s\n' "$foreign"
    failed=1
fi

hidden=$(grep -E 'rapidotio|rapidjson|PtrInternal|printDebug|parseJson' <<<"$exports" || true)
if [ -n "$hidden" ]; then
    printf 'Exported, but internal:\n%s\n' "$hidden"
    failed=1
fi

for name in 'ORL_0_81::Status::getStr() const' 'ORL_0_81::String::substr(' 'typeinfo for ORL_0_81::RefCountedMT'; do
    if ! grep -qF "$name" <<<"$exports"; then
        printf 'Missing: %s\n' "$name"
        failed=1
    fi
done
exit "$failed"
