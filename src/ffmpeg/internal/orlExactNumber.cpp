// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlExactNumber.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>

namespace ORL_0_81::media {

namespace {

template <unsigned parseFlags>
bool isReadAs(std::string const& text, double value) {
    rapidjson::Document document;
    document.Parse<parseFlags>(text.c_str());
    return !document.HasParseError() && document.IsDouble() && document.GetDouble() == value;
}

bool isReadExactly(std::string const& text, double value) {
    return isReadAs<rapidjson::kParseDefaultFlags>(text, value) &&
           isReadAs<rapidjson::kParseFullPrecisionFlag>(text, value);
}

std::string plainText(double value) {
    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    writer.Double(value);
    return std::string(buffer.GetString(), buffer.GetSize());
}

// Counts the last digit up or down, with its carry; false at the end of the digits.
bool step(std::string& text, bool up) {
    for (std::size_t i = text.size(); i-- > 0;) {
        if (text[i] == '.') {
            continue;
        }
        if (text[i] < '0' || text[i] > '9') {
            return false;
        }
        if (text[i] != (up ? '9' : '0')) {
            text[i] = static_cast<char>(text[i] + (up ? 1 : -1));
            return true;
        }
        text[i] = up ? '0' : '9';
    }
    return false;
}

} // namespace

std::string toExactText(double value) {
    std::string const plain = plainText(value);
    if (isReadExactly(plain, value) || plain.find('e') != std::string::npos) {
        return plain;
    }
    // The neighbours of the text that are still nearer to this double than to any other. A digit more halves
    // nothing: the quick parser rounds the digits to a double before it places the point.
    constexpr int NEIGHBOURS = 8;
    for (bool const up : {true, false}) {
        std::string text = plain;
        for (int i = 0; i < NEIGHBOURS && step(text, up); ++i) {
            if (isReadExactly(text, value)) {
                return text;
            }
        }
    }
    return plain;
}

} // namespace ORL_0_81::media
