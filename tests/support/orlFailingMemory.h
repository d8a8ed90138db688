// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_ORL_FAILING_MEMORY_H
#define ORL_TEST_SUPPORT_ORL_FAILING_MEMORY_H

#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <new>

/// \file
/// Lets each allocation of an operation fail, one after the other, and looks at what is left. A program that uses
/// this links orlFailingMemory.cpp, which replaces the allocation functions.
///
///     failEachAllocation([](FailingMemory& memory) {
///         String text(LONG_TEXT);                                      // here memory never fails
///         bool const done = memory.run([&] { text.append(LONG_TEXT); }); // here it does
///         EXPECT_EQ(text.size(), done ? 2 * LONG_SIZE : 0);
///     });
///
/// What counts as an allocation: every form of `new`, on any thread, and `malloc` and its kin where the program's own
/// code calls them, as that of RapidJSON does. Under a sanitizer, which has a `malloc` of its own, and
/// without glibc it is `new` alone.
///
/// The control block of a String is none: when there is no memory for one the process ends. See
/// endAtEachControlBlock().

namespace orlTest {

/// What is expected of a scenario, beside that every failure comes out of it as `std::bad_alloc`.
struct MemoryPlan {
    /// An operation may go on after a failure of `new`, to an end that the scenario looks at.
    bool mayGoOn = false;

    /// What the system's libraries allocate with `malloc` fails, too: an open directory, the memory of a thread.
    /// Operations may go on after that.
    bool systemFails = false;

    /// What they allocate must be given back as well. Not for operations on threads, whose memory the system keeps
    /// for the next ones.
    bool systemGivesBack = false;
};

/// The memory of one run of a scenario.
class FailingMemory {
public:
    FailingMemory(FailingMemory const&) = delete;
    FailingMemory& operator=(FailingMemory const&) = delete;
    ~FailingMemory() = default;

    /// Performs the operation while memory fails as it is this run's turn. Counts on from one operation to the
    /// next.
    ///
    /// \tparam Others Exceptions that may come out, too.
    /// \returns whether the operation came to its end.
    template <class... Others, class Operation>
    bool run(Operation const& operation) {
        try {
            Armed const armed(*this);
            operation();
        } catch (std::bad_alloc const&) {
            EXPECT_TRUE(hasFailed()) << "memory was said to have failed, and had not";
            return false;
        } catch (std::exception const& exception) {
            bool const isExpected = (false || ... || (dynamic_cast<Others const*>(&exception) != nullptr));
            EXPECT_TRUE(isExpected && hasFailed()) << exception.what();
            return false;
        }
        EXPECT_FALSE(hasThrown() && !m_plan.mayGoOn) << "the failure went unnoticed";
        return true;
    }

    /// Whether an allocation has failed so far.
    bool hasFailed() const;

private:
    friend class FailingMemoryRuns;

    class Armed {
    public:
        explicit Armed(FailingMemory const& memory);
        Armed(Armed const&) = delete;
        Armed& operator=(Armed const&) = delete;
        ~Armed();
    };

    explicit FailingMemory(MemoryPlan const& plan) : m_plan(plan) {}

    bool hasThrown() const; // `new`, in this operation

    MemoryPlan m_plan;
};

using MemoryScenario = std::function<void(FailingMemory&)>;

/// Performs the scenario with its first allocation failing, then with its second, and so on until nothing fails any
/// more; and all that again with each one that follows failing as well. Beyond the first few hundred, allocations
/// are passed over in growing steps.
///
/// What a run allocates or opens must be given back at its end, but for what is made once in a process.
void failEachAllocation(MemoryScenario const& scenario, MemoryPlan const& plan = MemoryPlan());

/// Performs the scenario as often as it makes control blocks of Strings, each time in a process of its own, which
/// must end when that control block gets no memory.
void endAtEachControlBlock(MemoryScenario const& scenario);

/// Whether `malloc` fails in this program.
bool canFailMalloc();

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_ORL_FAILING_MEMORY_H
