// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// Reads a timeline document, has FFmpeg describe the media that its clips name, and writes the complete document.
//
//     completeDocument docs/examples/cut.otio > cut-complete.otio
#include <orlFFmpegMediaMetadataReader.h>
#include <orlMediaMetadataReader.h>

#include <fstream>
#include <iostream>
#include <sstream>

using namespace ORL_0_81;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: completeDocument FILE\n";
        return 2;
    }
    std::ifstream file(argv[1]);
    std::stringstream text;
    if (!(text << file.rdbuf())) {
        std::cerr << argv[1] << ": cannot be read\n";
        return 1;
    }

    // From here on it is the reader that MediaMetadata asks, for as long as someone holds it.
    SharedPtr<MediaMetadataReader> const reader(new FFmpegMediaMetadataReader);

    // A clip without bounds of its own lies in these; a timeline without a start begins at this time, unless its only
    // clip knows better.
    Bounds const reference(0.0, 0.0, 1920.0, 1080.0);
    Time const start(0, Rational(24, 1));

    String complete;
    Status const status = MediaMetadata::sanitizeOTIOMetadata(text.str().c_str(), complete, reference, start);
    if (!status) {
        std::cerr << argv[1] << ": " << status.getStr() << '\n';
        return 1;
    }
    std::cout << complete.c_str() << '\n';
    return 0;
}
