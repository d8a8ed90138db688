// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/orlFailingMemory.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

// Whether the failing of memory would show what it is there to show.

namespace {

using orlTest::canFailMalloc;
using orlTest::failEachAllocation;
using orlTest::FailingMemory;

// Memory that no compiler takes for superfluous.
void* volatile kept = nullptr;

void useMemory() {
    int* const block = new int(1);
    kept = block;
    delete block;
}

TEST(FailingMemory, EveryFormOfNewFailsInItsTurn) {
    struct alignas(64) Wide {
        char bytes[64];
    };
    int failures = 0;
    failEachAllocation([&failures](FailingMemory& memory) {
        bool const done = memory.run([] {
            kept = std::make_unique<int>(1).get();
            kept = std::make_unique<int[]>(3).get();
            kept = std::make_unique<Wide>().get();
            kept = std::make_unique<Wide[]>(2).get();
        });
        failures += !done;
    });
    EXPECT_EQ(failures, 2 * 4);
}

TEST(FailingMemory, AFormThatThrowsNothingGivesNull) {
    int nulls = 0;
    failEachAllocation([&nulls](FailingMemory& memory) {
        EXPECT_TRUE(memory.run([&nulls] {
            std::unique_ptr<int> const block(new (std::nothrow) int(1));
            std::unique_ptr<int[]> const blocks(new (std::nothrow) int[2]);
            nulls += (block == nullptr) + (blocks == nullptr);
        }));
    });
    EXPECT_EQ(nulls, 2 + 1 + 2) << "either alone, then both, then the second";
}

TEST(FailingMemory, AllFollowingAllocationsFailInTheSecondRound) {
    std::vector<int> completed;
    failEachAllocation([&completed](FailingMemory& memory) {
        int steps = 0;
        for (int i = 0; i < 3; ++i) {
            steps += memory.run([] { useMemory(); });
        }
        completed.push_back(steps);
    });
    EXPECT_EQ(completed, (std::vector<int>{3, 3, 2, 2, 2, 3, 0, 1, 2, 3}));
}

TEST(FailingMemory, OtherThreadsFailToo) {
    int failures = 0;
    failEachAllocation(
        [&failures](FailingMemory& memory) {
            memory.run([&failures] {
                std::thread([&failures] {
                    try {
                        useMemory();
                    } catch (std::bad_alloc const&) {
                        ++failures;
                    }
                }).join();
            });
        },
        {true, false, false});
    EXPECT_EQ(failures, 2) << "in each round once, when the thread itself has its memory";
}

TEST(FailingMemory, TheProgramsOwnMallocGivesNull) {
    if (!canFailMalloc()) {
        GTEST_SKIP() << "malloc is another's here";
    }
    int nulls = 0;
    failEachAllocation([&nulls](FailingMemory& memory) {
        void* blocks[3] = {};
        EXPECT_TRUE(memory.run([&blocks] {
            blocks[0] = std::malloc(1);
            blocks[1] = std::calloc(2, 3);
            blocks[2] = std::realloc(nullptr, 4);
        }));
        for (void* const block : blocks) {
            nulls += block == nullptr;
            std::free(block);
        }
    });
    EXPECT_EQ(nulls, 3 + 3 + 2 + 1);
}

// The failures of the tests that the operation makes.
template <class Operation>
std::string failuresOf(Operation const& operation) {
    testing::TestPartResultArray results;
    {
        testing::ScopedFakeTestPartResultReporter const reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ALL_THREADS, &results);
        operation();
    }
    std::string texts;
    for (int i = 0; i < results.size(); ++i) {
        texts += results.GetTestPartResult(i).message();
    }
    return texts;
}

bool holds(std::string const& text, char const* part) { return text.find(part) != std::string::npos; }

TEST(FailingMemory, ALeakIsAFailure) {
    std::vector<std::unique_ptr<int>> leaked;
    leaked.reserve(100);
    std::string const failures = failuresOf([&leaked] {
        failEachAllocation([&leaked](FailingMemory& memory) {
            memory.run([&leaked] {
                int* const first = new int(1);
                try {
                    useMemory();
                } catch (...) {
                    leaked.emplace_back(first); // out of sight
                    throw;
                }
                delete first;
            });
        });
    });
    EXPECT_TRUE(holds(failures, "something was not given back")) << failures;
}

TEST(FailingMemory, ABlockOfMallocAndAnOpenFileAreLeaksToo) {
    std::vector<void*> blocks;
    std::vector<int> files;
    blocks.reserve(100);
    files.reserve(100);
    if (canFailMalloc()) {
        EXPECT_TRUE(holds(failuresOf([&blocks] {
                              failEachAllocation([&blocks](FailingMemory& memory) {
                                  memory.run([&blocks] { blocks.push_back(std::malloc(1)); });
                              });
                          }),
                          "something was not given back"));
    }
    EXPECT_TRUE(holds(failuresOf([&files] {
                          failEachAllocation([&files](FailingMemory& memory) {
                              memory.run([&files] {
                                  files.push_back(dup(0));
                                  useMemory();
                              });
                          });
                      }),
                      "something was not given back"));
    for (void* const block : blocks) {
        std::free(block);
    }
    for (int const file : files) {
        close(file);
    }
}

TEST(FailingMemory, WhatIsMadeOnceInAProcessIsNoLeak) {
    EXPECT_EQ(failuresOf([] {
                  static std::unique_ptr<int> once;
                  failEachAllocation([](FailingMemory& memory) {
                      if (!memory.run([] { useMemory(); }) && !once) {
                          once = std::make_unique<int>(1);
                      }
                  });
              }),
              "");
}

TEST(FailingMemory, AFailureThatGoesUnnoticedIsAFailure) {
    auto const swallow = [](FailingMemory& memory) {
        memory.run([] {
            try {
                useMemory();
            } catch (std::bad_alloc const&) {
            }
        });
    };
    EXPECT_TRUE(holds(failuresOf([&] { failEachAllocation(swallow); }), "the failure went unnoticed"));
    EXPECT_EQ(failuresOf([&] { failEachAllocation(swallow, {true, false, false}); }), "");
}

TEST(FailingMemory, AnotherExceptionIsAFailureUnlessItIsExpected) {
    auto const disguise = [] {
        try {
            useMemory();
        } catch (std::bad_alloc const&) {
            throw std::range_error("in disguise");
        }
    };
    EXPECT_TRUE(
        holds(failuresOf([&] { failEachAllocation([&](FailingMemory& memory) { memory.run(disguise); }); }),
              "in disguise"));
    EXPECT_EQ(failuresOf([&] {
                  failEachAllocation([&](FailingMemory& memory) { memory.run<std::range_error>(disguise); });
              }),
              "");
}

TEST(FailingMemory, AScenarioWithoutAllocationsIsAFailure) {
    EXPECT_TRUE(
        holds(failuresOf([] { failEachAllocation([](FailingMemory& memory) { memory.run([] {}); }); }),
              "nothing was allocated"));
}

} // namespace
