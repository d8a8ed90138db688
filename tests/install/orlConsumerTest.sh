#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlConsumerTest.sh WAY WORK ROOT COMPILER [FLAG ...]: builds the project in consumer with this compiler, in the folder
# WORK, and runs it. WAY is find_package or pkg-config, with ROOT the prefix of an install, or add_subdirectory, with ROOT
# the sources.
set -euo pipefail
way=$1 work=$2 root=$3 compiler=$4
shift 4
consumer=$(cd "$(dirname "$0")" && pwd)/consumer
rm -rf "$work"
mkdir -p "$work"

libraries=$(find "$root" -name 'liborlCore_0_81.so' -path '*/lib*' -not -path '*/build/*' -printf '%h\n' | head -n 1)
case $way in
find_package)
    # From a place to which the tree was moved: nothing in it may tell where it was installed.
    cp -a "$root" "$work/moved"
    libraries=$work/moved${libraries#"$root"}
    cmake -S "$consumer" -B "$work/build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$work/moved" \
        -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$*" >"$work/log"
    cmake --build "$work/build" >>"$work/log" || { cat "$work/log"; exit 1; }
    ;;
add_subdirectory)
    # Nothing is asked of the sources' speed here, and the sooner they are compiled the better.
    cmake -S "$consumer" -B "$work/build" -DCMAKE_BUILD_TYPE=Debug -DORL_CONSUMER_WAY=add_subdirectory \
        -DORL_CONSUMER_SOURCE="$root" -DORL_BUILD_FFMPEG=OFF -DCMAKE_CXX_COMPILER="$compiler" \
        -DCMAKE_CXX_FLAGS="$*" >"$work/log"
    cmake --build "$work/build" --target consumer >>"$work/log" || { cat "$work/log"; exit 1; }
    ;;
pkg-config)
    mkdir -p "$work/build"
    export PKG_CONFIG_PATH=$libraries/pkgconfig
    for program in consumer readerConsumer; do
        package=orlCore_0_81
        [ "$program" = consumer ] || package=orlFFmpegReader_0_81
        pkg-config --exists "$package" || continue
        # shellcheck disable=SC2046 # words are what pkg-config gives
        "$compiler" -std=c++17 "$@" "$consumer/$program.cpp" -o "$work/build/$program" \
            $(pkg-config --cflags --libs "$package")
    done
    ;;
*)
    echo "no such way: $way" >&2
    exit 2
    ;;
esac

for program in consumer readerConsumer; do
    [ -x "$work/build/$program" ] || continue
    echo "$program"
    LD_LIBRARY_PATH=$libraries "$work/build/$program"
done
