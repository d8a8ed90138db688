// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlLocaleGuard.h"

#include <mutex>

namespace ORL_0_81 {

namespace {

// Held for a call of setlocale, never while a guard lives.
std::mutex localeMutex;

} // namespace

LocaleGuard::LocaleGuard() {
    std::lock_guard<std::mutex> const lock(localeMutex);
    if (char const* const name = std::setlocale(m_category, "C")) {
        m_savedName = name;
        m_saved = true;
    }
}

LocaleGuard::~LocaleGuard() {
    if (m_saved) {
        std::lock_guard<std::mutex> const lock(localeMutex);
        std::setlocale(m_category, m_savedName.c_str());
    }
}

} // namespace ORL_0_81
