#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes a handful of small media with the program ffmpeg: different rates, sizes and aspects, with and without sound
# and timecode, a sequence, one of a varying rate, and one that is cut off.
#
# usage: make-media.sh FOLDER
set -euo pipefail

folder=${1:?usage: make-media.sh FOLDER}
mkdir -p "$folder"

# make FILE SOURCE [FFMPEG OPTION ...]: two seconds of a test picture, unless the file is there. Whatever stops this,
# no file is left half made.
make() {
    local file=$folder/$1 part=$folder/.part.$1 source=$2
    shift 2
    [ ! -e "$file" ] || return 0
    ffmpeg -nostdin -loglevel error -f lavfi -i "$source" "$@" -y "$part"
    mv "$part" "$file"
}

tone=(-f lavfi -i "sine=frequency=440:sample_rate=48000:duration=2")

make plate_2398.mov "testsrc2=size=1920x1080:rate=24000/1001:duration=2" \
    -c:v prores_ks -profile:v 0 -timecode 01:00:00:00
make broadcast_2997.mov "smptehdbars=size=1280x720:rate=30000/1001:duration=2" "${tone[@]}" \
    -c:v mpeg4 -q:v 5 -c:a pcm_s16le -ac 2 -timecode "00:59:58;00"
make scope_24.mp4 "mandelbrot=size=1024x428:rate=24" -t 2 -c:v mpeg4 -q:v 5
make pal_25.mov "testsrc=size=720x576:rate=25:duration=2" "${tone[@]}" -vf setsar=16/15 \
    -c:v mjpeg -q:v 5 -pix_fmt yuvj422p -c:a pcm_s24le -ac 1
make portrait_60.mkv "testsrc2=size=270x480:rate=60:duration=2" -c:v ffv1
make wild.mp4 "testsrc=size=640x360:rate=25:duration=2" -c:v mpeg4 -q:v 5 \
    -vf "select='not(mod(n,7))+not(mod(n,3))'" -vsync vfr

if [ ! -e "$folder/shot.1024.exr" ]; then
    ffmpeg -nostdin -loglevel error -f lavfi -i "testsrc2=size=480x270:rate=24:duration=1" \
        -pix_fmt gbrpf32le -format half -compression zip16 -start_number 1001 -y "$folder/shot.%04d.exr"
fi

# A copy that stopped half-way: its index stood at the end.
head -c 20000 "$folder/plate_2398.mov" >"$folder/broken.mov"
