// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SUBJECT_OBSERVER_H
#define ORL_SUBJECT_OBSERVER_H

#include "orlExport.h"

/// \file
/// Notification: a Subject calls its observers, an Observer is called by its subjects. Whichever of the two
/// ends first takes the link with it. Neither keeps the other alive.
///
/// **Copies and moves make links of which only one end knows.** They are kept for classes that must be
/// values; whoever uses them answers for what follows:
/// - A copied Subject notifies the observers of its source, but these don't know of it. Each of them must be
///   removed from the copy, or outlive it. Otherwise the copy calls, and at its end reaches into, a dead
///   object.
/// - A copied Observer is not called, but at its end it reaches into the subjects of its source. Each of
///   these must outlive it, or must once have been told removeObserver() with the copy.
/// - A copy assignment also leaves behind, on the other side, the links that the target had.
/// - A Subject or an Observer that has links must not be moved at all: the other side keeps the old address,
///   and a destructor may then never return.
/// - After a move *construction* both objects lead to the same state. The source must not be used, assigned
///   or even destroyed; so a moved-from object with an ordinary lifetime ends in a double free. Derived
///   classes that are handed around should declare their copies only.

namespace ORL_0_81 {

class Observer;

/// The base of what a Subject hands to its observers. A receiver tests the dynamic type.
///
/// A hint lives only for the call. It has no state of its own.
class ORL_CORE_EXPORT NotificationHint {
public:
    /// @{
    /// There is nothing to initialise or to copy.
    NotificationHint();
    NotificationHint(NotificationHint const& other);
    NotificationHint& operator=(NotificationHint const& other);
    /// @}
    virtual ~NotificationHint();
};

/// Keeps a set of observers and calls each of them.
///
/// **Failure.** An allocation that fails throws `std::bad_alloc`, a mutex that fails `std::system_error`. An
/// exception that is raised while an object detaches, in a destructor or in a move assignment, ends the
/// process. An object that a move assignment has emptied may only be destroyed.
///
/// **Thread safety.** addObserver(), removeObserver() and notify() may be called on one Subject from any
/// number of threads. An Observer that has several subjects may only be attached or detached by one thread at
/// a time. Construction, assignment and destruction are not guarded against other calls, but that a copy
/// assignment takes the mutex of its target, then that of its source; two threads that assign two subjects to
/// each other can block each other for ever.
///
/// **Cost.** notify() copies the set of observers.
class ORL_CORE_EXPORT Subject {
public:
    /// Without observers.
    Subject();

    /// Notifies the same observers, with itself as the subject. These don't learn of it: see above. Takes no
    /// lock of the source.
    Subject(Subject const& other);

    /// Takes the other's state. The other must neither be used nor destroyed from then on: see above.
    Subject(Subject&& other) noexcept;

    /// Detaches all observers.
    virtual ~Subject();

    /// Replaces the observers by the other's, without telling those lost or gained. Nothing happens if both
    /// are the same object or share one state, or when memory fails.
    Subject& operator=(Subject const& other);

    /// Detaches all observers, then takes the other's state; the other may then only be destroyed.
    /// Self-assignment does nothing.
    Subject& operator=(Subject&& other) noexcept;

    /// Links the two. Null is ignored, and so is an observer that is attached already.
    ///
    /// When memory fails the subject may know the observer, but not the reverse.
    void addObserver(Observer* observer);

    /// Takes the link out on both sides. Null is ignored, and an observer that isn't attached stays so.
    void removeObserver(Observer* observer);

    /// Calls Observer::onNotify() of each observer, on this thread and with no lock held.
    ///
    /// Who is called is settled at the start. A callback may attach, remove and notify on the same subject:
    /// who is attached is first called by the next notify(), and who is removed is still called if its turn
    /// comes. So nobody who may yet be called, nor the subject, may be destroyed meanwhile, by any thread.
    /// The order means nothing.
    ///
    /// An exception of a callback passes through; those whose turn had not come are not called.
    void notify(NotificationHint const& hint);

private:
    friend class Observer;
    class Imp;

    Imp* m_imp; // owned; null when a move assignment took it
};

/// Is called by the subjects to which it is attached; Subject::addObserver() does that.
///
/// **Failure.** As for Subject.
///
/// **Thread safety.** No lock of its own: see Subject.
class ORL_CORE_EXPORT Observer {
public:
    /// Without subjects.
    Observer();

    /// Keeps the same subjects in mind, but is not called by them: see above.
    Observer(Observer const& other);

    /// Takes the other's state. The other must neither be used nor destroyed from then on: see above.
    Observer(Observer&& other) noexcept;

    /// Detaches from all subjects.
    ///
    /// By then the derived part is gone, so no other thread may notify this observer while it is destroyed.
    virtual ~Observer();

    /// Replaces the subjects by the other's, without telling those lost or gained. Nothing happens if both
    /// are the same object or share one state, or when memory fails.
    Observer& operator=(Observer const& other);

    /// Detaches from all subjects, then takes the other's state; the other may then only be destroyed.
    /// Self-assignment does nothing.
    Observer& operator=(Observer&& other) noexcept;

    /// Called by Subject::notify(), on the thread that called it.
    ///
    /// \param subject who notifies; not null.
    /// \param hint what happened; valid for the call only.
    virtual void onNotify(Subject* subject, NotificationHint const& hint) = 0;

private:
    friend class Subject;
    class Imp;

    void detach() noexcept;

    Imp* m_imp; // owned; null when a move assignment took it
};

} // namespace ORL_0_81

#endif // ORL_SUBJECT_OBSERVER_H
