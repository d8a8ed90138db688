// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The first byte chooses the bounds and the time; then come lines, a document and what a reader answers. The
// completed document must be the one of plain rules that take one clip after the other.
#include "internal/orlJson.h"
#include "orlLines.h"
#include "orlMediaMetadataReader.h"
#include "orlPlainSanitizer.h"
#include "rapidotio/orlOtioNodeIterator.h"

#include <rapidjson/document.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace orlFuzz;

// Each medium has one of the lines for its answer, by its name and by the time. One that begins with an
// exclamation mark is a failure, with a question mark an exception.
class Reader : public MediaMetadataReader {
public:
    Status answer(std::string const& url, Time const& time, std::string& metadata) const {
        auto number = static_cast<unsigned long long>(time.getNbTicks());
        for (char const c : url) {
            number = number * 31 + static_cast<unsigned char>(c);
        }
        if (m_answers.empty() || time.isUndefined()) {
            return Status::kFileNotFound;
        }
        std::string const& text = m_answers[number % m_answers.size()];
        if (text[0] == '?') {
            throw ReaderFailure();
        }
        metadata = text;
        return text[0] == '!' ? Status::kErrorOpeningMediaFile : Status::kSuccess;
    }

    Status readMediaMetadata(String const& path, Bounds const& /*bounds*/, Time const& time,
                             String& metadata) override {
        std::string text;
        Status const status = answer(std::string(path.data(), path.size()), time, text);
        metadata = String(text.data(), text.size());
        return status;
    }

    std::vector<std::string> m_answers;
};

Bounds const BOUNDS[] = {Bounds(0.0, 0.0, 1.0, 1.0), Bounds(0.5, -0.5, 1.7777777777777777, 1.0), Bounds(),
                         Bounds(-1e308, 1e308, -1.0, 1e308)};
Time const TIMES[] = {Time(48, Rational(24, 1)), Time(-86400, Rational(24000, 1001)), Time(7, Rational(0, 0)),
                      Time(Time::getUndefinedNbTicks(), Rational(25, 1)), Time(LLONG_MIN, Rational(1, 1))};

// The status, and the document.
std::string plainly(std::string const& document, Bounds const& bounds, Time const& time,
                    Reader const& reader) {
    rapidjson::Document source;
    if (document.c_str()[0] == '\0' || parseJson(document.c_str(), source).IsError()) {
        return "kOTIOJsonReadError";
    }
    bool const isWrapped = source.IsObject() && source.HasMember("timeline") && source["timeline"].IsObject();
    rapidotio::RootNode root(isWrapped ? source["timeline"] : source);
    PlainSanitizer sanitizer(bounds, time, [&](std::string const& url, Time const& at, std::string& text) {
        return reader.answer(url.c_str(), at, text);
    });
    try {
        rapidotio::NodeIterator(root, sanitizer).iterate();
    } catch (ReaderFailure const&) {
        return "thrown";
    }
    rapidjson::Document written(rapidjson::kObjectType);
    root.toJson(written, written.GetAllocator());
    return std::string("kSuccess") + jsonToText(written).c_str();
}

std::string byLibrary(std::string const& document, Bounds const& bounds, Time const& time) {
    String sanitized;
    try {
        Status const status = MediaMetadata::sanitizeOTIOMetadata(String(document.data(), document.size()),
                                                                  sanitized, bounds, time);
        return status.getStr() + std::string(sanitized.asChar());
    } catch (ReaderFailure const&) {
        return "thrown" + std::string(sanitized.asChar());
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static SharedPtr<Reader> const reader(new Reader);
    if (size == 0) {
        return 0;
    }
    Bounds const& bounds = BOUNDS[data[0] % 4];
    Time const& time = TIMES[data[0] / 4 % 5];
    std::vector<std::string> const lines = linesOf(data + 1, size - 1);
    reader->m_answers.assign(lines.begin() + 1, lines.end());
    std::string const expected = plainly(lines[0], bounds, time, *reader);
    std::string const actual = byLibrary(lines[0], bounds, time);
    if (actual != expected) {
        std::fprintf(stderr, "library: %s\nrules:   %s\n", actual.c_str(), expected.c_str());
        std::abort();
    }
    return 0;
}
