// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_ROOMY_STACK_H
#define ORL_ROOMY_STACK_H

#include <cstddef>
#include <functional>

namespace ORL_0_81 {

/// Room for functions that call themselves once for each character of a text, as the standard library's
/// regular expressions do: a thread of its own with a stack of hundreds of megabytes, of which the system
/// only provides what is used.
class RoomyStack {
public:
    /// How much stack a caller's thread is trusted to have left, in bytes. Threads of half a megabyte are not
    /// rare.
    static constexpr std::size_t CALLERS_ROOM = std::size_t{96} << 10;

    /// Calls the task on a roomy stack and waits for it; directly, if the calling thread is on one.
    ///
    /// \returns false, without having called the task, if there is no memory for such a stack. What the task
    ///     throws passes through.
    static bool run(std::function<void()> const& task);

    /// Whether the calling thread is on a roomy stack.
    static bool isHere();

    /// How many bytes a function may go deeper than where this is called: what is left of a roomy stack but
    /// for a reserve, or CALLERS_ROOM.
    static std::size_t room();

    /// To be called before an exception is thrown from deep within a roomy stack. Does something in a build
    /// with the address sanitizer only, which does not clean up behind an exception on large stacks.
    static void beforeThrow();

    /// A place in the calling thread's stack, for measuring depths.
    static char const* position() { return static_cast<char const*>(__builtin_frame_address(0)); }
};

} // namespace ORL_0_81

#endif // ORL_ROOMY_STACK_H
