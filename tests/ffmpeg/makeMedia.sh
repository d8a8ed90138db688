#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# makeMedia.sh FOLDER: makes the media that the tests of the reader read, with the program ffmpeg. What stands there
# already is kept, unless this script has changed; several may run at once.
set -euo pipefail
mkdir -p "$1"
script=$(realpath "$0")
cd "$1"
exec 9>.lock
flock 9
cmp -s "$script" .made-by && exit 0
rm -rf -- *

make() { ffmpeg -nostdin -v error -y "$@"; }
# picture SIZE RATE SECONDS: a moving picture; sound SECONDS: a tone
picture() { echo -f lavfi -i "testsrc=size=$1:rate=$2:duration=$3"; }
sound() { echo -f lavfi -i "sine=frequency=440:sample_rate=48000:duration=$1"; }

# Rates and timecodes. mpeg4 and mjpeg, since they are quick to encode.
make $(picture 64x36 24 1) -c:v mpeg4 rate24.mov
make $(picture 64x36 25 1) -c:v mpeg4 rate25.mp4
make $(picture 64x36 30 1) -c:v mjpeg rate30.avi
make $(picture 64x36 60 1) -c:v mpeg4 rate60.mkv
make $(picture 64x36 24000/1001 2) -c:v mpeg4 -frames:v 48 -timecode 01:00:00:00 rate23976.mov
make $(picture 64x36 30000/1001 2) -c:v mpeg4 -frames:v 45 -timecode '01:01:00;02' rate2997drop.mov
make $(picture 64x36 60000/1001 1) -c:v mpeg4 -frames:v 30 -timecode '00:10:00;00' rate5994drop.mov
make $(picture 64x36 24000/1001 2) -c:v mpeg4 -frames:v 12 rate23976.mkv
make $(picture 64x36 25 1) -c:v mpeg2video -timecode 10:00:00:00 broadcast.mxf
make $(picture 64x36 24 1) -c:v mpeg4 -frames:v 1 oneFrame.mov
make $(picture 64x36 24 20) -c:v mpeg4 -g 12 long.mkv

# Shapes
make $(picture 72x48 25 0.2) -vf setsar=16/11 -c:v mpeg4 anamorphic.mov
make $(picture 64x36 25 0.2) -c:v mpeg4 upright.mov
make -i upright.mov -c copy -metadata:s:v rotate=90 rotated.mov
make -i upright.mov -c copy -metadata:s:v rotate=180 upsideDown.mov
rm upright.mov

# Codecs, samples, sound, tags
make $(picture 64x36 25 1) $(sound 1) -ac 2 -c:v libx264 -bf 2 -pix_fmt yuv420p -c:a aac -metadata title='Überblick "1"' \
    sound.mov
make $(picture 64x36 25 0.2) -c:v prores_ks -pix_fmt yuv444p10le ten.mov
make $(picture 64x36 25 0.2) -c:v ffv1 -pix_fmt gray gray.mkv
make $(picture 64x36 25 0.2) -c:v png -pix_fmt rgba alpha.mov
make $(picture 64x36 25 1) $(sound 1) -c:v libx264 -movflags frag_keyframe+empty_moov -g 5 -c:a aac fragmented.mp4
make $(picture 64x36 25 1) -c:v libx264 bare.h264
make $(picture 64x36 25 1) $(sound 1) -c:v mpeg2video -c:a mp2 stream.ts
make $(picture 64x36 10 1) animated.gif

# Sound alone
make $(sound 1.5) -c:a pcm_s16le sound.wav
make $(sound 1.5) -i <(ffmpeg -v error -nostdin $(picture 64x36 25 0.04) -f image2pipe -c:v png -) -map 0 -map 1 \
    -c:a flac -c:v copy -disposition:v attached_pic cover.flac

# Images
make $(picture 64x36 25 0.04) still.png
make $(picture 64x36 25 0.04) -pix_fmt bgra still.tga
cp still.png 'odd %03d name.png'
mkdir sequences
make $(picture 64x36 25 0.2) -start_number 1001 sequences/shot.%04d.png
rm sequences/shot.1003.png
make $(picture 64x36 25 0.12) -pix_fmt gbrpf32le -format half -start_number 7 sequences/half.%03d.exr
make $(picture 64x36 25 0.12) -pix_fmt gbrapf32le -format float -start_number 99 sequences/float.%02d.exr
make $(picture 64x36 25 0.12) -pix_fmt gbrp10be sequences/film.%02d.dpx
make $(picture 64x36 25 0.2) -c:v mpeg4 sequences/reel.01.mov
cp sequences/reel.01.mov sequences/reel.02.mov

# Frames that come as they like
make $(picture 64x36 25 4) -vf "setpts='if(lt(N,20),N,3*N)/25/TB'" -vsync vfr -c:v mpeg4 variable.mp4
make $(picture 64x36 25 4) -vf "setpts='if(lt(N,20),N,3*N)/25/TB'" -vsync vfr -c:v mpeg4 variable.mkv

# For damage: the table of frames before them, and behind them
make $(picture 64x36 25 2) -c:v mpeg4 -g 1 -movflags +faststart tableFirst.mov
make $(picture 64x36 25 2) -c:v mpeg4 -g 1 tableLast.mov
make $(picture 64x36 25 2) $(sound 2) -c:v mpeg4 -c:a pcm_s16le -g 1 piped.mkv

# A playlist of local files
make $(picture 64x36 25 1) -c:v libx264 -g 5 -f hls -hls_time 0.4 list.m3u8

cp "$script" .made-by
