// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTimelineDocument.h"

#include "internal/orlJson.h"
#include "orlInputError.h"
#include "rapidotio/orlOtioNodeIterator.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <rapidjson/error/en.h>

#include <algorithm>

namespace ORL_0_81::tool {

using namespace std::string_literals;

namespace {

rapidotio::NodeVisitor& onlooker() {
    class Onlooker : public rapidotio::NodeVisitor {};
    static Onlooker instance;
    return instance;
}

bool beginsWith(std::string const& text, std::string const& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

[[noreturn]] void failAt(std::string const& file, std::string const& text, std::size_t offset,
                         std::string const& reason) {
    auto const here = text.begin() + static_cast<std::ptrdiff_t>(std::min(offset, text.size()));
    auto const line = 1 + std::count(text.begin(), here, '\n');
    auto const lineStart = std::find(std::make_reverse_iterator(here), text.rend(), '\n').base();
    throw InputError(file, "line " + std::to_string(line) + ", column " +
                               std::to_string(1 + (here - lineStart)) + ": " + reason);
}

void refuseUtf16(std::string const& file, std::string const& text) {
    if (beginsWith(text, "\xff\xfe") || beginsWith(text, "\xfe\xff")) {
        throw InputError(file, "the text is in UTF-16; a timeline document is in UTF-8");
    }
}

void refuseTextBehindZero(std::string const& file, std::string const& text) {
    std::size_t const zero = text.find('\0');
    if (zero != std::string::npos && text.find_first_not_of("\0 \t\r\n"s, zero) != std::string::npos) {
        failAt(file, text, zero, "a zero byte; the text behind it would be lost");
    }
}

rapidjson::Value const& stepIntoWrapper(rapidjson::Value const& document) {
    if (document.IsObject()) {
        auto const timeline = document.FindMember("timeline");
        if (timeline != document.MemberEnd() && timeline->value.IsObject()) {
            return timeline->value;
        }
    }
    return document;
}

} // namespace

std::string withoutByteOrderMark(std::string const& text) {
    static std::string const mark = "\xef\xbb\xbf";
    return beginsWith(text, mark) ? text.substr(mark.size()) : text;
}

void parseDocument(std::string const& file, std::string const& body, rapidjson::Document& document) {
    refuseUtf16(file, body);
    refuseTextBehindZero(file, body);
    rapidjson::ParseResult const result = parseJson(body.c_str(), document);
    if (!result.IsError()) {
        return;
    }
    if (result.Code() == rapidjson::kParseErrorTermination) {
        // Told behind the bracket that was one too many.
        failAt(file, body, result.Offset() - 1,
               "nested deeper than " + std::to_string(kMaxJsonDepth) + " levels");
    }
    failAt(file, body, result.Offset(), rapidjson::GetParseError_En(result.Code()));
}

TimelineDocument::TimelineDocument(std::string const& file, std::string const& text,
                                   rapidotio::NodeVisitor& visitor) {
    parseDocument(file, withoutByteOrderMark(text), m_json);
    m_root = std::make_unique<rapidotio::RootNode>(stepIntoWrapper(m_json));
    rapidotio::NodeIterator(*m_root, visitor).iterate();
}

TimelineDocument::TimelineDocument(std::string const& file, std::string const& text)
    : TimelineDocument(file, text, onlooker()) {}

rapidotio::TimelineNode const* TimelineDocument::timeline() const {
    return m_root->m_children.empty()
               ? nullptr
               : dynamic_cast<rapidotio::TimelineNode const*>(m_root->m_children.front().get());
}

std::string TimelineDocument::normalForm() const {
    rapidjson::Document written(rapidjson::kObjectType);
    m_root->toJson(written, written.GetAllocator());
    return jsonToText(written);
}

} // namespace ORL_0_81::tool
