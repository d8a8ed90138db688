// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_MEDIA_LOCATION_H
#define ORL_MEDIA_LOCATION_H

#include <string>
#include <vector>

namespace ORL_0_81::media {

/// A list of protocols as FFmpeg writes it: names with commas between them.
class ProtocolList {
public:
    ProtocolList() = default;
    explicit ProtocolList(std::string names);

    bool contains(std::string const& name) const;
    std::string const& text() const { return m_names; }

private:
    std::string m_names;
};

/// Where a medium is.
struct MediaLocation {
    /// What may be opened on this machine, likeliest first. Empty for a URL of another protocol.
    std::vector<std::string> localPaths;
    /// The protocol of any other URL, in lower case; empty for a local file.
    std::string protocol;
};

/// Tells a local file from a URL.
///
/// A text is a URL if it begins with a scheme that is followed by two slashes, or with one of `allowed`, for
/// some protocols have no slashes. Anything else may be the name of a file, colons and all.
///
/// A file URL may be percent-encoded or not, and nothing but the file system can tell; both readings are
/// returned where they differ.
MediaLocation findLocation(std::string const& text, ProtocolList const& allowed);

} // namespace ORL_0_81::media

#endif // ORL_MEDIA_LOCATION_H
