// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlSubjectObserver.h"

#include "internal/orlHidden.h"

#include <atomic>
#include <mutex>
#include <set>
#include <vector>

namespace ORL_0_81 {

NotificationHint::NotificationHint() = default;
NotificationHint::NotificationHint(NotificationHint const&) = default;
NotificationHint& NotificationHint::operator=(NotificationHint const&) = default;
NotificationHint::~NotificationHint() = default;

class ORL_HIDDEN Subject::Imp {
public:
    explicit Imp(Subject* owner) : m_owner(owner) {}
    Imp(Imp const& source, Subject* owner) : m_observers(source.m_observers), m_owner(owner) {}
    Imp(Imp const&) = delete;
    Imp& operator=(Imp const&) = delete;
    ~Imp() = default;

    void copy(Imp const& source, Subject* owner) {
        if (this == &source) {
            return;
        }
        std::lock_guard<std::mutex> const lock(m_mutex);
        std::lock_guard<std::mutex> const sourceLock(source.m_mutex);
        std::set<Observer*> observers(source.m_observers); // a set that is assigned to loses its own first
        m_observers.swap(observers);
        m_owner = owner;
    }

    void addObserver(Observer* observer);
    void removeObserver(Observer* observer);
    void notify(NotificationHint const& hint);
    void detach() noexcept;

    mutable std::mutex m_mutex;
    std::set<Observer*> m_observers;
    std::atomic<Subject*> m_owner; // notify() reads it without the mutex
};

class ORL_HIDDEN Observer::Imp {
public:
    explicit Imp(Observer* owner) : m_owner(owner) {}
    Imp(Imp const& source, Observer* owner) : m_subjects(source.m_subjects), m_owner(owner) {}
    Imp(Imp const&) = delete;
    Imp& operator=(Imp const&) = delete;
    ~Imp() = default;

    std::set<Subject*> m_subjects;
    Observer* m_owner;
};

// Subject::Imp

void Subject::Imp::addObserver(Observer* observer) {
    if (!observer) {
        return;
    }
    std::lock_guard<std::mutex> const lock(m_mutex);
    m_observers.insert(observer);
    if (Subject* const owner = m_owner) {
        observer->m_imp->m_subjects.insert(owner);
    }
}

void Subject::Imp::removeObserver(Observer* observer) {
    if (!observer) {
        return;
    }
    std::lock_guard<std::mutex> const lock(m_mutex);
    m_observers.erase(observer);
    if (Subject* const owner = m_owner) {
        observer->m_imp->m_subjects.erase(owner);
    }
}

void Subject::Imp::notify(NotificationHint const& hint) {
    std::vector<Observer*> snapshot; // in the order of the set, and far cheaper to make than another
    {
        std::lock_guard<std::mutex> const lock(m_mutex);
        snapshot.assign(m_observers.begin(), m_observers.end());
    }
    for (Observer* const observer : snapshot) {
        observer->onNotify(m_owner, hint);
    }
}

void Subject::Imp::detach() noexcept {
    while (!m_observers.empty()) {
        removeObserver(*m_observers.begin());
    }
}

// Subject

Subject::Subject() : m_imp(new Imp(this)) {}

Subject::Subject(Subject const& other) : m_imp(new Imp(*other.m_imp, this)) {}

// The source keeps its pointer, as the header tells.
Subject::Subject(Subject&& other) noexcept : m_imp(other.m_imp) { m_imp->m_owner = this; }

Subject::~Subject() {
    if (m_imp) {
        m_imp->detach();
        delete m_imp;
    }
}

Subject& Subject::operator=(Subject const& other) {
    if (this != &other) {
        m_imp->copy(*other.m_imp, this);
    }
    return *this;
}

Subject& Subject::operator=(Subject&& other) noexcept {
    if (this != &other) {
        if (m_imp) {
            m_imp->detach();
            delete m_imp;
        }
        m_imp = other.m_imp;
        m_imp->m_owner = this;
        other.m_imp = nullptr;
    }
    return *this;
}

void Subject::addObserver(Observer* observer) { m_imp->addObserver(observer); }

void Subject::removeObserver(Observer* observer) { m_imp->removeObserver(observer); }

void Subject::notify(NotificationHint const& hint) { m_imp->notify(hint); }

// Observer

Observer::Observer() : m_imp(new Imp(this)) {}

Observer::Observer(Observer const& other) : m_imp(new Imp(*other.m_imp, this)) {}

// The source keeps its pointer, as the header tells.
Observer::Observer(Observer&& other) noexcept : m_imp(other.m_imp) { m_imp->m_owner = this; }

Observer::~Observer() {
    if (m_imp) {
        detach();
        delete m_imp;
    }
}

Observer& Observer::operator=(Observer const& other) {
    if (this != &other && m_imp != other.m_imp) {
        std::set<Subject*> subjects(other.m_imp->m_subjects);
        m_imp->m_subjects.swap(subjects);
        m_imp->m_owner = this;
    }
    return *this;
}

Observer& Observer::operator=(Observer&& other) noexcept {
    if (this != &other) {
        if (m_imp) {
            detach();
            delete m_imp;
        }
        m_imp = other.m_imp;
        m_imp->m_owner = this;
        other.m_imp = nullptr;
    }
    return *this;
}

void Observer::detach() noexcept {
    // A subject's owner is what the set holds, so each call makes the set smaller.
    while (!m_imp->m_subjects.empty()) {
        (*m_imp->m_subjects.begin())->m_imp->removeObserver(m_imp->m_owner);
    }
}

} // namespace ORL_0_81
