// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlRandomNames.h"

#include <algorithm>
#include <cstdio>

namespace orlTest {

namespace {

using Texts = std::vector<std::string>;

int number(Random& random, int lowest, int highest) {
    return std::uniform_int_distribution<int>(lowest, highest)(random);
}

bool oneIn(Random& random, int n) { return number(random, 1, n) == 1; }

std::string const& oneOf(Random& random, Texts const& texts) {
    return texts[static_cast<std::size_t>(number(random, 0, static_cast<int>(texts.size()) - 1))];
}

std::string padded(int value, int width) {
    char text[32];
    std::snprintf(text, sizeof text, "%0*d", width, value);
    return text;
}

// Words drawn one after the other.
std::string words(Random& random, Texts const& alphabet, int least, int most) {
    std::string text;
    for (int left = number(random, least, most); left > 0; --left) {
        text += oneOf(random, alphabet);
    }
    return text;
}

// Shuffled mostly, with a name twice now and then, and sometimes with a filter.
NameList finished(Random& random, Texts names) {
    if (!oneIn(random, 3)) {
        std::shuffle(names.begin(), names.end(), random);
    }
    while (!names.empty() && oneIn(random, 5)) {
        std::string const twice = oneOf(random, names);
        names.insert(names.begin() + number(random, 0, static_cast<int>(names.size())), twice);
    }
    return {names, oneIn(random, 4) ? randomFilter(random) : ""};
}

NameList ofWords(Random& random, Texts const& alphabet, int mostNames, int mostWords) {
    Texts names;
    for (int left = number(random, 1, mostNames); left > 0; --left) {
        names.push_back(words(random, alphabet, oneIn(random, 10) ? 0 : 1, mostWords));
    }
    return finished(random, names);
}

// A few of the words, so that the names of one list collide.
Texts someOf(Random& random, Texts alphabet, int least, int most) {
    std::shuffle(alphabet.begin(), alphabet.end(), random);
    alphabet.resize(static_cast<std::size_t>(number(random, least, most)));
    return alphabet;
}

NameList nastyWords(Random& random) {
    static Texts const ALPHABET = {"0",   "1", "2", "9", "10", "-", "-1", ".",  "_",
                                   "a",   "d", "%", "%", "(",  ")", "[",  "]",  "{",
                                   "}",   "?", "*", "+", "^",  "|", "$",  ",",  " ",
                                   "-?[", "1", "-", ".", "é",  "/", ":",  "0-", "(-?[0-9]{1,9})"};
    Texts alphabet = someOf(random, ALPHABET, 2, 6);
    alphabet.push_back("1");
    return ofWords(random, alphabet, 10, 7);
}

NameList digitsAndHyphens(Random& random) {
    static Texts const ALPHABET = {"1", "2", "-", ".", "-1", "0"};
    return ofWords(random, someOf(random, ALPHABET, 2, 4), 12, 5);
}

NameList longDigitRuns(Random& random) {
    static Texts const ALPHABET = {"123456789", "12345678", "1", "0",         "-",
                                   "-",         "a",        ".", "987654321", "00000000"};
    return ofWords(random, someOf(random, ALPHABET, 2, 4), 10, 5);
}

NameList backslashes(Random& random) {
    static Texts const ALPHABET = {"\\.", "\\.", "\\",  "\\\\", "\\d", "\\w", "\\(", "\\)",   "\\*",
                                   "\\[", "\\]", ".",   "-",    "x",   "\n",  "a",   "\\x41", "\\cJ",
                                   "\\b", "\\|", "\\{", "\\-",  "\\q", "\\?", "\\+", "\\$",   "\\^"};
    Texts alphabet = someOf(random, ALPHABET, 1, 4);
    alphabet.insert(alphabet.end(), {"1", "2", "\\.", "x"});
    return ofWords(random, alphabet, 9, 5);
}

NameList strangeBytes(Random& random) {
    static Texts const ALPHABET = {std::string(1, '\0'),
                                   "\n",
                                   "\r",
                                   "\xff",
                                   "\xc3",
                                   "\xb1",
                                   "ü",
                                   "日本",
                                   "a\xcc\x88",
                                   "٣",
                                   "١",
                                   "\xd9",
                                   "\x80",
                                   "-",
                                   ".",
                                   "\t",
                                   "😀",
                                   "\\."};
    Texts alphabet = someOf(random, ALPHABET, 2, 4);
    alphabet.insert(alphabet.end(), {"1", "2", "-1"});
    return ofWords(random, alphabet, 10, 5);
}

// Replaces each of some numbers of a name by another, spelt in any way.
std::string renumbered(Random& random, std::string const& name) {
    static Texts const NUMBERS = {"0",         "1",          "2",   "3",  "9",   "10", "11",
                                  "00",        "01",         "002", "-1", "-01", "-0", "1000",
                                  "123456789", "1234567890", "-2",  "",   "-",   "--1"};
    std::string result;
    for (std::size_t i = 0; i < name.size();) {
        std::size_t end = i;
        while (end < name.size() && name[end] >= '0' && name[end] <= '9') {
            ++end;
        }
        if (end == i) {
            result += name[i++];
        } else {
            result += oneIn(random, 2) ? oneOf(random, NUMBERS) : name.substr(i, end - i);
            i = end;
        }
    }
    return result;
}

NameList renumberedNames(Random& random) {
    static Texts const PARTS = {"1", "2",    "12", "a", "-",   ".",    "_",
                                "a", ".exr", "(",  "0", "\\.", "%04d", "-1"};
    std::string const base = words(random, someOf(random, PARTS, 2, 5), 2, 7);
    Texts names = {base};
    for (int left = number(random, 1, 12); left > 0; --left) {
        names.push_back(renumbered(random, oneIn(random, 3) ? oneOf(random, names) : base));
    }
    return finished(random, names);
}

// Two or three fields, of each of which some values exist, in some combinations.
NameList grids(Random& random) {
    static Texts const SEPARATORS = {".", "_", "-", "a", "v", "..", "", ".-", "--", " "};
    static Texts const ENDS = {"", ".exr", ".", "x", "_"};
    Texts const fields = {oneOf(random, SEPARATORS), oneOf(random, SEPARATORS), oneOf(random, SEPARATORS)};
    std::string const start = oneIn(random, 2) ? "a" : "";
    std::string const end = oneOf(random, ENDS);
    bool const three = oneIn(random, 3);
    int const density = number(random, 2, 10);
    int const step = oneIn(random, 3) ? 10 : 1;
    int const width = number(random, 1, 3);
    Texts names;
    for (int i = number(random, -1, 1); i < number(random, 1, 5); ++i) {
        for (int j = number(random, -1, 9); j < number(random, 3, 12); ++j) {
            for (int k = 1; k <= (three ? 2 : 1); ++k) {
                if (number(random, 1, 10) <= density) {
                    names.push_back(start + fields[0] + padded(i * step, width) + fields[1] +
                                    padded(j, width) + (three ? fields[2] + std::to_string(k) : "") + end);
                }
            }
        }
    }
    return names.empty() ? NameList{{"1"}, ""} : finished(random, names);
}

// Two to four fields that meet in one name and go their own ways from there, with gaps and with numbers that
// are spelt twice: which field wins hangs on how many names and how long a run each has.
NameList crosses(Random& random) {
    static Texts const SEPARATORS = {".", "_", "-", ".", "a"};
    std::size_t const fields = static_cast<std::size_t>(number(random, 2, 4));
    Texts before;
    Texts center;
    for (std::size_t field = 0; field < fields; ++field) {
        before.push_back(oneOf(random, SEPARATORS));
        center.push_back(std::to_string(number(random, -1, 8)));
    }
    auto const joined = [&](Texts const& numbers) {
        std::string name = "x";
        for (std::size_t field = 0; field < fields; ++field) {
            name += before[field] + numbers[field];
        }
        return name;
    };

    Texts names;
    for (std::size_t field = 0; field < fields; ++field) {
        int const density = number(random, 1, 7);
        for (int value = -1; value <= 8; ++value) {
            Texts numbers = center;
            numbers[field] = std::to_string(value);
            if (numbers != center && number(random, 1, 10) <= density) {
                names.push_back(joined(numbers));
            }
            numbers[field] = padded(value, 3);
            if (oneIn(random, 12)) {
                names.push_back(joined(numbers));
            }
        }
    }
    std::shuffle(names.begin(), names.end(), random);
    names.insert(oneIn(random, 4) ? names.end() : names.begin(), joined(center));
    return {names, ""};
}

NameList shots(Random& random) {
    static Texts const LAYERS = {"beauty", "z[left]", "crypto (2)", "matte"};
    Texts names;
    for (int left = number(random, 1, 5); left > 0; --left) {
        int const shot = number(random, 1, 4) * 10;
        int const version = number(random, 1, 3);
        std::string const layer = oneOf(random, LAYERS);
        int const first = oneIn(random, 2) ? 1001 : number(random, -3, 1002);
        for (int frame = first; frame < first + number(random, 0, 5); ++frame) {
            if (!oneIn(random, 6)) {
                names.push_back("sh" + padded(shot, 4) + "_" + layer + "_v" + padded(version, 3) + "." +
                                padded(frame, oneIn(random, 10) ? 5 : 4) + ".exr");
            }
        }
        if (oneIn(random, 3)) {
            names.push_back("sh" + padded(shot, 4) + "_v" + padded(version, 3) + ".mov");
        }
        if (oneIn(random, 4)) {
            names.push_back(oneIn(random, 2) ? "readme.txt" : ".hidden." + std::to_string(shot));
        }
    }
    return names.empty() ? NameList{{"readme.txt"}, ""} : finished(random, names);
}

// Stamps of a date and a time, and names that just miss being one.
NameList dates(Random& random) {
    static Texts const BETWEEN = {" at ", "T", "", "          ", " - ", "-", "\n", "........."};
    Texts names;
    for (int left = number(random, 1, 8); left > 0; --left) {
        std::string const date = padded(number(random, 2019, 2020), oneIn(random, 5) ? 3 : 4) + "-" +
                                 padded(number(random, 3, 4), oneIn(random, 8) ? 1 : 2) + "-21";
        std::string const time = "10" + std::string(oneIn(random, 3) ? "." : ":") + "22" +
                                 std::string(oneIn(random, 8) ? "" : ".") + padded(number(random, 7, 12), 2);
        std::string name =
            "cap" + std::string(oneIn(random, 2) ? " " : "1") + date + oneOf(random, BETWEEN) + time;
        if (oneIn(random, 2)) {
            name += "." + std::to_string(number(random, 1, 3)) + ".png";
        }
        names.push_back(name);
    }
    return finished(random, names);
}

} // namespace

std::vector<NameGenerator> const& nameGenerators() {
    static std::vector<NameGenerator> const GENERATORS = {
        {"NastyWords", nastyWords},
        {"DigitsAndHyphens", digitsAndHyphens},
        {"LongDigitRuns", longDigitRuns},
        {"Backslashes", backslashes},
        {"StrangeBytes", strangeBytes},
        {"RenumberedNames", renumberedNames},
        {"Grids", grids},
        {"Shots", shots},
        {"Dates", dates},
        {"Crosses", crosses},
    };
    return GENERATORS;
}

std::string randomSymbolName(Random& random) {
    static Texts const ALPHABET = {
        "%",   "d",      "0",  "4",  ".",  ".", "..", "\\", "a",    "%04d",
        "%d",  "%0\\4d", "%f", "%%", "\n", "[", "(",  "é",  "\xff", std::string(1, '\0'),
        "1001"};
    return words(random, ALPHABET, 0, 9);
}

std::string const& randomFilter(Random& random) {
    static Texts const FILTERS = {"",
                                  ".*",
                                  "exr$",
                                  "^a",
                                  "1",
                                  "[0-9]",
                                  "\\.",
                                  "a|d",
                                  "(",
                                  "[",
                                  "^$",
                                  "\\d{2}",
                                  "[[:alpha:]]",
                                  "(1)\\1",
                                  "d\\b",
                                  "*",
                                  "a{2",
                                  "\\D-",
                                  "%",
                                  "^.$",
                                  "^(?!a)",
                                  "\\",
                                  "1$",
                                  "2",
                                  "^[^1]",
                                  "x",
                                  "\n",
                                  "^1",
                                  "2$",
                                  ".",
                                  "(a)|",
                                  "-",
                                  "9]",
                                  "[^\\x00-\\x7f]"};
    return oneOf(random, FILTERS);
}

std::string asLiteral(std::string const& text) {
    std::string literal = "\"";
    for (char const c : text) {
        if (c == '"' || c == '\\') {
            literal += '\\';
            literal += c;
        } else if (c < ' ' || c > '~') { // three octal digits, which no digit behind them can prolong
            char code[8];
            std::snprintf(code, sizeof code, "\\%03o",
                          static_cast<unsigned int>(static_cast<unsigned char>(c)));
            literal += code;
        } else {
            literal += c;
        }
    }
    return literal + (text.find('\0') == std::string::npos ? "\"" : "\"s");
}

std::string asLiterals(std::vector<std::string> const& texts) {
    std::string literals = "{";
    for (std::string const& text : texts) {
        literals += (literals.size() > 1 ? ", " : "") + asLiteral(text);
    }
    return literals + "}";
}

} // namespace orlTest
