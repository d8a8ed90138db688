// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFailingMemory.h"

#include "private/orlPtrRep.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <mutex>
#include <ostream>
#include <string>

#if defined(__GLIBC__) && !defined(ORL_TEST_SANITIZED)
#define ORL_TEST_OWN_MALLOC
#endif

#ifdef ORL_TEST_OWN_MALLOC
// The functions behind those that stand in for them.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming)
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* memory, std::size_t size);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t size);
extern "C" void __libc_free(void* memory);

// Where the program's own code lies.
extern "C" char const __executable_start;
extern "C" char const etext;
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)
#endif

namespace {

constexpr long NEVER = std::numeric_limits<long>::max();

// Which allocations fail. Nothing here may allocate.

enum Counted : int {
    kOrdinary,      // all but control blocks
    kControlBlocks, // these alone
};

std::atomic<bool> isArmed{false};
std::atomic<bool> failsFromThenOn{false};
std::atomic<bool> systemFails{false};
std::atomic<bool> systemGivesBack{false};
std::atomic<Counted> counted{kOrdinary};
std::atomic<long> failing{NEVER}; // which one, from 1 on
std::atomic<long> count{0};       // so far
std::atomic<bool> newHasThrown{false};
std::atomic<bool> somethingHasFailed{false};
std::atomic<long> blocksOfNew{0}; // that have not been freed

bool isItsTurn() {
    long const number = ++count;
    bool const fails = failsFromThenOn ? number >= failing : number == failing;
    if (fails) {
        somethingHasFailed = true;
    }
    return fails;
}

// The places in the code that allocate control blocks. Each is found out when such a block is freed: its first
// field tells what it is.
class Sites {
public:
    void add(void const* site) {
        for (std::atomic<void const*>& place : m_sites) {
            void const* expected = nullptr;
            if (place == site || place.compare_exchange_strong(expected, site) || expected == site) {
                return;
            }
        }
    }

    bool holds(void const* site) const {
        return std::any_of(std::begin(m_sites), std::end(m_sites),
                           [site](std::atomic<void const*> const& place) { return place == site; });
    }

private:
    std::atomic<void const*> m_sites[64] = {};
};

Sites controlBlockSites;

using ControlBlock = ORL_0_81::PtrInternal::PtrCntrlBlkPtr<std::string>;

bool isControlBlock(void const* memory, std::size_t size) {
    if (size != sizeof(ControlBlock)) {
        return false;
    }
    void const* first = nullptr;
    std::memcpy(&first, memory, sizeof first);
    return first == &ControlBlock::m_the_vtbl;
}

// Stands right before what `new` gives.
struct alignas(__STDCPP_DEFAULT_NEW_ALIGNMENT__) Header {
    void const* site;
    std::size_t size;
};

void* systemAllocate(std::size_t alignment, std::size_t size) {
#ifdef ORL_TEST_OWN_MALLOC
    return alignment > alignof(std::max_align_t) ? __libc_memalign(alignment, size) : __libc_malloc(size);
#else
    if (alignment > alignof(std::max_align_t)) {
        void* memory = nullptr;
        return posix_memalign(&memory, alignment, size) == 0 ? memory : nullptr;
    }
    return std::malloc(size);
#endif
}

void systemFree(void* memory) {
#ifdef ORL_TEST_OWN_MALLOC
    __libc_free(memory);
#else
    std::free(memory);
#endif
}

std::size_t offsetOf(std::size_t alignment) { return std::max(alignment, sizeof(Header)); }

// Null where it is to fail, or where there is no memory indeed.
void* allocate(std::size_t size, std::size_t alignment, void const* site) {
    if (isArmed && (controlBlockSites.holds(site) == (counted == kControlBlocks)) && isItsTurn()) {
        return nullptr;
    }
    std::size_t const offset = offsetOf(alignment);
    auto* const start = static_cast<char*>(systemAllocate(alignment, offset + size));
    if (!start) {
        return nullptr;
    }
    new (start + offset - sizeof(Header)) Header{site, size};
    ++blocksOfNew;
    return start + offset;
}

void* allocateOrThrow(std::size_t size, std::size_t alignment, void const* site) {
    void* const memory = allocate(size, alignment, site);
    if (!memory) {
        newHasThrown = true;
        throw std::bad_alloc();
    }
    return memory;
}

void deallocate(void* memory, std::size_t alignment) noexcept {
    if (!memory) {
        return;
    }
    auto const* const header = reinterpret_cast<Header const*>(static_cast<char*>(memory) - sizeof(Header));
    if (isControlBlock(memory, header->size)) {
        controlBlockSites.add(header->site);
    }
    --blocksOfNew;
    systemFree(static_cast<char*>(memory) - offsetOf(alignment));
}

constexpr std::size_t ORDINARY = __STDCPP_DEFAULT_NEW_ALIGNMENT__;

std::size_t toSize(std::align_val_t alignment) { return static_cast<std::size_t>(alignment); }

} // namespace

// The allocation functions.

#define ORL_TEST_SITE __builtin_return_address(0)

void* operator new(std::size_t size) { return allocateOrThrow(size, ORDINARY, ORL_TEST_SITE); }
void* operator new[](std::size_t size) { return allocateOrThrow(size, ORDINARY, ORL_TEST_SITE); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept {
    return allocate(size, ORDINARY, ORL_TEST_SITE);
}
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept {
    return allocate(size, ORDINARY, ORL_TEST_SITE);
}
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, toSize(alignment), ORL_TEST_SITE);
}
void* operator new[](std::size_t size, std::align_val_t alignment) {
    return allocateOrThrow(size, toSize(alignment), ORL_TEST_SITE);
}
void* operator new(std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    return allocate(size, toSize(alignment), ORL_TEST_SITE);
}
void* operator new[](std::size_t size, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    return allocate(size, toSize(alignment), ORL_TEST_SITE);
}

void operator delete(void* memory) noexcept { deallocate(memory, ORDINARY); }
void operator delete[](void* memory) noexcept { deallocate(memory, ORDINARY); }
void operator delete(void* memory, std::size_t) noexcept { deallocate(memory, ORDINARY); }
void operator delete[](void* memory, std::size_t) noexcept { deallocate(memory, ORDINARY); }
void operator delete(void* memory, std::nothrow_t const&) noexcept { deallocate(memory, ORDINARY); }
void operator delete[](void* memory, std::nothrow_t const&) noexcept { deallocate(memory, ORDINARY); }
void operator delete(void* memory, std::align_val_t alignment) noexcept {
    deallocate(memory, toSize(alignment));
}
void operator delete[](void* memory, std::align_val_t alignment) noexcept {
    deallocate(memory, toSize(alignment));
}
void operator delete(void* memory, std::size_t, std::align_val_t alignment) noexcept {
    deallocate(memory, toSize(alignment));
}
void operator delete[](void* memory, std::size_t, std::align_val_t alignment) noexcept {
    deallocate(memory, toSize(alignment));
}
void operator delete(void* memory, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    deallocate(memory, toSize(alignment));
}
void operator delete[](void* memory, std::align_val_t alignment, std::nothrow_t const&) noexcept {
    deallocate(memory, toSize(alignment));
}

#ifdef ORL_TEST_OWN_MALLOC

namespace {

bool isOwnCode(void const* site) {
    auto const* const place = static_cast<char const*>(site);
    return place >= &__executable_start && place < &etext;
}

// The blocks of malloc that have to be given back.
class KeptBlocks {
public:
    void add(void const* block) {
        Lock const lock(m_lock);
        for (void const*& place : m_blocks) {
            if (!place) {
                place = block;
                m_end = std::max(m_end, static_cast<std::size_t>(&place - m_blocks) + 1);
                ++m_count;
                return;
            }
        }
        std::abort(); // make room for more
    }

    void remove(void const* block) {
        if (!block || m_count == 0) {
            return;
        }
        Lock const lock(m_lock);
        for (std::size_t i = 0; i < m_end; ++i) {
            if (m_blocks[i] == block) {
                m_blocks[i] = nullptr;
                --m_count;
                return;
            }
        }
    }

    long count() const { return m_count; }

private:
    // A mutex might allocate.
    class Lock {
    public:
        explicit Lock(std::atomic_flag& flag) : m_flag(flag) {
            while (m_flag.test_and_set(std::memory_order_acquire)) {
            }
        }
        Lock(Lock const&) = delete;
        Lock& operator=(Lock const&) = delete;
        ~Lock() { m_flag.clear(std::memory_order_release); }

    private:
        std::atomic_flag& m_flag;
    };

    std::atomic_flag m_lock = ATOMIC_FLAG_INIT;
    void const* m_blocks[4096] = {};
    std::size_t m_end = 0; // behind the last one ever used
    std::atomic<long> m_count{0};
};

KeptBlocks keptBlocks;

// Whether an allocation is to fail.
bool fails(bool isOwn) { return isArmed && counted == kOrdinary && (isOwn || systemFails) && isItsTurn(); }

void* refuse() {
    errno = ENOMEM;
    return nullptr;
}

void* keep(void* memory, bool isOwn) {
    if (memory && (isOwn || (isArmed && systemGivesBack))) {
        keptBlocks.add(memory);
    }
    return memory;
}

} // namespace

#define ORL_TEST_INTERPOSED extern "C" __attribute__((visibility("default")))

// NOLINTBEGIN(readability-identifier-naming)
ORL_TEST_INTERPOSED void* malloc(std::size_t size) noexcept {
    bool const isOwn = isOwnCode(ORL_TEST_SITE);
    return fails(isOwn) ? refuse() : keep(__libc_malloc(size), isOwn);
}

ORL_TEST_INTERPOSED void* calloc(std::size_t number, std::size_t size) noexcept {
    bool const isOwn = isOwnCode(ORL_TEST_SITE);
    return fails(isOwn) ? refuse() : keep(__libc_calloc(number, size), isOwn);
}

ORL_TEST_INTERPOSED void* realloc(void* memory, std::size_t size) noexcept {
    bool const isOwn = isOwnCode(ORL_TEST_SITE);
    if (fails(isOwn)) {
        return refuse();
    }
    keptBlocks.remove(memory);
    return keep(__libc_realloc(memory, size), isOwn);
}

ORL_TEST_INTERPOSED int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    bool const isOwn = isOwnCode(ORL_TEST_SITE);
    void* const block = fails(isOwn) ? nullptr : keep(__libc_memalign(alignment, size), isOwn);
    if (!block) {
        return ENOMEM;
    }
    *memory = block;
    return 0;
}

ORL_TEST_INTERPOSED void free(void* memory) noexcept {
    keptBlocks.remove(memory);
    __libc_free(memory);
}
// NOLINTEND(readability-identifier-naming)

#endif // ORL_TEST_OWN_MALLOC

namespace orlTest {

namespace {

// What has not been given back.
struct Balance {
    long blocks;
    long openFiles;

    bool hasGrownSince(Balance const& other) const {
        return blocks > other.blocks || openFiles > other.openFiles;
    }
};

std::ostream& operator<<(std::ostream& out, Balance const& balance) {
    return out << balance.blocks << " blocks and " << balance.openFiles << " files";
}

long openFiles() {
    constexpr int HIGHEST = 128;
    long result = 0;
    for (int descriptor = 0; descriptor < HIGHEST; ++descriptor) {
        result += fcntl(descriptor, F_GETFD) >= 0;
    }
    return result;
}

Balance balance() {
    long blocks = blocksOfNew;
#ifdef ORL_TEST_OWN_MALLOC
    blocks += keptBlocks.count();
#endif
    return {blocks, openFiles()};
}

// Where a process that ends was.
char whereabouts[128];

extern "C" void tellWhereabouts(int signal) {
    std::size_t const length = std::strlen(whereabouts);
    static_cast<void>(write(STDERR_FILENO, whereabouts, length) == 0);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void watchForTheEnd() {
    static std::once_flag once;
    std::call_once(once, [] {
        for (int const signal : {SIGABRT, SIGSEGV, SIGBUS, SIGFPE}) {
            std::signal(signal, tellWhereabouts);
        }
    });
}

// All of the first, then ever larger steps. With a sanitizer, where everything takes ten times as long, a sample.
long stepAfter(long number) {
#ifdef ORL_TEST_SANITIZED
    constexpr long WITHOUT_GAPS = 60;
#else
    constexpr long WITHOUT_GAPS = 400;
#endif
    return number < WITHOUT_GAPS ? 1 : 1 + number / 16;
}

} // namespace

bool FailingMemory::hasFailed() const { return somethingHasFailed; }

bool FailingMemory::hasThrown() const { return newHasThrown; }

FailingMemory::Armed::Armed(FailingMemory const& memory) {
    systemFails = memory.m_plan.systemFails;
    systemGivesBack = memory.m_plan.systemGivesBack;
    newHasThrown = false;
    isArmed = true;
}

FailingMemory::Armed::~Armed() { isArmed = false; }

class FailingMemoryRuns {
public:
    FailingMemoryRuns(MemoryScenario const& scenario, MemoryPlan const& plan)
        : m_scenario(scenario), m_plan(plan) {}

    // With the allocation of that number failing; whether there was one.
    bool fail(long number, bool fromThenOn, Counted what = kOrdinary) const {
        std::snprintf(whereabouts, sizeof whereabouts, "allocation %ld failing%s\n", number,
                      fromThenOn ? " with all that follow" : "");
        failing = number;
        failsFromThenOn = fromThenOn;
        counted = what;
        count = 0;
        somethingHasFailed = false;
        FailingMemory memory(m_plan);
        m_scenario(memory);
        return somethingHasFailed;
    }

    // The same, and looks for what is not given back. What a process makes once may be made on the way of a failure
    // for the first time, so a leak is what shows twice.
    bool failCleanly(long number, bool fromThenOn) const {
        Balance before = balance();
        bool const result = fail(number, fromThenOn);
        if (balance().hasGrownSince(before) &&
            !testing::Test::HasFailure()) { // a failed check keeps its text
            before = balance();
            fail(number, fromThenOn);
            EXPECT_FALSE(balance().hasGrownSince(before))
                << "something was not given back: " << before << ", then " << balance();
        }
        return result;
    }

    void failEach(bool fromThenOn) const {
        long number = 1;
        for (; failCleanly(number, fromThenOn); number += stepAfter(number)) {
            if (testing::Test::HasFailure()) {
                ADD_FAILURE() << "with " << whereabouts;
                return;
            }
        }
        EXPECT_GT(number, 1) << "nothing was allocated";
    }

    // Twice, so that all is there that a process makes once, and all places are known that make control blocks.
    void warmUp() const {
        fail(NEVER, false);
        fail(NEVER, false);
    }

private:
    MemoryScenario const& m_scenario;
    MemoryPlan const& m_plan;
};

void failEachAllocation(MemoryScenario const& scenario, MemoryPlan const& plan) {
    watchForTheEnd();
    FailingMemoryRuns const runs(scenario, plan);
    runs.warmUp();
    if (testing::Test::HasFailure()) {
        return;
    }
    runs.failEach(false);
    runs.failEach(true);
}

void endAtEachControlBlock(MemoryScenario const& scenario) {
    MemoryPlan const plan;
    FailingMemoryRuns const runs(scenario, plan);
    runs.warmUp();
    runs.fail(NEVER, false, kControlBlocks);
    long const last = count;
    EXPECT_GT(last, 0) << "no control block was made";
    for (long number = 1; number <= last; ++number) {
        EXPECT_EXIT(runs.fail(number, false, kControlBlocks), testing::KilledBySignal(SIGABRT), "bad_alloc")
            << number;
    }
}

bool canFailMalloc() {
#ifdef ORL_TEST_OWN_MALLOC
    return true;
#else
    return false;
#endif
}

} // namespace orlTest
