// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_THREAD_H
#define ORL_THREAD_H

#include "orlPlatform.h"
#include "orlString.h"

#include <functional>
#include <future>
#include <type_traits>
#include <utility>

/// \file
/// Work on a thread of its own, for the library itself.

namespace ORL_0_81 {
namespace Async {

/// Starts a copy of `callable` at once, on a new thread that bears the name of the calling one.
///
/// Nothing pools or limits the threads: a caller who starts many holds them back with a Semaphore. The thread
/// belongs to nobody; the future alone leads to it. What the callable throws is thrown again by the future.
///
/// **A future that is dropped before its task has ended blocks until then**, so that a task may use whatever
/// outlives its future. This is also why the standard library's own asynchronous start stands beneath: of all
/// ways to come by a future it is the only one with a state that waits.
///
/// \returns the future of the result, which is a value, a reference or void.
/// \throws std::system_error when no thread can be started; the callable has then not run.
template <class Callable>
std::future<std::invoke_result_t<std::decay_t<Callable>>> run(Callable&& callable) {
    using Result = std::invoke_result_t<std::decay_t<Callable>>;

    String name;
    Platform::getThreadName(name);
    return std::async(
        std::launch::async,
        [name](std::decay_t<Callable> task) -> Result {
            Platform::setThreadName(name);
            return std::invoke(std::move(task));
        },
        std::forward<Callable>(callable));
}

} // namespace Async
} // namespace ORL_0_81

#endif // ORL_THREAD_H
