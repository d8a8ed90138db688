// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// A media reader for a made-up format: a text file whose one line says how many frames the medium has, how many of them
// pass in a second, and how large they are.
//
//     echo "48 24 640 360" > walk.flip && writeReader walk.flip
#include <orlMediaMetadataReader.h>

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

using namespace ORL_0_81;

namespace {

class FlipReader : public MediaMetadataReader {
public:
    // Called from many threads at once: all that it needs is on its own stack.
    Status readMediaMetadata(String const& path, Bounds const&, Time const&, String& metadata) override {
        std::ifstream file(path.c_str());
        if (!file) {
            return Status::kErrorOpeningMediaFile;
        }
        int frames = 0;
        int rate = 0;
        int width = 0;
        int height = 0;
        if (!(file >> frames >> rate >> width >> height)) {
            return Status::kUnsupportedFormat;
        }
        // A document with one clip. Numbers need no escapes; a name would.
        std::ostringstream text;
        text << R"({"OTIO_SCHEMA":"Timeline.1","tracks":{"OTIO_SCHEMA":"Stack.1","children":[)"
             << R"({"OTIO_SCHEMA":"Track.1","kind":"Video","children":[)"
             << R"({"OTIO_SCHEMA":"Clip.1","media_reference":{"OTIO_SCHEMA":"ExternalReference.1",)"
             << R"("available_range":{"OTIO_SCHEMA":"TimeRange.1",)"
             << R"("start_time":{"OTIO_SCHEMA":"RationalTime.1","value":0.0,"rate":)" << rate << ".0},"
             << R"("duration":{"OTIO_SCHEMA":"RationalTime.1","value":)" << frames << R"(.0,"rate":)" << rate
             << R"(.0}},"metadata":{"orl":{"ORL_SCHEMA":"ClipNodeMediaReferenceMetadata.1",)"
             << R"("bounds":{"center":[0.0,0.0],"size":[)" << width << ".0," << height << ".0]},"
             << R"("pixel_resolution":[)" << width << ',' << height << R"(],"frame_rate":)" << rate
             << ".0}}}}]}]}}";
        metadata = text.str().c_str();
        return Status::kSuccess;
    }
};

} // namespace

int main(int argc, char** argv) {
    SharedPtr<MediaMetadataReader> const reader(new FlipReader);
    int failures = 0;
    for (int i = 1; i < argc; ++i) {
        String metadata;
        Status const status =
            MediaMetadata::getMediaMetadata(argv[i], Bounds(), Time(0, Rational(24, 1)), metadata);
        std::cout << argv[i] << ": " << (status ? metadata.c_str() : status.getStr()) << '\n';
        failures += status ? 0 : 1;
    }
    return failures == 0 ? 0 : 1;
}
