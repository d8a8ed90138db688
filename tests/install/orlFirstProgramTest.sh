#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlFirstProgramTest.sh TEXT PREFIX WORK COMPILER: the first program, as the TEXT for newcomers has it, is built against the
# install in PREFIX by following the text, and finds a sequence.
set -euo pipefail
text=$1 prefix=$2 work=$3 compiler=$4
rm -rf "$work"
mkdir -p "$work/files"

# block LANGUAGE: the first block of the text in that language.
block() { sed -n "/^\`\`\`$1\$/,/^\`\`\`\$/p" "$text" | sed '1d;/^```$/q' | grep -v '^```$'; }

block cmake >"$work/CMakeLists.txt"
block cpp >"$work/frames.cpp"
cmake -S "$work" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" >"$work/log"
cmake --build "$work/build" >>"$work/log" || { cat "$work/log"; exit 1; }
touch "$work/files/shot.0001.exr" "$work/files/shot.0002.exr"
cd "$work/files"
found=$("$work/build/frames")
[ "$found" = 'shot.%04d.exr' ] || { echo "found: $found"; exit 1; }
