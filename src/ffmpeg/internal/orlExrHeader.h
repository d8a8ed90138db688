// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_EXR_HEADER_H
#define ORL_EXR_HEADER_H

#include <string>

namespace ORL_0_81::media {

/// What the header of an OpenEXR file says of its channels. FFmpeg tells of the picture that it decodes them
/// to, which has samples of 32 bits, whatever there was.
struct ExrChannels {
    std::string dataType; ///< "uint32", "half" or "float": that of the first channel.
    int count = 0;
};

/// Reads the channel list of the first part.
///
/// \param bytes What the file begins with.
/// \param channels Left alone after a failure.
/// \returns false if there is no whole channel list in the bytes.
bool readExrChannels(std::string const& bytes, ExrChannels& channels);

} // namespace ORL_0_81::media

#endif // ORL_EXR_HEADER_H
