// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlToken.h"

#include "internal/orlHidden.h"

#include <string>
#include <utility>

namespace ORL_0_81 {

class ORL_HIDDEN Token::Imp {
public:
    std::string m_name;
    std::string m_displayName;
};

Token::Token(char const* name, char const* displayName) : m_imp(new Imp{name, displayName}) {}

Token::Token(Token const& other) : RefCountedST(), m_imp(new Imp(*other.m_imp)) {}

Token::~Token() { delete m_imp; }

Token& Token::operator=(Token const& other) {
    if (this != &other) {
        Imp copy(*other.m_imp);
        std::swap(*m_imp, copy);
    }
    return *this;
}

char const* Token::getName() const { return m_imp->m_name.c_str(); }

char const* Token::getDisplayName() const { return m_imp->m_displayName.c_str(); }

} // namespace ORL_0_81
