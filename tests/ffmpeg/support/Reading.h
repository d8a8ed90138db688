// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef TESTS_FFMPEG_READING_H
#define TESTS_FFMPEG_READING_H

#include <orlFFmpegMediaMetadataReader.h>

#include <rapidjson/document.h>
#include <rapidjson/pointer.h>

#include <gtest/gtest.h>

#include <string>

namespace ORL_0_81 {

/// As a failed check shows it.
inline void PrintTo(Status const& status, std::ostream* out) { *out << status.getStr(); }

} // namespace ORL_0_81

/// What the tests of the reader share: the media, and documents as values.
namespace Reading {

using namespace ORL_0_81;

/// The path of a medium that makeMedia.sh makes.
inline std::string medium(std::string const& name) { return ORL_TEST_MEDIA "/" + name; }

inline Bounds canvas() { return Bounds(10.0, 20.0, 1920.0, 1080.0); }

inline Time asked() { return Time(0, Rational(24, 1)); }

/// One reader for all that a test reads.
class Reader {
public:
    FFmpegMediaMetadataReader* operator->() const { return m_reader.get(); }

    Status read(std::string const& path, std::string& document, Bounds const& bounds = canvas(),
                Time const& time = asked()) const {
        String text("untouched");
        Status const status =
            m_reader->readMediaMetadata(String(path.data(), path.size()), bounds, time, text);
        document.assign(text.data(), text.size());
        return status;
    }

    Status statusOf(std::string const& path) const {
        std::string document;
        Status const status = read(path, document);
        if (!status) {
            EXPECT_EQ(document, "untouched") << path;
        }
        return status;
    }

private:
    SharedPtr<FFmpegMediaMetadataReader> m_reader{new FFmpegMediaMetadataReader};
};

/// A document, with ways to what is in it.
class Document {
public:
    explicit Document(std::string const& text) {
        m_document.Parse<rapidjson::kParseFullPrecisionFlag>(text.c_str());
    }

    /// Null if the text is no such document.
    rapidjson::Value const* clip() const {
        return m_document.HasParseError()
                   ? nullptr
                   : rapidjson::Pointer("/tracks/children/0/children/0").Get(m_document);
    }

    rapidjson::Value const& root() const { return m_document; }

    /// The value at that JSON pointer below the clip.
    rapidjson::Value const& at(std::string const& pointer) const {
        static rapidjson::Value const missing;
        rapidjson::Value const* const start = clip();
        rapidjson::Value const* const found =
            start ? rapidjson::Pointer(pointer.c_str()).Get(*start) : nullptr;
        EXPECT_TRUE(found) << pointer;
        return found ? *found : missing;
    }

    rapidjson::Value const& format(std::string const& name) const {
        return at("/media_reference/metadata/orl/" + name);
    }

    double number(std::string const& pointer) const {
        rapidjson::Value const& value = at(pointer);
        return value.IsNumber() ? value.GetDouble() : -12345.0;
    }

    std::string extra(std::string const& name) const {
        rapidjson::Value const& values = format("extra_data");
        auto const found = values.FindMember(name.c_str());
        return found != values.MemberEnd() ? found->value.GetString() : "(missing)";
    }

    double start() const { return number("/media_reference/available_range/start_time/value"); }
    double duration() const { return number("/media_reference/available_range/duration/value"); }
    double rate() const { return number("/media_reference/available_range/duration/rate"); }

private:
    rapidjson::Document m_document;
};

/// The document of a medium that can be read.
inline Document read(std::string const& path, Bounds const& bounds = canvas(), Time const& time = asked()) {
    std::string text;
    Reader const reader;
    EXPECT_EQ(reader.read(path, text, bounds, time), Status::kSuccess) << path;
    Document document(text);
    EXPECT_TRUE(document.clip()) << path << ": " << text;
    return document;
}

} // namespace Reading

#endif // TESTS_FFMPEG_READING_H
