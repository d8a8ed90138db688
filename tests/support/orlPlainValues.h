// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_ORL_PLAIN_VALUES_H
#define ORL_TEST_SUPPORT_ORL_PLAIN_VALUES_H

#include "support/Json.h"

#include <orlBounds.h>
#include <orlRational.h>
#include <orlTime.h>
#include <orlVideoBufferResolution.h>

#include <rapidjson/document.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

/// \file
/// Plain readers and writers of the values, which take an ordinary document for each text and know no short
/// cuts. Each says with makeValue() which value it starts as.

namespace orlTest {

using namespace ORL_0_81;

/// The deepest nesting of a text, as far as it is JSON.
inline int depthOf(std::string const& text) {
    int depth = 0;
    int deepest = 0;
    bool isInString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        if (isInString && c == '\\') {
            ++i;
        } else if (c == '"') {
            isInString = !isInString;
        } else if (!isInString && (c == '[' || c == '{')) {
            deepest = std::max(deepest, ++depth);
        } else if (!isInString && (c == ']' || c == '}')) {
            --depth;
        }
    }
    return deepest;
}

inline bool parse(std::string const& text, rapidjson::Document& document) {
    std::string const upToNul = text.c_str();
    if (depthOf(upToNul) > 1000) {
        return false;
    }
    document.Parse(upToNul.c_str());
    return !document.HasParseError();
}

inline rapidjson::Value const* find(rapidjson::Value const& object, char const* name) {
    if (object.IsObject()) {
        for (auto const& member : object.GetObject()) {
            if (std::string(member.name.GetString(), member.name.GetStringLength()) == name) {
                return &member.value;
            }
        }
    }
    return nullptr;
}

inline bool readInt(rapidjson::Value const& object, char const* name, int& result) {
    rapidjson::Value const* const value = find(object, name);
    if (value && value->IsInt()) {
        result = value->GetInt();
        return true;
    }
    return false;
}

inline bool readBool(rapidjson::Value const& object, char const* name, bool& result) {
    rapidjson::Value const* const value = find(object, name);
    if (value && value->IsBool()) {
        result = value->GetBool();
        return true;
    }
    return false;
}

inline bool readText(rapidjson::Value const& object, char const* name, std::string& result) {
    rapidjson::Value const* const value = find(object, name);
    if (value && value->IsString()) {
        result = value->GetString();
        return true;
    }
    return false;
}

inline bool readPair(rapidjson::Value const& object, char const* name, double& first, double& second) {
    rapidjson::Value const* const value = find(object, name);
    if (!value || !value->IsArray() || value->Size() < 2) {
        return false;
    }
    for (rapidjson::SizeType i = 0; i < 2; ++i) {
        if (!(*value)[i].IsDouble() || !std::isfinite((*value)[i].GetDouble())) {
            return false;
        }
    }
    first = (*value)[0].GetDouble();
    second = (*value)[1].GetDouble();
    return true;
}

struct RationalModel {
    int numerator = 5;
    unsigned int denominator = 7;

    static Rational makeValue() { return Rational(5, 7); }

    Status fromJson(std::string const& text) {
        rapidjson::Document document;
        int newNumerator = 0;
        int newDenominator = 0;
        if (!parse(text, document) || !readInt(document, "numerator", newNumerator) ||
            !readInt(document, "denominator", newDenominator)) {
            return Status::kInvalidRationalStr;
        }
        numerator = newNumerator;
        denominator = static_cast<unsigned int>(newDenominator);
        return Status::kSuccess;
    }

    std::string toJson() const {
        return "{\"numerator\":" + std::to_string(numerator) +
               ",\"denominator\":" + std::to_string(denominator) + "}";
    }
};

struct TimeModel {
    long long ticks = 3;
    RationalModel rate;

    static Time makeValue() { return Time(3, Rational(5, 7)); }

    Status fromJson(std::string const& text) {
        rapidjson::Document document;
        int newTicks = 0;
        RationalModel newRate;
        if (!parse(text, document) || !readInt(document, "number_of_ticks", newTicks) ||
            !newRate.fromJson(text)) {
            return Status::kInvalidTimeStr;
        }
        ticks = newTicks;
        rate = newRate;
        return Status::kSuccess;
    }

    std::string toJson() const {
        return "{\"number_of_ticks\":" + std::to_string(ticks) + "," + rate.toJson().substr(1);
    }
};

struct BoundsModel {
    double centerX = 7.0;
    double centerY = 5.0;
    double sizeX = 3.0;
    double sizeY = 1.0;

    static Bounds makeValue() { return Bounds(7.0, 5.0, 3.0, 1.0); }

    Status fromJson(std::string const& text) {
        rapidjson::Document document;
        BoundsModel read;
        if (!parse(text, document) || !readPair(document, "center", read.centerX, read.centerY) ||
            !readPair(document, "size", read.sizeX, read.sizeY)) {
            return Status::kInvalidBoundsStr;
        }
        *this = read;
        return Status::kSuccess;
    }

    std::string toJson() const {
        auto const number = [](double value) { return textOf(rapidjson::Value(value)); };
        return "{\"center\":[" + number(centerX) + "," + number(centerY) + "],\"size\":[" + number(sizeX) +
               "," + number(sizeY) + "]}";
    }
};

struct ResolutionModel {
    int width = 11;
    int height = 12;
    BoundsModel bounds;
    std::string scanFormat = "scan";
    int bitsPerChannel = 13;
    int numChannels = 14;
    bool isFloat = true;
    bool isBigEndian = false;
    std::string colorSpace = "color";

    static VideoBufferResolution makeValue() {
        return VideoBufferResolution(11, 12, BoundsModel::makeValue(), "scan", 13, 14, true, false, "color");
    }

    Status fromJson(std::string const& text) {
        rapidjson::Document document;
        ResolutionModel read;
        if (!parse(text, document) || !readInt(document, "width", read.width) ||
            !readInt(document, "height", read.height) ||
            !readInt(document, "bits_per_channel", read.bitsPerChannel) ||
            !readInt(document, "num_channels", read.numChannels) ||
            !readText(document, "scan_format", read.scanFormat) ||
            !readText(document, "color_space", read.colorSpace) ||
            !readBool(document, "is_float", read.isFloat) ||
            !readBool(document, "is_big_endian", read.isBigEndian)) {
            return Status::kInvalidJsonType;
        }
        rapidjson::Value const* const nested = find(document, "bounds");
        if (!nested || !nested->IsObject()) {
            return Status::kInvalidJsonType;
        }
        read.bounds = bounds;
        *this = read;
        return bounds.fromJson(textOf(*nested));
    }

    std::string toJson() const {
        rapidjson::Document nested;
        nested.Parse(bounds.toJson().c_str());
        auto const quoted = [](std::string const& text) {
            return textOf(rapidjson::Value(rapidjson::StringRef(text.c_str())));
        };
        auto const truth = [](bool value) { return std::string(value ? "true" : "false"); };
        return "{\"width\":" + std::to_string(width) + ",\"height\":" + std::to_string(height) +
               ",\"bounds\":" + textOf(nested) + ",\"scan_format\":" + quoted(scanFormat) +
               ",\"bits_per_channel\":" + std::to_string(bitsPerChannel) +
               ",\"num_channels\":" + std::to_string(numChannels) + ",\"is_float\":" + truth(isFloat) +
               ",\"is_big_endian\":" + truth(isBigEndian) + ",\"color_space\":" + quoted(colorSpace) + "}";
    }
};

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_ORL_PLAIN_VALUES_H
