// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_MEDIA_DESCRIPTION_H
#define ORL_MEDIA_DESCRIPTION_H

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace ORL_0_81::media {

/// What is told of one medium. The defaults are those that a clip has for what is not known.
struct MediaDescription {
    std::string name; ///< Of the file or the sequence, without a directory.
    bool hasPicture = false;

    double rate = 0.0;            ///< Of the range, in frames per second.
    std::int64_t start = 0;       ///< The number of the first frame.
    std::int64_t frameCount = -1; ///< -1: unknown.

    int width = -1; ///< In pixels, as stored.
    int height = -1;
    std::string dataType;
    int channels = -1;
    double pixelAspect = 0.0;
    double frameRate = 0.0;
    double displayAspect = 0.0; ///< Width by height as shown; 0.0 without a picture.
    std::string videoCodec = "Unknown";

    bool hasAudio = false;
    double audioSampleRate = 0.0;
    int audioChannels = -1;
    std::string audioCodec = "Unknown";

    std::int64_t fileSize = -1;                                 ///< In bytes.
    std::vector<std::pair<std::string, std::string>> extraData; ///< Names and values.
};

} // namespace ORL_0_81::media

#endif // ORL_MEDIA_DESCRIPTION_H
