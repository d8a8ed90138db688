// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Place.h"
#include "support/VirtualSlot.h"

#include <orlSubjectObserver.h>

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <stdexcept>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using namespace ORL_0_81;

// Notes who notified it with what, and may do something about it.
class Recorder : public Observer {
public:
    using Callback = std::function<void(Subject&)>;

    Recorder() = default;
    explicit Recorder(Callback callback) : m_callback(std::move(callback)) {}

    void onNotify(Subject* subject, NotificationHint const& hint) override {
        m_subjects.push_back(subject);
        m_hints.push_back(&hint);
        if (m_callback) {
            m_callback(*subject);
        }
    }

    std::size_t calls() const { return m_subjects.size(); }

    Callback m_callback;
    std::vector<Subject*> m_subjects;
    std::vector<NotificationHint const*> m_hints;
};

using Subjects = std::vector<Subject*>;

NotificationHint const HINT;

// The pointer behind the virtual table.
template <class Object>
void* stateOf(Object const& object) {
    static_assert(sizeof(Object) == 2 * sizeof(void*));
    void* words[2];
    std::memcpy(words, static_cast<void const*>(&object), sizeof words);
    return words[1];
}

// Links

TEST(SubjectTest, NotifiesItsObserversWithItselfAndTheHint) {
    Subject subject;
    Recorder first;
    Recorder second;
    subject.addObserver(&first);
    subject.addObserver(&second);
    subject.notify(HINT);
    EXPECT_EQ(first.m_subjects, Subjects{&subject});
    EXPECT_EQ(second.m_subjects, Subjects{&subject});
    EXPECT_EQ(first.m_hints, std::vector<NotificationHint const*>{&HINT}) << "the very object, not a copy";
}

TEST(SubjectTest, NotifyWithoutObserversReturnsAtOnce) {
    Subject subject;
    subject.notify(HINT);
}

TEST(SubjectTest, AddingTwiceLeavesOneLinkThatOneRemovalUndoes) {
    Subject subject;
    Recorder observer;
    subject.addObserver(&observer);
    subject.addObserver(&observer);
    subject.notify(HINT);
    EXPECT_EQ(observer.calls(), 1U);
    subject.removeObserver(&observer);
    subject.notify(HINT);
    EXPECT_EQ(observer.calls(), 1U);
}

TEST(SubjectTest, AddingOrRemovingNullDoesNothing) {
    Subject subject;
    Recorder observer;
    subject.addObserver(nullptr);
    subject.removeObserver(nullptr);
    subject.addObserver(&observer);
    subject.addObserver(nullptr);
    subject.removeObserver(nullptr);
    subject.notify(HINT);
    EXPECT_EQ(observer.calls(), 1U);
}

TEST(SubjectTest, RemovingAnObserverThatIsNotAttachedChangesNothing) {
    Subject subject;
    Recorder attached;
    Recorder other;
    subject.addObserver(&attached);
    subject.removeObserver(&other);
    subject.notify(HINT);
    EXPECT_EQ(attached.calls(), 1U);
    EXPECT_EQ(other.calls(), 0U);
}

TEST(SubjectTest, RemovingFromOneSubjectKeepsTheOtherLinks) {
    Subject first;
    Subject second;
    Recorder observer;
    first.addObserver(&observer);
    second.addObserver(&observer);
    first.removeObserver(&observer);
    first.notify(HINT);
    second.notify(HINT);
    EXPECT_EQ(observer.m_subjects, Subjects{&second});
}

TEST(SubjectTest, NotifiesInTheOrderOfTheObserversAddresses) {
    std::vector<std::size_t> order;
    std::vector<Recorder> observers(5);
    for (std::size_t i = 0; i < observers.size(); ++i) {
        observers[i].m_callback = [&order, i](Subject&) { order.push_back(i); };
    }
    Subject subject;
    for (std::size_t const i : {3U, 0U, 4U, 2U, 1U}) {
        subject.addObserver(&observers[i]);
    }
    subject.notify(HINT);
    EXPECT_EQ(order, (std::vector<std::size_t>{0, 1, 2, 3, 4}));
}

TEST(SubjectTest, DerivedSubjectsAreHandedOverAsSubjects) {
    struct Front {
        virtual ~Front() = default;
        int m_front = 1;
    };
    struct Both : Front, Subject {};
    Both both;
    Recorder observer;
    both.addObserver(&observer);
    both.notify(HINT);
    ASSERT_EQ(observer.calls(), 1U);
    EXPECT_EQ(dynamic_cast<Both*>(observer.m_subjects[0]), &both);
}

// Ends

TEST(SubjectTest, AnObserverThatEndsIsTakenOutOfEverySubject) {
    Subject first;
    Subject second;
    Place<Recorder> place;
    Recorder& observer = place.begin();
    first.addObserver(&observer);
    second.addObserver(&observer);
    place.end();
    Recorder& successor = place.begin(); // would be called in the dead one's place
    first.notify(HINT);
    second.notify(HINT);
    EXPECT_EQ(successor.calls(), 0U);
    place.end();
}

TEST(SubjectTest, ASubjectThatEndsIsForgottenByItsObservers) {
    Place<Subject> place;
    Subject other;
    {
        Recorder observer;
        place.begin().addObserver(&observer);
        other.addObserver(&observer);
        place.end();
        other.notify(HINT);
        EXPECT_EQ(observer.m_subjects, Subjects{&other});
        // The observer ends now, and would reach for the dead subject if it still knew of it.
    }
    other.notify(HINT);
}

TEST(SubjectTest, ManyLinksEndInEitherOrder) {
    for (bool const subjectsFirst : {true, false}) {
        std::vector<Place<Subject>> subjects(4);
        std::vector<Place<Recorder>> observers(4);
        for (Place<Subject>& subject : subjects) {
            subject.begin();
        }
        for (Place<Recorder>& observer : observers) {
            observer.begin();
            for (Place<Subject>& subject : subjects) {
                subject.get().addObserver(&observer.get());
            }
        }
        for (std::size_t i = 0; i < subjects.size(); ++i) {
            if (subjectsFirst) {
                subjects[i].end();
            }
            observers[i].end();
            if (!subjectsFirst) {
                subjects[i].end();
            }
        }
    }
}

TEST(SubjectTest, ARemovedObserverMayEndAfterItsSubject) {
    Place<Subject> place;
    Recorder observer;
    place.begin().addObserver(&observer);
    place.get().removeObserver(&observer);
    place.end();
}

// Changes within a callback

TEST(SubjectTest, AnObserverThatRemovesItselfIsNotCalledAgain) {
    Subject subject;
    std::vector<Recorder> observers(3);
    observers[1].m_callback = [&](Subject& notifier) { notifier.removeObserver(&observers[1]); };
    for (Recorder& observer : observers) {
        subject.addObserver(&observer);
    }
    subject.notify(HINT);
    subject.notify(HINT);
    EXPECT_EQ(observers[0].calls(), 2U);
    EXPECT_EQ(observers[1].calls(), 1U);
    EXPECT_EQ(observers[2].calls(), 2U) << "the pass went on";
}

TEST(SubjectTest, AnObserverThatIsRemovedDuringAPassIsStillCalledInIt) {
    Subject subject;
    std::vector<Recorder> observers(2); // in the order in which they are called
    observers[0].m_callback = [&](Subject& notifier) { notifier.removeObserver(&observers[1]); };
    subject.addObserver(&observers[0]);
    subject.addObserver(&observers[1]);
    subject.notify(HINT);
    EXPECT_EQ(observers[1].calls(), 1U);
    subject.notify(HINT);
    EXPECT_EQ(observers[1].calls(), 1U);
}

TEST(SubjectTest, AnObserverThatIsAddedDuringAPassIsFirstCalledInTheNext) {
    Subject subject;
    std::vector<Recorder> observers(2);
    observers[0].m_callback = [&](Subject& notifier) { notifier.addObserver(&observers[1]); };
    subject.addObserver(&observers[0]);
    subject.notify(HINT);
    EXPECT_EQ(observers[1].calls(), 0U);
    subject.notify(HINT);
    EXPECT_EQ(observers[1].calls(), 1U);
}

TEST(SubjectTest, ACallbackMayNotifyAgain) {
    Subject subject;
    Recorder observer;
    observer.m_callback = [&](Subject& notifier) {
        if (observer.calls() < 3) {
            notifier.notify(HINT);
        }
    };
    subject.addObserver(&observer);
    subject.notify(HINT);
    EXPECT_EQ(observer.calls(), 3U);
}

TEST(SubjectTest, ACallbackMayWorkOnOtherSubjects) {
    Subject subject;
    Subject other;
    Recorder listener;
    Recorder observer([&](Subject&) {
        other.addObserver(&listener);
        other.notify(HINT);
    });
    subject.addObserver(&observer);
    subject.notify(HINT);
    EXPECT_EQ(listener.m_subjects, Subjects{&other});
}

TEST(SubjectTest, AnExceptionOfACallbackPassesThroughAndEndsThePass) {
    Subject subject;
    std::vector<Recorder> observers(3);
    for (Recorder& observer : observers) {
        subject.addObserver(&observer);
    }
    observers[1].m_callback = [](Subject&) { throw std::runtime_error("of the callback"); };
    EXPECT_THROW(subject.notify(HINT), std::runtime_error);
    EXPECT_EQ(observers[0].calls(), 1U);
    EXPECT_EQ(observers[1].calls(), 1U);
    EXPECT_EQ(observers[2].calls(), 0U);
    observers[1].m_callback = nullptr;
    subject.removeObserver(&observers[0]);
    subject.notify(HINT);
    EXPECT_EQ(observers[0].calls(), 1U);
    EXPECT_EQ(observers[1].calls(), 2U);
    EXPECT_EQ(observers[2].calls(), 1U);
}

// Copies: links that only one side knows

TEST(SubjectCopy, NotifiesTheSameObserversWithItself) {
    Recorder first;
    Recorder second;
    Subject subject;
    subject.addObserver(&first);
    subject.addObserver(&second);
    Subject copy(subject);
    copy.notify(HINT);
    EXPECT_EQ(first.m_subjects, Subjects{&copy});
    EXPECT_EQ(second.m_subjects, Subjects{&copy});
    subject.notify(HINT);
    EXPECT_EQ(first.m_subjects, (Subjects{&copy, &subject}));
}

TEST(SubjectCopy, IsIndependentOfItsSource) {
    Recorder first;
    Recorder second;
    Subject subject;
    subject.addObserver(&first);
    Subject copy(subject);
    copy.removeObserver(&first);
    copy.addObserver(&second);
    subject.notify(HINT);
    EXPECT_EQ(first.m_subjects, Subjects{&subject});
    copy.notify(HINT);
    EXPECT_EQ(second.m_subjects, Subjects{&copy});
}

TEST(SubjectCopy, IsNotToldWhenAnObserverEnds) {
    Place<Recorder> place;
    Subject subject;
    subject.addObserver(&place.begin());
    Subject copy(subject);
    place.end();
    Recorder& successor = place.begin();
    subject.notify(HINT);
    EXPECT_EQ(successor.calls(), 0U);
    copy.notify(HINT);
    EXPECT_EQ(successor.m_subjects, Subjects{&copy}) << "the copy still has the address";
    copy.removeObserver(&successor);
    place.end();
}

TEST(SubjectCopy, EndsBeforeItsObserversWithoutATrace) {
    Recorder observer;
    Subject subject;
    subject.addObserver(&observer);
    { Subject const copy(subject); }
    subject.notify(HINT);
    EXPECT_EQ(observer.m_subjects, Subjects{&subject});
}

TEST(SubjectCopy, AddingAnObserverThatTheCopyHasMakesTheLinkWhole) {
    Place<Recorder> place;
    Subject subject;
    subject.addObserver(&place.begin());
    Subject copy(subject);
    copy.addObserver(&place.get());
    place.end();
    Recorder& successor = place.begin();
    copy.notify(HINT);
    EXPECT_EQ(successor.calls(), 0U) << "the observer took itself out of the copy, too";
    place.end();
}

TEST(SubjectCopyAssignment, ReplacesTheObserversWithoutTellingThem) {
    Place<Recorder> lost;
    Place<Recorder> gained;
    Subject target;
    Subject source;
    target.addObserver(&lost.begin());
    source.addObserver(&gained.begin());
    EXPECT_EQ(&(target = source), &target);
    target.notify(HINT);
    EXPECT_EQ(lost.get().calls(), 0U);
    EXPECT_EQ(gained.get().m_subjects, Subjects{&target});
    source.notify(HINT);
    EXPECT_EQ(gained.get().m_subjects, (Subjects{&target, &source}));
    gained.end();
    Recorder& successor = gained.begin();
    source.notify(HINT);
    EXPECT_EQ(successor.calls(), 0U);
    target.notify(HINT);
    EXPECT_EQ(successor.m_subjects, Subjects{&target}) << "the one that was gained didn't know of the target";
    // The one that was lost still does: it takes itself out of the target, where it was added by hand.
    Subject third;
    third.addObserver(&lost.get());
    target = third;
    lost.end();
    Recorder& another = lost.begin();
    target.notify(HINT);
    EXPECT_EQ(another.calls(), 0U);
    lost.end();
    gained.end();
}

TEST(SubjectCopyAssignment, OfItselfChangesNothing) {
    Subject subject;
    Recorder observer;
    subject.addObserver(&observer);
    Subject const& self = subject;
    subject = self;
    subject.notify(HINT);
    EXPECT_EQ(observer.m_subjects, Subjects{&subject});
}

TEST(ObserverCopy, IsNotCalledByItsSourcesSubjects) {
    Subject subject;
    Recorder observer;
    subject.addObserver(&observer);
    Recorder copy(observer);
    subject.notify(HINT);
    EXPECT_EQ(observer.calls(), 1U);
    EXPECT_EQ(copy.calls(), 0U);
}

TEST(ObserverCopy, MayEndBeforeAndAfterItsSource) {
    Subject subject;
    Place<Recorder> source;
    subject.addObserver(&source.begin());
    Recorder const later(source.get());
    { Recorder const earlier(source.get()); }
    subject.notify(HINT);
    EXPECT_EQ(source.get().calls(), 1U) << "the end of a copy is not the end of the source's link";
    source.end();
    subject.notify(HINT);
}

// A copy of a subject makes a link of which the observer doesn't know; the copy of an observer that does then
// lets us see that it learns of it.
TEST(ObserverCopy, KeepsItsSourcesSubjectsInMind) {
    Place<Recorder> place;
    Subject subject;
    Recorder original;
    subject.addObserver(&original);
    {
        Subject origin;
        Recorder& copy = place.begin(original);
        origin.addObserver(&copy);
        subject = origin; // the subject now has the copy, and not the original
    }
    subject.notify(HINT);
    EXPECT_EQ(place.get().m_subjects, Subjects{&subject});
    place.end();
    Recorder& successor = place.begin();
    subject.notify(HINT);
    EXPECT_EQ(successor.calls(), 0U) << "the copy had the subject in mind, and took itself out";
    place.end();
}

TEST(ObserverCopy, ForgetsASubjectThatIsToldToRemoveIt) {
    Place<Subject> place;
    Recorder observer;
    place.begin().addObserver(&observer);
    Recorder copy(observer);
    place.get().removeObserver(&copy); // finds nothing on its own side
    place.get().notify(HINT);
    EXPECT_EQ(observer.calls(), 1U);
    place.end();
    // The copy ends now, and would reach for the dead subject if it still had it in mind.
}

TEST(ObserverCopyAssignment, ReplacesTheSubjectsWithoutTellingThem) {
    Subject lost;
    Subject gained;
    Place<Recorder> place;
    Recorder& target = place.begin();
    Recorder source;
    lost.addObserver(&target);
    gained.addObserver(&source);
    static_cast<Observer&>(target) = source;
    lost.notify(HINT);
    EXPECT_EQ(target.m_subjects, Subjects{&lost}) << "the one that was lost doesn't know";
    gained.notify(HINT);
    EXPECT_EQ(target.calls(), 1U) << "nor does the one that was gained";
    place.end();
    Recorder& successor = place.begin();
    lost.notify(HINT);
    EXPECT_EQ(successor.m_subjects, Subjects{&lost}) << "the end of the observer did not reach it";
    lost.removeObserver(&successor);
    place.end();
}

TEST(ObserverCopyAssignment, OfItselfChangesNothing) {
    Subject subject;
    Place<Recorder> place;
    Recorder& observer = place.begin();
    subject.addObserver(&observer);
    Observer const& self = observer;
    static_cast<Observer&>(observer) = self;
    subject.notify(HINT);
    EXPECT_EQ(observer.calls(), 1U);
    place.end();
    Recorder& successor = place.begin();
    subject.notify(HINT);
    EXPECT_EQ(successor.calls(), 0U) << "the observer still knew of its subject";
    place.end();
}

// Moves

TEST(SubjectMove, ConstructionTakesTheStateAndLeavesTheSourceLeadingToIt) {
    Place<Subject> place; // the source gets no destructor
    Subject& source = place.begin();
    void* const state = stateOf(source);
    Subject target(std::move(source));
    EXPECT_EQ(stateOf(target), state);
    EXPECT_EQ(stateOf(source), state); // NOLINT(bugprone-use-after-move): that is the point
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<Subject>);
    Recorder observer;
    target.addObserver(&observer);
    target.notify(HINT);
    EXPECT_EQ(observer.m_subjects, Subjects{&target});
}

TEST(SubjectMove, ConstructionKeepsTheObservers) {
    Place<Recorder> place; // an observer with links to a moved subject can't end in order
    Place<Subject> sourcePlace;
    Recorder& observer = place.begin();
    Subject& source = sourcePlace.begin();
    source.addObserver(&observer);
    Subject target(std::move(source));
    target.notify(HINT);
    EXPECT_EQ(observer.m_subjects, Subjects{&target});
    // Makes the observer forget the source by hand, so that nothing is left behind.
    Recorder const blank;
    static_cast<Observer&>(observer) = blank;
    target.removeObserver(&observer);
    place.end();
}

TEST(SubjectMove, CopyAssignmentWithinOneStateDoesNothing) {
    Place<Subject> place;
    Subject& source = place.begin();
    Subject target(std::move(source));
    target = source; // NOLINT(bugprone-use-after-move): that is the point
    Recorder observer;
    target.addObserver(&observer);
    target.notify(HINT);
    EXPECT_EQ(observer.m_subjects, Subjects{&target});
}

TEST(SubjectMove, AssignmentDetachesTheTargetAndEmptiesTheSource) {
    Recorder old;
    Subject target;
    target.addObserver(&old);
    Subject source;
    void* const state = stateOf(source);
    EXPECT_EQ(&(target = std::move(source)), &target);
    EXPECT_EQ(stateOf(target), state);
    EXPECT_EQ(stateOf(source), nullptr); // NOLINT(bugprone-use-after-move): that is the point
    Recorder observer;
    target.addObserver(&observer);
    target.notify(HINT);
    EXPECT_EQ(old.calls(), 0U);
    EXPECT_EQ(observer.m_subjects, Subjects{&target});
}

TEST(SubjectMove, AssignmentMakesTheOldObserversForgetTheTarget) {
    Recorder observer;
    Place<Subject> place;
    Subject& target = place.begin();
    target.addObserver(&observer);
    target = Subject();
    place.end(); // the observer ends later, and would reach for the target if it still knew of it
}

TEST(SubjectMove, AnEmptiedSubjectCanBeAssignedAMovedValue) {
    Subject first;
    Subject second(first);
    second = std::move(first);
    first = std::move(second); // NOLINT(bugprone-use-after-move): has no state to detach
    Recorder observer;
    first.addObserver(&observer);
    first.notify(HINT);
    EXPECT_EQ(observer.m_subjects, Subjects{&first});
}

TEST(SubjectMove, AssignmentToItselfChangesNothing) {
    Subject subject;
    Recorder observer;
    subject.addObserver(&observer);
    Subject& self = subject;
    subject = std::move(self);
    subject.notify(HINT);
    EXPECT_EQ(observer.m_subjects, Subjects{&subject});
}

// An observer without anything of its own, so that its state is all that moves.
class Counter : public Observer {
public:
    void onNotify(Subject*, NotificationHint const&) override { ++calls; }

    static int calls;
};

int Counter::calls = 0;

TEST(ObserverMove, ConstructionTakesTheStateAndLeavesTheSourceLeadingToIt) {
    Place<Counter> place; // the source gets no destructor
    Counter& source = place.begin();
    void* const state = stateOf(source);
    Counter target(std::move(source));
    EXPECT_EQ(stateOf(target), state);
    EXPECT_EQ(stateOf(source), state); // NOLINT(bugprone-use-after-move): that is the point
    Subject subject;
    Counter::calls = 0;
    subject.addObserver(&target);
    subject.notify(HINT);
    EXPECT_EQ(Counter::calls, 1);
}

TEST(ObserverMove, TheNewObjectDetachesItselfAtItsEnd) {
    Place<Counter> place;
    Place<Counter> targetPlace;
    Counter& target = targetPlace.begin(std::move(place.begin()));
    Subject subject;
    subject.addObserver(&target);
    targetPlace.end();
    Counter::calls = 0;
    targetPlace.begin();
    subject.notify(HINT);
    EXPECT_EQ(Counter::calls, 0);
    targetPlace.end();
}

TEST(ObserverMove, AssignmentDetachesTheTargetAndEmptiesTheSource) {
    Subject subject;
    Counter target;
    subject.addObserver(&target);
    Counter source;
    void* const state = stateOf(source);
    EXPECT_EQ(&(target = std::move(source)), &target);
    EXPECT_EQ(stateOf(target), state);
    EXPECT_EQ(stateOf(source), nullptr); // NOLINT(bugprone-use-after-move): that is the point
    Counter::calls = 0;
    subject.notify(HINT);
    EXPECT_EQ(Counter::calls, 0);
    subject.addObserver(&target);
    subject.notify(HINT);
    EXPECT_EQ(Counter::calls, 1);
}

TEST(ObserverMove, AnEmptiedObserverCanBeAssignedAMovedValue) {
    Counter first;
    Counter second;
    second = std::move(first);
    first = std::move(second); // NOLINT(bugprone-use-after-move): has no state to detach
    Subject subject;
    subject.addObserver(&first);
    Counter::calls = 0;
    subject.notify(HINT);
    EXPECT_EQ(Counter::calls, 1);
}

TEST(ObserverMove, AssignmentToItselfChangesNothing) {
    Subject subject;
    Counter observer;
    subject.addObserver(&observer);
    Counter& self = observer;
    observer = std::move(self);
    Counter::calls = 0;
    subject.notify(HINT);
    EXPECT_EQ(Counter::calls, 1);
}

TEST(ObserverMove, AssignmentWithinOneStateByCopyDoesNothing) {
    Place<Counter> place;
    Counter& source = place.begin();
    Counter target(std::move(source));
    Subject subject;
    subject.addObserver(&target);
    target = source; // NOLINT(bugprone-use-after-move): that is the point
    Counter::calls = 0;
    subject.notify(HINT);
    EXPECT_EQ(Counter::calls, 1);
}

// Shapes

TEST(SubjectTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_EQ(sizeof(Subject), 2 * sizeof(void*));
    EXPECT_EQ(sizeof(Observer), 2 * sizeof(void*));
    EXPECT_EQ(sizeof(NotificationHint), sizeof(void*));
    EXPECT_TRUE(std::has_virtual_destructor_v<Subject>);
    EXPECT_TRUE(std::has_virtual_destructor_v<NotificationHint>);
    EXPECT_TRUE(std::is_abstract_v<Observer>);
    EXPECT_EQ(virtualSlot(&Observer::onNotify), 2U);
}

} // namespace
