#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Copyright Contributors to the orlCore project
#
# orlFFmpegReaderExportsTest.sh READER CORE: the reader exports its class and nothing else, and the core does not know
# FFmpeg.
set -euo pipefail
failed=0
exports=$(nm --dynamic --defined-only "$1" | cut -d' ' -f3-)
foreign=$(grep -v FFmpegMediaMetadataReader <<<"$exports" | c++filt || true)
if [ -n "$foreign" ]; then
    printf 'Exported, but internal:\n%s\n' "$foreign"
    failed=1
fi
# Demangled once: a search that ends with its first hit would end the demangler before its time, now and then.
readable=$(c++filt <<<"$exports")
for name in '::FFmpegMediaMetadataReader()' '::readMediaMetadata(' '::setAllowedProtocols(' 'vtable for'; do
    if ! grep -qF "$name" <<<"$readable"; then
        printf 'Missing: %s\n' "$name"
        failed=1
    fi
done
if readelf --dynamic "$2" | grep -E 'NEEDED.*(libav|FFmpeg)'; then
    echo 'The core depends on FFmpeg'
    failed=1
fi
exit "$failed"
