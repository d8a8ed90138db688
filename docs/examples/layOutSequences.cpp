// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// Finds the sequences of a directory and puts them on one canvas, side by side.
//
//     layOutSequences demo-out/media > wall.otio
#include <orlFFmpegMediaMetadataReader.h>
#include <orlFileSequenceUtils.h>
#include <orlMediaMetadataReader.h>
#include <orlVector.h>

#include <iostream>
#include <string>

using namespace ORL_0_81;

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: layOutSequences DIRECTORY\n";
        return 2;
    }
    // Names of one directory come without it.
    Vector<String> names;
    Status status = FileSequenceUtils::getSequencesInDirectory(argv[1], names, R"(\.(exr|png|jpg)$)");
    if (!status) {
        std::cerr << argv[1] << ": " << status.getStr() << '\n';
        return 1;
    }
    Vector<String> paths;
    for (unsigned long i = 0; i < names.size(); ++i) {
        bool isSequence = false;
        FileSequenceUtils::isSequenceName(names[i], isSequence);
        if (isSequence) {
            std::cerr << names[i].c_str() << '\n';
            paths.push_back((std::string(argv[1]) + '/' + names[i].c_str()).c_str());
        }
    }

    SharedPtr<MediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
    Bounds const canvas(0.0, 0.0, 1920.0, 1080.0);
    Time const start(0, Rational(24, 1)); // its rate is that of frames in files
    String layout;
    status = MediaMetadata::getLayoutFromFilepaths(paths, MediaMetadata::kGrid, "Sequences", canvas, start,
                                                   layout);
    if (!status) {
        std::cerr << status.getStr() << '\n';
        return 1;
    }
    std::cout << layout.c_str() << '\n';
    return 0;
}
