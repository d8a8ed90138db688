// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlStatusWords.h"

namespace ORL_0_81::tool {

namespace {

// What the names of the usual outcomes mean.
struct Words {
    Status::Type code;
    char const* text;
};
constexpr Words kWords[] = {
    {Status::kDirectoryNotFound, "no such directory"},
    {Status::kErrorOpeningMediaFile, "it cannot be opened as a medium"},
    {Status::kFileNotFound, "no such file"},
    {Status::kIOAccess, "it cannot be read, or does not answer"},
    {Status::kMediaReaderUnavailable, "no reader for media"},
    {Status::kRegexException, "it is no regular expression"},
    {Status::kUnsupportedCodec, "nothing here decodes it"},
    {Status::kUnsupportedFormat, "it is of a kind that cannot be read"},
    {Status::kVariableFps, "its frame rate varies"},
};

} // namespace

std::string reasonOf(Status status) {
    std::string name = status.getStr();
    for (Words const& words : kWords) {
        if (status == words.code) {
            return name + ": " + words.text;
        }
    }
    return name;
}

} // namespace ORL_0_81::tool
