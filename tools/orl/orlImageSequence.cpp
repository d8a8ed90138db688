// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlImageSequence.h"

#include "internal/orlFrameNotation.h"
#include "internal/orlJson.h"
#include "orlJsonForms.h"
#include "orlJsonScanner.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace ORL_0_81::tool {

namespace {

constexpr char const kUrl[] = "target_url";

std::string textOf(rapidjson::Value const& reference, char const* name) {
    rapidjson::Value const* const value = findMember(reference, name);
    return value && value->IsString() ? std::string(wholeText(*value)) : std::string();
}

bool isFileUrl(std::string const& url) { return url.compare(0, 7, "file://") == 0; }

// Whether there is a percent sign with two hexadecimal digits behind it.
bool isEscaped(std::string const& url) {
    auto const isHexadecimal = [&url](std::size_t i) {
        return i < url.size() && std::isxdigit(static_cast<unsigned char>(url[i])) != 0;
    };
    for (std::size_t i = url.find('%'); i != std::string::npos; i = url.find('%', i + 1)) {
        if (isHexadecimal(i + 1) && isHexadecimal(i + 2)) {
            return true;
        }
    }
    return false;
}

std::string urlOf(rapidjson::Value const& reference) {
    std::string url = textOf(reference, "target_url_base");
    std::string const prefix = textOf(reference, "name_prefix");
    std::string const suffix = textOf(reference, "name_suffix");
    if (url.empty() && prefix.empty() && suffix.empty()) {
        return url;
    }
    if (!url.empty() && url.back() != '/') {
        url += '/';
    }
    std::int32_t padding = 1;
    readInt(reference, "frame_zero_padding", padding);
    std::size_t const width = padding < 1 ? 1 : static_cast<std::size_t>(padding);
    // No frame that has more digits is ever found, so a wider symbol would find none at all.
    std::string symbol = FrameNotation::frameSymbol(std::min(width, FrameNotation::MAX_DIGITS));
    if (isFileUrl(url) && isEscaped(url + prefix + suffix)) {
        symbol.insert(1, "25"); // %04 would be taken for an escape like the others
    }
    return url + prefix + symbol + suffix;
}

} // namespace

std::string withSequenceUrl(std::string const& reference) {
    rapidjson::Document document;
    parseJson(reference.c_str(), document);
    if (schemaOf(document) != "ImageSequenceReference.1") {
        return reference;
    }
    rapidjson::Value const* const present = findMember(document, kUrl);
    std::string const url = urlOf(document);
    if (url.empty() || (present && !saysNothing(*present))) {
        return reference;
    }
    std::string const urlText =
        jsonToText(rapidjson::Value(url.data(), static_cast<rapidjson::SizeType>(url.size())));

    // What is added is written as the members before it are: with their line breaks and blanks.
    JsonScanner const scanner(reference);
    std::size_t const begin = scanner.begin();
    std::optional<TextSpan> place;
    TextSpan first;
    TextSpan last;
    scanner.forEachMember(begin, [&](TextSpan const& name, std::size_t value) {
        last = {value, scanner.endOf(value)};
        if (first.end == 0) {
            first = {name.begin, value};
        }
        if (!place && scanner.decoded(name) == kUrl) {
            place = last;
        }
        return last.end;
    });
    std::string result = reference;
    if (place) {
        return result.replace(place->begin, place->end - place->begin, urlText);
    }
    std::string const gap = reference.substr(begin + 1, first.begin - begin - 1);
    std::size_t const colon = reference.find(':', scanner.endOf(first.begin));
    std::string const behindColon = reference.substr(colon, first.end - colon);
    return result.insert(last.end, ',' + gap + '"' + kUrl + '"' + behindColon + urlText);
}

} // namespace ORL_0_81::tool
