// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The first byte chooses an extension, the rest is the file. The reader must say what it may say of a file, and what it
// says of a medium must be a document of one clip in normal form. FFmpeg itself is not instrumented.
#include "internal/orlJson.h"
#include "orlFFmpegMediaMetadataReader.h"
#include "orlSameJson.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <unistd.h>

namespace {

using namespace ORL_0_81;

// makeMedia.sh knows their order.
char const* const EXTENSIONS[] = {"mov", "mp4", "mkv", "avi", "mxf",  "wav",  "png", "exr",
                                  "gif", "ts",  "dpx", "tga", "flac", "m3u8", "txt", "0007.png"};

// The file is there, but a playlist may name one that is not.
Status::Type const FAILURES[] = {Status::kFileNotFound,      Status::kIOAccess,
                                 Status::kUnsupportedFormat, Status::kUnsupportedCodec,
                                 Status::kVariableFps,       Status::kErrorOpeningMediaFile};

// A folder in memory where there is one.
class Folder {
public:
    Folder() {
        std::filesystem::path const shared = "/dev/shm";
        bool const isShared = access(shared.c_str(), W_OK) == 0;
        m_path = (isShared ? shared : std::filesystem::temp_directory_path()) /
                 ("orlFFmpegReaderFuzzer." + std::to_string(getpid()));
        std::filesystem::create_directory(m_path);
    }
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::string operator/(std::string const& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

class Counter : public rapidotio::NodeVisitor {
public:
    void visitClipNode(rapidotio::ClipNode& /*node*/) override { ++clips; }

    int clips = 0;
};

[[noreturn]] void fail(char const* what, std::string const& left, std::string const& right) {
    std::fprintf(stderr, "%s\n%s\n%s\n", what, left.c_str(), right.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Folder const folder;
    static SharedPtr<FFmpegMediaMetadataReader> const reader(new FFmpegMediaMetadataReader);
    if (size == 0) {
        return 0;
    }
    reader->setTimeLimit(0.1); // a playlist without an end waits for more
    std::string const extension = EXTENSIONS[data[0] % (sizeof EXTENSIONS / sizeof *EXTENSIONS)];
    std::string const file = folder / ("medium." + extension);
    std::string const asked = folder / (extension == "0007.png" ? "medium.%04d.png" : "medium." + extension);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<char const*>(data) + 1, static_cast<std::streamsize>(size - 1));

    String document("untouched");
    Status const status = reader->readMediaMetadata(asked.c_str(), Bounds(0.0, 0.0, 1.7777777777777777, 1.0),
                                                    Time(0, Rational(24, 1)), document);
    std::filesystem::remove(file);
    std::string const text = document.asChar();
    if (!status) {
        if (text != "untouched" || !std::count(std::begin(FAILURES), std::end(FAILURES), status.get())) {
            fail("no such failure", status.getStr(), text);
        }
        return 0;
    }
    std::string normal;
    Counter counter;
    if (!rapidotio::VisitorHelper::visit(text, counter, &normal) || counter.clips != 1) {
        fail("no document of one clip", text, normal);
    }
    rapidjson::Document values;
    rapidjson::Document normalValues;
    parseJson(text.c_str(), values);
    parseJson(normal.c_str(), normalValues);
    if (!orlFuzz::isSame(values, normalValues)) {
        fail("no document in normal form", text, normal);
    }
    return 0;
}
