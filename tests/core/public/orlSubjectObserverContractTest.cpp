// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Place.h"

#include <orlSubjectObserver.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;

NotificationHint const HINT;

// Notes who called it, and then does what the test wants.
class Listener : public Observer {
public:
    void onNotify(Subject* subject, NotificationHint const& /*hint*/) override {
        m_callers.push_back(subject);
        if (m_action) {
            m_action(*subject);
        }
    }

    std::vector<Subject*> m_callers;
    std::function<void(Subject&)> m_action;
};

using Callers = std::vector<Subject*>;

// Listeners in the order in which they are called.
using Row = std::array<Listener, 3>;

std::array<std::size_t, 3> callsOf(Row const& row) {
    return {row[0].m_callers.size(), row[1].m_callers.size(), row[2].m_callers.size()};
}

using Calls = std::array<std::size_t, 3>;

// What a callback of the first, second or third listener may do, and who is called in this pass and the next

struct Callback {
    char const* name;
    std::size_t actor;
    std::array<bool, 3> attached;
    std::function<void(Subject&, Row&)> action;
    Calls thisPass;
    Calls bothPasses;
};

Callback const CALLBACKS[] = {
    {"removes an earlier one",
     2,
     {true, true, true},
     [](Subject& subject, Row& row) { subject.removeObserver(&row[0]); },
     {1, 1, 1},
     {1, 2, 2}},
    {"removes all",
     1,
     {true, true, true},
     [](Subject& subject, Row& row) {
         for (Listener& listener : row) {
             subject.removeObserver(&listener);
         }
     },
     {1, 1, 1},
     {1, 1, 1}},
    {"adds an earlier one",
     2,
     {false, true, true},
     [](Subject& subject, Row& row) { subject.addObserver(&row[0]); },
     {0, 1, 1},
     {1, 2, 2}},
    {"adds itself again",
     1,
     {true, true, true},
     [](Subject& subject, Row& row) { subject.addObserver(&row[1]); },
     {1, 1, 1},
     {2, 2, 2}},
    {"removes itself and comes back",
     1,
     {true, true, true},
     [](Subject& subject, Row& row) {
         subject.removeObserver(&row[1]);
         subject.addObserver(&row[1]);
     },
     {1, 1, 1},
     {2, 2, 2}},
    {"adds and removes one that is not attached",
     0,
     {true, true, false},
     [](Subject& subject, Row& row) {
         subject.addObserver(&row[2]);
         subject.removeObserver(&row[2]);
     },
     {1, 1, 0},
     {2, 2, 0}},
    {"adds and removes null",
     0,
     {true, true, true},
     [](Subject& subject, Row&) {
         subject.addObserver(nullptr);
         subject.removeObserver(nullptr);
     },
     {1, 1, 1},
     {2, 2, 2}},
    {"takes over the observers of an empty subject",
     0,
     {true, true, true},
     [](Subject& subject, Row&) {
         Subject const empty;
         subject = empty;
     },
     {1, 1, 1},
     {1, 1, 1}},
};

TEST(SubjectCallback, ChangesWhoIsCalledInTheNextPassOnly) {
    for (Callback const& callback : CALLBACKS) {
        Row row;
        Subject subject;
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (callback.attached[i]) {
                subject.addObserver(&row[i]);
            }
        }
        row[callback.actor].m_action = [&](Subject& notifier) { callback.action(notifier, row); };
        subject.notify(HINT);
        EXPECT_EQ(callsOf(row), callback.thisPass) << callback.name;
        row[callback.actor].m_action = nullptr;
        subject.notify(HINT);
        EXPECT_EQ(callsOf(row), callback.bothPasses) << callback.name;
        for (Listener& listener : row) {
            subject.removeObserver(&listener);
        }
    }
}

TEST(SubjectCallback, APassWithinAPassSeesThePresentObservers) {
    Row row;
    Subject subject;
    subject.addObserver(&row[0]);
    subject.addObserver(&row[1]);
    row[0].m_action = [&](Subject& notifier) {
        row[0].m_action = nullptr;
        notifier.removeObserver(&row[1]);
        notifier.addObserver(&row[2]);
        notifier.notify(HINT);
        EXPECT_EQ(callsOf(row), (Calls{2, 0, 1}));
    };
    subject.notify(HINT);
    EXPECT_EQ(callsOf(row), (Calls{2, 1, 1})) << "the outer pass goes on as it began";
}

TEST(SubjectCallback, AnObserverMayEndDuringItsOwnCallOrAfterIt) {
    struct Case {
        char const* name;
        std::size_t actor;
        std::size_t ended;
    };
    for (Case const& one : {Case{"the first itself", 0, 0}, Case{"the middle one itself", 1, 1},
                            Case{"the last one itself", 2, 2}, Case{"one that was called", 2, 0}}) {
        std::array<std::optional<Listener>, 3> row;
        Subject subject;
        for (std::optional<Listener>& listener : row) {
            subject.addObserver(&listener.emplace());
        }
        std::size_t calls = 0;
        for (std::size_t i = 0; i < row.size(); ++i) {
            bool const acts = i == one.actor;
            row[i]->m_action = [&calls, &row, acts, &one](Subject&) {
                ++calls;
                if (acts) {
                    auto const keepsThisCallAlive = std::move(row[one.actor]->m_action);
                    row[one.ended].reset();
                }
            };
        }
        subject.notify(HINT);
        EXPECT_EQ(calls, 3U) << one.name;
    }
}

TEST(SubjectCallback, TheSubjectThatIsHandedOverIsTheOneThatHoldsTheStateAtThatMoment) {
    // A subject with links is not to be moved; where it happens, the call names who holds them now.
    Row row;
    Place<Subject> from;
    Place<Subject> to;
    Subject& source = from.begin();
    for (Listener& listener : row) {
        source.addObserver(&listener);
    }
    row[1].m_action = [&](Subject& subject) { to.begin(std::move(subject)); };
    source.notify(HINT);
    EXPECT_EQ(row[0].m_callers, Callers{&source});
    EXPECT_EQ(row[1].m_callers, Callers{&source});
    EXPECT_EQ(row[2].m_callers, Callers{&to.get()});
    // The observers still have the old address in mind: they forget it by hand.
    Listener const blank;
    for (Listener& listener : row) {
        static_cast<Observer&>(listener) = blank;
    }
    to.end();
}

TEST(SubjectCallback, ACopyThatIsMadeDuringAPassCallsTheSameObservers) {
    Row row;
    Subject subject;
    for (Listener& listener : row) {
        subject.addObserver(&listener);
    }
    row[0].m_action = [&](Subject& notifier) {
        row[0].m_action = nullptr;
        Subject copy(notifier);
        copy.notify(HINT);
        EXPECT_EQ(row[2].m_callers, Callers{&copy});
    };
    subject.notify(HINT);
    EXPECT_EQ(callsOf(row), (Calls{2, 2, 2}));
    EXPECT_EQ(row[2].m_callers.back(), &subject) << "the end of the copy leaves the source's links";
}

// Both in one

class SubjectFirst : public Subject, public Listener {};
class ObserverFirst : public Listener, public Subject {};

template <class Both>
void expectThatOneMayObserveItself() {
    Listener other;
    Both both;
    both.addObserver(&both);
    both.addObserver(&other);
    both.notify(HINT);
    EXPECT_EQ(both.m_callers, Callers{&both});
    EXPECT_EQ(other.m_callers, Callers{&both});
}

TEST(SubjectObserver, AnObjectMayObserveItselfWhicheverOfItsPartsEndsFirst) {
    expectThatOneMayObserveItself<SubjectFirst>();
    expectThatOneMayObserveItself<ObserverFirst>();
}

TEST(SubjectObserver, ACallMayBePassedOn) {
    Listener last;
    SubjectFirst middle;
    Subject first;
    middle.addObserver(&last);
    first.addObserver(&middle);
    middle.m_action = [&](Subject&) { middle.notify(HINT); };
    first.notify(HINT);
    EXPECT_EQ(middle.m_callers, Callers{&first});
    EXPECT_EQ(last.m_callers, Callers{&middle});
}

// Links of which one end knows

TEST(ObserverCopyContract, ACopyThatIsAddedIsCalledBesideItsSourceAndEndsAlone) {
    Subject subject;
    Listener source;
    subject.addObserver(&source);
    {
        Listener copy(source);
        subject.addObserver(&copy);
        subject.notify(HINT);
        EXPECT_EQ(copy.m_callers, Callers{&subject});
        subject.removeObserver(&copy);
        subject.notify(HINT);
        EXPECT_EQ(copy.m_callers.size(), 1U);
        subject.addObserver(&copy);
    }
    subject.notify(HINT);
    EXPECT_EQ(source.m_callers.size(), 3U);
}

TEST(SubjectCopyContract, ACopyOfACopyAndOneWithoutObserversAreSubjectsLikeOthers) {
    Row row;
    Subject const none;
    Subject fromNone(none);
    fromNone.addObserver(&row[0]);
    Subject const copy(fromNone);
    Subject copyOfCopy(copy);
    copyOfCopy.notify(HINT);
    EXPECT_EQ(row[0].m_callers, Callers{&copyOfCopy});
    copyOfCopy.removeObserver(&row[0]);
    copyOfCopy.notify(HINT);
    fromNone.notify(HINT);
    EXPECT_EQ(row[0].m_callers, (Callers{&copyOfCopy, &fromNone})) << "each has a set of its own";
}

TEST(SubjectCopyContract, ARemovalTakesOutTheObserversHalfOfALinkThatTheSubjectHasLost) {
    Listener listener;
    {
        Place<Subject> place;
        Subject& subject = place.begin();
        subject.addObserver(&listener);
        Subject const none;
        subject = none;
        subject.notify(HINT);
        subject.removeObserver(&listener);
        place.end(); // tells nobody, for it knows nobody
    }
    EXPECT_TRUE(listener.m_callers.empty());
    // The listener's end must not look for the subject.
}

// The end, in any order

TEST(SubjectObserver, AWebOfLinksEndsInAnyOrder) {
    std::size_t const count = 3;
    std::array<std::size_t, 2 * count> order = {0, 1, 2, 3, 4, 5}; // subjects, then listeners
    do {
        std::array<std::optional<Subject>, count> subjects;
        std::array<std::optional<Listener>, count> listeners;
        for (std::optional<Listener>& listener : listeners) {
            listener.emplace();
        }
        for (std::optional<Subject>& subject : subjects) {
            subject.emplace();
            for (std::optional<Listener>& listener : listeners) {
                subject->addObserver(&*listener);
            }
        }
        for (std::size_t const ended : order) {
            if (ended < count) {
                subjects[ended].reset();
            } else {
                listeners[ended - count].reset();
            }
            for (std::optional<Listener>& listener : listeners) {
                if (listener) {
                    listener->m_callers.clear();
                }
            }
            Callers alive;
            for (std::optional<Subject>& subject : subjects) {
                if (subject) {
                    alive.push_back(&*subject);
                    subject->notify(HINT);
                }
            }
            for (std::optional<Listener> const& listener : listeners) {
                if (listener) {
                    ASSERT_EQ(listener->m_callers, alive);
                }
            }
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

} // namespace
