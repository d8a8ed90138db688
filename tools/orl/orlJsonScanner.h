// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_JSON_SCANNER_H
#define ORL_JSON_SCANNER_H

#include <cstddef>
#include <string>
#include <string_view>

namespace ORL_0_81::tool {

/// The place of something in a text, in bytes.
struct TextSpan {
    std::size_t begin = 0;
    std::size_t end = 0; ///< behind the last byte
};

/// Tells where the parts of a JSON text stand, so that some can be changed and all others stay as they were
/// written, to the last digit and blank.
///
/// The text must have been parsed before: nothing is checked here, and no number is looked at. Every position
/// that goes in is that of the first character of a value.
class JsonScanner {
public:
    /// \param text Must stay during the life of the scanner.
    explicit JsonScanner(std::string_view text) : m_text(text) {}

    /// Where the one value of the text begins.
    std::size_t begin() const { return skipSpace(0); }

    bool isObject(std::size_t value) const { return m_text[value] == '{'; }
    bool isArray(std::size_t value) const { return m_text[value] == '['; }
    bool isString(std::size_t value) const { return m_text[value] == '"'; }

    /// The place behind a value, in one pass over it and without recursion.
    std::size_t endOf(std::size_t value) const;

    std::string_view raw(TextSpan const& span) const {
        return m_text.substr(span.begin, span.end - span.begin);
    }

    /// What a string says, with its escapes resolved.
    std::string decoded(TextSpan const& string) const;

    /// Calls `visit(TextSpan const& name, std::size_t value)` for each member of an object, which returns
    /// where the value ends, as endOf() tells, so that one who goes down a document passes each part once.
    ///
    /// \returns the place behind the object.
    template <class Visit>
    std::size_t forEachMember(std::size_t object, Visit visit) const {
        std::size_t position = skipSpace(object + 1);
        while (m_text[position] != '}') {
            TextSpan const name{position, endOfString(position)};
            std::size_t const colon = skipSpace(name.end);
            position = behindComma(visit(name, skipSpace(colon + 1)));
        }
        return position + 1;
    }

    /// The same for the elements of an array, with `visit(std::size_t value)`.
    template <class Visit>
    std::size_t forEachElement(std::size_t array, Visit visit) const {
        std::size_t position = skipSpace(array + 1);
        while (m_text[position] != ']') {
            position = behindComma(visit(position));
        }
        return position + 1;
    }

private:
    std::size_t skipSpace(std::size_t position) const;
    std::size_t behindComma(std::size_t position) const;
    std::size_t endOfString(std::size_t string) const;

    std::string_view m_text;
};

} // namespace ORL_0_81::tool

#endif // ORL_JSON_SCANNER_H
