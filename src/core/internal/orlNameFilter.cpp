// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlNameFilter.h"

namespace ORL_0_81 {

namespace {

constexpr std::string_view SPECIAL_CHARACTERS = "^$\\.*+?()[]{}|";
constexpr std::string_view MEANS_ANYTHING = ".*";

} // namespace

NameFilter::NameFilter(std::string_view expression) {
    if (!readPlainText(expression)) {
        m_regex = std::make_unique<GuardedRegex>(expression);
    }
}

// False if the expression is more than a text. ".*" before or behind the text makes no difference to whether
// it is found, but for one at a beginning or an end that the expression names: it stops at a newline.
bool NameFilter::readPlainText(std::string_view expression) {
    std::string_view rest = expression;
    if (!rest.empty() && rest.front() == '^') {
        m_isAtBegin = true;
        rest.remove_prefix(1);
    } else {
        while (rest.substr(0, MEANS_ANYTHING.size()) == MEANS_ANYTHING) {
            rest.remove_prefix(MEANS_ANYTHING.size());
        }
    }
    while (!rest.empty()) {
        char c = rest.front();
        if (rest == MEANS_ANYTHING) {
            return true;
        }
        if (rest == "$") {
            m_isAtEnd = true;
            return true;
        }
        if (c == '\\' && rest.size() > 1 && SPECIAL_CHARACTERS.find(rest[1]) != std::string_view::npos) {
            rest.remove_prefix(1);
            c = rest.front();
        } else if (SPECIAL_CHARACTERS.find(c) != std::string_view::npos) {
            return false;
        }
        m_text += c;
        rest.remove_prefix(1);
    }
    return true;
}

bool NameFilter::passes(std::string_view name) {
    if (m_regex) {
        return m_regex->search(name);
    }
    if (name.size() < m_text.size()) {
        return false;
    }
    if (m_isAtBegin && m_isAtEnd) {
        return name == m_text;
    }
    if (m_isAtBegin) {
        return name.substr(0, m_text.size()) == m_text;
    }
    if (m_isAtEnd) {
        return name.substr(name.size() - m_text.size()) == m_text;
    }
    return name.find(m_text) != std::string_view::npos;
}

} // namespace ORL_0_81
