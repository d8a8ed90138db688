#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlExamplesTest.sh PROGRAMS EXAMPLES WORK: runs each example that was built in the folder PROGRAMS as its first lines tell,
# and compares what it says. EXAMPLES holds the documents that they read.
set -euo pipefail
programs=$1 examples=$2 work=$3
rm -rf "$work"
mkdir -p "$work"
cd "$work"
failed=0

# expect NAME TEXT: standard input is that text.
expect() {
    diff -u <(printf '%s\n' "$2") - || { echo "^ $1"; failed=1; }
}

# holds NAME FILE TEXT ...: the file holds each of the texts.
holds() {
    local name=$1 file=$2 text
    shift 2
    for text in "$@"; do
        grep -qF -- "$text" "$file" || { echo "$name: without $text"; failed=1; }
    done
}

"$programs/resolveTokens" | expect resolveTokens '/shows/harbour/hb_010/plate.{FRAME}.exr
/shows/harbour/hb_020/plate.{FRAME}.exr'

"$programs/runJobs" | expect runJobs 'joined: 136'

"$programs/visitDocument" "$examples/cut.otio" | expect visitDocument 'track 1
  demo-out/media/plate_2398.mov
  demo-out/media/shot.%04d.exr
  demo-out/media/scope_24.mp4
  demo-out/media/broadcast_2997.mov
  demo-out/media/missing.mov'
! "$programs/visitDocument" missing.otio 2>message
expect 'visitDocument of a missing file' 'missing.otio: cannot be read' <message

echo "48 24 640 360" >walk.flip
"$programs/writeReader" walk.flip >flip
holds writeReader flip '"value":48.0,"rate":24.0' '"size":[640.0,360.0]'
! "$programs/writeReader" missing.flip >flip
[ "$(cat flip)" != "" ] || { echo "writeReader: no word of the missing file"; failed=1; }

if [ -x "$programs/completeDocument" ]; then
    ffmpeg -nostdin -v error -f lavfi -i testsrc=size=64x48:rate=25:duration=1 -c:v mpeg4 walk.mov
    cat >walk.otio <<'DOCUMENT'
{"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Track.1","kind":"Video",
"children":[{"OTIO_SCHEMA":"Clip.1","media_reference":{"OTIO_SCHEMA":"ExternalReference.1","target_url":"walk.mov"}}]}]}}
DOCUMENT
    "$programs/completeDocument" walk.otio >complete
    holds completeDocument complete '"value":25.0,"rate":25.0' '"pixel_resolution":[64,48]' '"video_codec":"mpeg4"'

    mkdir wall
    for name in walk run; do
        ffmpeg -nostdin -v error -f lavfi -i testsrc=size=64x48:rate=24 -frames:v 3 "wall/$name.%04d.png"
    done
    "$programs/layOutSequences" wall 2>names >wall.otio
    sort names | expect layOutSequences 'run.%04d.png
walk.%04d.png'
    holds layOutSequences wall.otio '"name":"Sequences"' '"target_url":"wall/run.%04d.png"' \
        '"target_url":"wall/walk.%04d.png"'
fi
exit "$failed"
