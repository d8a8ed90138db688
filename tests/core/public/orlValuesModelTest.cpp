// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Seed.h"
#include "support/orlPlainValues.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

// The readers and writers of the values beside plain ones. Both get the same random texts: good ones, texts
// with a member that is missing, unfit or superfluous, and any of these with a few bytes changed.

namespace {

using namespace ORL_0_81;
using namespace orlTest;

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
