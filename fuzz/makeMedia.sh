#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Makes the seeds of orlFFmpegReaderFuzzer with the program ffmpeg: media of a few small frames, each behind the
# byte that chooses its extension. What stands there already is kept.
#
# usage: makeMedia.sh FOLDER
set -euo pipefail

folder=${1:?usage: makeMedia.sh FOLDER}
mkdir -p "$folder"
part=$(mktemp -d)
trap 'rm -rf "$part"' EXIT

# In the order of the target's own list.
extensions=(mov mp4 mkv avi mxf wav png exr gif ts dpx tga flac m3u8 txt '0007.png')

# make NAME EXTENSION [FFMPEG OPTION ...]
make() {
    local seed=$folder/$1 extension=$2 i
    shift 2
    [ ! -e "$seed" ] || return 0
    ffmpeg -nostdin -loglevel error "$@" -bitexact -y "$part/medium.$extension"
    for i in "${!extensions[@]}"; do
        [ "${extensions[i]}" != "$extension" ] || printf '%b' "\\x$(printf '%02x' "$i")" >"$part/seed"
    done
    cat "$part/medium.$extension" >>"$part/seed"
    mv "$part/seed" "$seed"
}

picture=(-f lavfi -i "testsrc=size=16x16:rate=25:duration=0.08")
slow=(-f lavfi -i "testsrc=size=16x16:rate=24000/1001:duration=0.09")
broadcast=(-f lavfi -i "testsrc=size=16x16:rate=30000/1001:duration=0.07")
long=(-f lavfi -i "color=size=16x16:rate=25:duration=5.6") # more frames than the reader looks at
tone=(-f lavfi -i "sine=frequency=440:sample_rate=8000:duration=0.05")

make movie.mov mov "${slow[@]}" -c:v mpeg4 -timecode 01:00:00:00 -metadata title=a
make sound.mov mov "${picture[@]}" "${tone[@]}" -c:v png -c:a pcm_s16le -ac 2
make turned.mov mov "${picture[@]}" -vf setsar=16/11 -c:v prores_ks -pix_fmt yuv444p10le -metadata:s:v rotate=90
make movie.mp4 mp4 "${picture[@]}" "${tone[@]}" -c:v mpeg4 -c:a aac
make fragmented.mp4 mp4 "${picture[@]}" -c:v mpeg4 -g 1 -movflags frag_keyframe+empty_moov
make movie.mkv mkv "${picture[@]}" "${tone[@]}" -c:v ffv1 -c:a pcm_s16le
make movie.avi avi "${picture[@]}" -c:v mjpeg
make movie.mxf mxf "${picture[@]}" -vf scale=64:64 -c:v mpeg2video -timecode 10:00:00:00
make drop.mov mov "${broadcast[@]}" -c:v mpeg4 -timecode '00:01:00;02'
make variable.mp4 mp4 "${long[@]}" -frames:v 30 -vf "select='not(mod(n,7))+not(mod(n,3))'" -vsync vfr -c:v mpeg4 -q:v 31
make long.mkv mkv "${long[@]}" -c:v mpeg4 -q:v 31
make bare.m4v txt "${long[@]}" -c:v mpeg4 -q:v 31 -f m4v
make sound.wav wav "${tone[@]}" -c:a pcm_s16le
make sound.flac flac "${tone[@]}" -c:a flac
make image.png png "${picture[@]}" -frames:v 1 -pix_fmt rgba
make image.exr exr "${picture[@]}" -frames:v 1 -pix_fmt gbrpf32le -format half
make image.dpx dpx "${picture[@]}" -frames:v 1 -pix_fmt gbrp10be
make image.tga tga "${picture[@]}" -frames:v 1
make frame.png 0007.png "${picture[@]}" -frames:v 1 -update 1
make moving.gif gif "${picture[@]}"
make stream.ts ts "${picture[@]}" "${tone[@]}" -c:v mpeg2video -c:a mp2 -ar 16000
