// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "internal/orlRoomyStack.h"

#include <pthread.h>

#include <exception>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ORL_HAS_ADDRESS_SANITIZER
#endif
#elif defined(__SANITIZE_ADDRESS__)
#define ORL_HAS_ADDRESS_SANITIZER
#endif
#ifdef ORL_HAS_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#endif

namespace ORL_0_81 {

namespace {

// Where there is an address limit the smaller ones may still be had.
constexpr std::size_t SIZES[] = {std::size_t{256} << 20, std::size_t{64} << 20, std::size_t{16} << 20};

// For the frames that are on the stack already, and those of functions that the measured one calls.
constexpr std::size_t RESERVE = std::size_t{1} << 20;

struct Stack {
    char const* top = nullptr;
    std::size_t size = 0;
    bool isCleared = false; // beforeThrow() has been called
};

thread_local Stack stack; // of the calling thread, if it is a roomy one

struct Call {
    std::function<void()> const* task;
    std::size_t size;
    std::exception_ptr failure;
};

// The address sanitizer marks the edges of a frame's variables, and clears them all when an exception is thrown, but
// not on a stack of more than 64 MiB. What has been left behind would be reported in the frames that come after.
void clearMarks([[maybe_unused]] char const* from, [[maybe_unused]] char const* to) {
#ifdef ORL_HAS_ADDRESS_SANITIZER
    __asan_unpoison_memory_region(from, static_cast<std::size_t>(to - from));
#endif
}

void* runCall(void* argument) {
    auto& call = *static_cast<Call*>(argument);
    stack = {RoomyStack::position(), call.size, false};
    try {
        (*call.task)();
    } catch (...) {
        call.failure = std::current_exception();
    }
    // What the standard library throws comes from an unknown depth.
    if (call.failure && !stack.isCleared) {
        clearMarks(stack.top - stack.size, RoomyStack::position());
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

void RoomyStack::beforeThrow() {
    if (isHere()) {
        clearMarks(position(), stack.top);
        stack.isCleared = true;
    }
}

std::size_t RoomyStack::room() {
    if (!isHere()) {
        return CALLERS_ROOM;
    }
    std::size_t const used = static_cast<std::size_t>(stack.top - position());
    return stack.size > used + RESERVE ? stack.size - used - RESERVE : 0;
}

} // namespace ORL_0_81
