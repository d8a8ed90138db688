// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlRefCounted.h"

#include "internal/orlHidden.h"

#include <atomic>

namespace ORL_0_81 {

RefCountedBase::~RefCountedBase() = default;

RefCountedST::RefCountedST(RefCountedST const&) : RefCountedBase(), m_count(0) {}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp): nothing is assigned at all
RefCountedST& RefCountedST::operator=(RefCountedST const&) { return *this; }

RefCountedST::~RefCountedST() = default;

void RefCountedST::incref() const { ++m_count; }

bool RefCountedST::decref() const { return --m_count == 0; }

int RefCountedST::refcount() const { return m_count; }

class ORL_HIDDEN RefCountedMT::Imp {
public:
    Imp() = default;
    Imp(Imp const&) = delete;
    Imp& operator=(Imp const&) = delete;
    virtual ~Imp() = default;

    std::atomic<int> m_count{0};
};

RefCountedMT::RefCountedMT() : m_imp(new Imp) {}

RefCountedMT::RefCountedMT(RefCountedMT const&) : RefCountedBase(), m_imp(new Imp) {}

RefCountedMT::RefCountedMT(RefCountedMT&& other) noexcept : RefCountedBase(), m_imp(other.m_imp) {
    other.m_imp = nullptr;
}

// NOLINTNEXTLINE(bugprone-unhandled-self-assignment,cert-oop54-cpp): nothing is assigned at all
RefCountedMT& RefCountedMT::operator=(RefCountedMT const&) { return *this; }

RefCountedMT& RefCountedMT::operator=(RefCountedMT&& other) noexcept {
    if (this != &other) {
        delete m_imp;
        m_imp = other.m_imp;
        other.m_imp = nullptr;
    }
    return *this;
}

RefCountedMT::~RefCountedMT() { delete m_imp; }

void RefCountedMT::incref() const { m_imp->m_count.fetch_add(1); }

bool RefCountedMT::decref() const { return m_imp->m_count.fetch_sub(1) == 1; }

int RefCountedMT::refcount() const { return m_imp->m_count.load(); }

} // namespace ORL_0_81
