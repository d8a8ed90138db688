// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Json.h"
#include "support/Seed.h"

#include <orlBounds.h>
#include <orlRational.h>
#include <orlTime.h>
#include <orlVideoBufferResolution.h>

#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

// The readers and writers of the values beside plain ones, which take an ordinary document for each text and
// know no short cuts. Both get the same random texts: good ones, texts with a member that is missing, unfit
// or superfluous, and any of these with a few bytes changed.

namespace {

using namespace ORL_0_81;
using orlTest::textOf;

// The deepest nesting of a text, as far as it is JSON.
int depthOf(std::string const& text) {
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

bool parse(std::string const& text, rapidjson::Document& document) {
    std::string const upToNul = text.c_str();
    if (depthOf(upToNul) > 1000) {
        return false;
    }
    document.Parse(upToNul.c_str());
    return !document.HasParseError();
}

rapidjson::Value const* find(rapidjson::Value const& object, char const* name) {
    if (object.IsObject()) {
        for (auto const& member : object.GetObject()) {
            if (std::string(member.name.GetString(), member.name.GetStringLength()) == name) {
                return &member.value;
            }
        }
    }
    return nullptr;
}

bool readInt(rapidjson::Value const& object, char const* name, int& result) {
    rapidjson::Value const* const value = find(object, name);
    if (value && value->IsInt()) {
        result = value->GetInt();
        return true;
    }
    return false;
}

bool readBool(rapidjson::Value const& object, char const* name, bool& result) {
    rapidjson::Value const* const value = find(object, name);
    if (value && value->IsBool()) {
        result = value->GetBool();
        return true;
    }
    return false;
}

bool readText(rapidjson::Value const& object, char const* name, std::string& result) {
    rapidjson::Value const* const value = find(object, name);
    if (value && value->IsString()) {
        result = value->GetString();
        return true;
    }
    return false;
}

bool readPair(rapidjson::Value const& object, char const* name, double& first, double& second) {
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

using Texts = std::vector<std::string>;

Texts const kIntegers = {"0", "1", "-1", "-0", "2147483647", "-2147483648"};
Texts const kStrings = {R"("")",
                        R"("a")",
                        R"("x\u0000y")",
                        R"("\u0000")",
                        R"("\\\"\/\b\f\n\r\t\u001f\u007f")",
                        R"("\ud83d\ude00\u00e9")",
                        "\"\xFF\xC3\xA9\""};
Texts const kTruths = {"true", "false"};
Texts const kPairs = {"[1.0,2.0]", "[0.1,-0.30000000000000004,3]", "[5e-324,1.7976931348623157e308]",
                      "[12345678901234567890.5,18446744073709551616]",
                      "[0.00012345678901234567,9.87654321098765432E+21,null]"};
Texts const kNested = {R"({"center":[1.0,2.0],"size":[3.0,4.0]})",
                       R"({"size":[0.1,123456.7890123456789],"x":{},"center":[4.9e-5,1e22]})",
                       R"({"center":[1,2],"size":[3.0,4.0]})",
                       R"({"center":[1.0,2.0]})",
                       R"({"center":[1.0,2.0],"size":[3.0,4.0],"x":1.9e308})",
                       R"({"center":[1.0,2.0,-1.9e308],"size":[3.0,4.0]})"};
Texts const kUnfit = {"null", "1.0",         "2147483648", "-2147483649", "\"1\"", "[]", "[1.0]",   "[1,2]",
                      "{}",   "\"\\ud83d\"", "1e400",      "1.9e308",     "1e5",   "",   "[1.0,2]", "01"};

struct Field {
    char const* name;
    Texts const& values;
};

using Fields = std::vector<Field>;

class RandomTexts {
public:
    explicit RandomTexts(Fields fields) : m_fields(std::move(fields)), m_random(printedSeed()) {}

    std::string next() {
        std::string text = wellFormed();
        if (oneIn(20)) {
            text += std::string(1, '\0') + "}]";
        }
        if (oneIn(3)) {
            damage(text);
        }
        return text;
    }

private:
    std::size_t below(std::size_t count) { return m_random() % count; }
    bool oneIn(std::size_t count) { return below(count) == 0; }
    std::string const& any(Texts const& texts) { return texts[below(texts.size())]; }

    std::string blank() { return oneIn(6) ? std::string(1, " \t\r\n"[below(4)]) : std::string(); }

    std::string member(std::string const& name, std::string const& value) {
        return blank() + "\"" + name + "\"" + blank() + ":" + blank() + value + blank();
    }

    // Any member that nobody asks for.
    std::string stranger() {
        switch (below(5)) {
        case 0: {
            std::size_t const levels = 990 + below(20);
            return member("deep", std::string(levels, '[') + std::string(levels, ']'));
        }
        case 1:
            return member("long", "\"" + std::string(below(3000), '[') + "\"");
        case 2:
            return member(std::string(m_fields[0].name) + "\\u0000", any(kUnfit));
        default:
            return member(m_fields[below(m_fields.size())].name, any(m_fields[0].values));
        }
    }

    std::string wellFormed() {
        Texts members;
        for (Field const& field : m_fields) {
            if (!oneIn(40)) {
                members.push_back(member(field.name, oneIn(40) ? any(kUnfit) : any(field.values)));
            }
        }
        if (oneIn(6)) {
            members.push_back(stranger());
        }
        std::shuffle(members.begin(), members.end(), m_random);
        std::string text = blank() + "{";
        for (std::size_t i = 0; i < members.size(); ++i) {
            text += (i ? "," : "") + members[i];
        }
        return text + "}" + blank();
    }

    void damage(std::string& text) {
        std::string const bytes = "{}[]\",:\\0123456789.-+tfnu \x01\xFF";
        for (std::size_t count = 1 + below(2); count > 0 && !text.empty(); --count) {
            std::size_t const place = below(text.size());
            switch (below(4)) {
            case 0:
                text.erase(place, 1);
                break;
            case 1:
                text.insert(place, 1, bytes[below(bytes.size())]);
                break;
            case 2:
                text[place] = bytes[below(bytes.size())];
                break;
            default:
                text.resize(place);
                break;
            }
        }
    }

    Fields m_fields;
    std::mt19937 m_random;
};

template <class Model>
void expectAgreement(Fields const& fields) {
    RandomTexts texts(fields);
    int accepted = 0;
    int refused = 0;
    for (int i = 0; i < 20000; ++i) {
        std::string const text = texts.next();
        Model model;
        Status const expected = model.fromJson(text);
        auto value = Model::makeValue();
        ASSERT_STREQ(value.fromJson(String(text.data(), text.size())).getStr(), expected.getStr()) << text;
        ASSERT_EQ(value.toJson().asChar(), model.toJson()) << text;
        ++(expected.success() ? accepted : refused);
    }
    EXPECT_GT(accepted, 1000);
    EXPECT_GT(refused, 1000);
}

TEST(ValuesModel, ARationalAgreesWithAPlainReader) {
    expectAgreement<RationalModel>({{"numerator", kIntegers}, {"denominator", kIntegers}});
}

TEST(ValuesModel, ATimeAgreesWithAPlainReader) {
    expectAgreement<TimeModel>(
        {{"number_of_ticks", kIntegers}, {"numerator", kIntegers}, {"denominator", kIntegers}});
}

TEST(ValuesModel, BoundsAgreeWithAPlainReader) {
    expectAgreement<BoundsModel>({{"center", kPairs}, {"size", kPairs}});
}

TEST(ValuesModel, AVideoBufferResolutionAgreesWithAPlainReader) {
    expectAgreement<ResolutionModel>({{"width", kIntegers},
                                      {"height", kIntegers},
                                      {"bounds", kNested},
                                      {"scan_format", kStrings},
                                      {"bits_per_channel", kIntegers},
                                      {"num_channels", kIntegers},
                                      {"is_float", kTruths},
                                      {"is_big_endian", kTruths},
                                      {"color_space", kStrings}});
}

} // namespace
