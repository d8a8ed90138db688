// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlRoomyStack.h"

#include <pthread.h>

#include <exception>

namespace ORL_0_81 {

namespace {

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORL_HAS_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ORL_HAS_ADDRESS_SANITIZER
#endif

// Where there is an address limit the smaller ones may still be had.
#ifdef ORL_HAS_ADDRESS_SANITIZER
// The sanitizer does not clean up behind an exception on a stack of more than 64 MiB.
constexpr std::size_t SIZES[] = {std::size_t{48} << 20, std::size_t{16} << 20};
#else
constexpr std::size_t SIZES[] = {std::size_t{256} << 20, std::size_t{64} << 20, std::size_t{16} << 20};
#endif

// For the frames that are on the stack already, and those of functions that the measured one calls.
constexpr std::size_t RESERVE = std::size_t{1} << 20;

struct Stack {
    char const* top = nullptr;
    std::size_t size = 0;
};

thread_local Stack stack; // of the calling thread, if it is a roomy one

struct Call {
    std::function<void()> const* task;
    std::size_t size;
    std::exception_ptr failure;
};

void* runCall(void* argument) {
    auto& call = *static_cast<Call*>(argument);
    stack = {RoomyStack::position(), call.size};
    try {
        (*call.task)();
    } catch (...) {
        call.failure = std::current_exception();
    }
    return nullptr;
}

bool start(pthread_t& thread, Call& call) {
    for (std::size_t const size : SIZES) {
        pthread_attr_t attributes;
        if (pthread_attr_init(&attributes) != 0) {
            return false;
        }
        call.size = size;
        bool const isStarted = pthread_attr_setstacksize(&attributes, size) == 0 &&
                               pthread_create(&thread, &attributes, &runCall, &call) == 0;
        pthread_attr_destroy(&attributes);
        if (isStarted) {
            return true;
        }
    }
    return false;
}

} // namespace

bool RoomyStack::run(std::function<void()> const& task) {
    if (isHere()) {
        task();
        return true;
    }
    Call call{&task, 0, nullptr};
    pthread_t thread;
    if (!start(thread, call)) {
        return false;
    }
    pthread_join(thread, nullptr);
    if (call.failure) {
        std::rethrow_exception(call.failure);
    }
    return true;
}

bool RoomyStack::isHere() { return stack.top != nullptr; }

std::size_t RoomyStack::room() {
    if (!isHere()) {
        return CALLERS_ROOM;
    }
    std::size_t const used = static_cast<std::size_t>(stack.top - position());
    return stack.size > used + RESERVE ? stack.size - used - RESERVE : 0;
}

} // namespace ORL_0_81
