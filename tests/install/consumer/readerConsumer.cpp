// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// An application that has its media read by FFmpeg.
#include <orlFFmpegMediaMetadataReader.h>

#include <cstdio>

using namespace ORL_0_81;

int main() {
    SharedPtr<MediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
    String metadata;
    Status const status = MediaMetadata::getMediaMetadata("/there/is/no/such.mov", Bounds(),
                                                          Time(0, Rational(24, 1)), metadata);
    if (status) {
        std::puts("a file that does not exist was read");
        return 1;
    }
    std::puts("all well");
    return 0;
}
