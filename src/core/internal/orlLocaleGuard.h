// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_LOCALE_GUARD_H
#define ORL_LOCALE_GUARD_H

#include <clocale>
#include <string>

namespace ORL_0_81 {

/// The "C" locale for what a media reader does, which turns numbers into text and back.
///
/// What is saved is what the call that sets "C" returns, so the name of the new locale, and that is what is
/// put back: the locale is not asked for before. So a process stays in "C" after its first guard.
///
/// Guards may live at the same time on several threads; the calls that set the locale never meet.
class LocaleGuard {
public:
    LocaleGuard();
    LocaleGuard(LocaleGuard const&) = delete;
    LocaleGuard& operator=(LocaleGuard const&) = delete;
    ~LocaleGuard();

private:
    bool m_saved = false;
    int m_category = LC_ALL;
    std::string m_savedName;
};

} // namespace ORL_0_81

#endif // ORL_LOCALE_GUARD_H
