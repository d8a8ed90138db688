// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_ORL_STRING_PLAY_H
#define ORL_TEST_SUPPORT_ORL_STRING_PLAY_H

#include <orlString.h>

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

/// \file
/// All operations of the string beside those of the standard string, with what differs.

namespace orlTest {

/// What a string must be: its text, and whether there is a hidden string at all.
struct StringModel {
    bool hidden = false;
    std::string value;

    static StringModel empty() { return {}; }
    static StringModel ofText(char const* s);
    static StringModel ofBytes(char const* s, unsigned long n);
    static StringModel ofRepeated(unsigned long n, char c);
    static StringModel ofPart(StringModel const& model, unsigned long pos, unsigned long len);

    /// The rule of all changes: no hidden string, no protocol; and an object under change is empty.
    void change(std::function<StringModel()> const& onEmpty,
                std::function<void(std::string&)> const& operation);

    void requirePosition(unsigned long pos, char const* failure) const;
};

/// The string differs from its model; the text says where.
class Disagreement : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A handful of strings that share, move and fail, each beside its model.
class StringPlay {
public:
    /// \param choose Decides what is done: gives a number below that which it is handed.
    explicit StringPlay(std::function<std::size_t(std::size_t)> choose);

    /// Does one operation, and compares everything that can be seen of the strings. Throws a Disagreement.
    void step();

    /// How many of the operations failed, as they had to.
    unsigned int failureCount() const { return m_failures; }

private:
    static constexpr std::size_t COUNT = 5;
    static constexpr std::size_t LONG = 60;

    std::size_t pick(std::size_t count) { return m_choose(count); }
    unsigned long position(StringModel const& model);
    unsigned long length();
    std::string randomBytes();
    std::size_t sharers(std::size_t i) const;

    void operate();
    void perform(char const* name, std::function<void()> const& real, std::function<void()> const& model);
    void check() const;
    void checkPair();
    void checkTexts(ORL_0_81::String const& s, std::string const& m, char const* text) const;
    void checkSearches(ORL_0_81::String const& s, std::string const& m, ORL_0_81::String const& t,
                       unsigned long pos, unsigned long count, char c) const;
    void checkParts(ORL_0_81::String const& s, std::string const& m, ORL_0_81::String const& t,
                    unsigned long pos, unsigned long count) const;

    template <class T>
    void require(char const* what, T const& actual, T const& expected) const;

    std::function<std::size_t(std::size_t)> m_choose;
    std::vector<ORL_0_81::String> m_strings;
    std::vector<StringModel> m_models;
    std::string m_operation;
    unsigned int m_failures = 0;
    unsigned int m_pairs = 0;
};

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_ORL_STRING_PLAY_H
