// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// A pool of threads that renders tiles and joins them to a picture when all have been rendered.
#include <orlJobDispatcher.h>

#include <atomic>
#include <iostream>

using namespace ORL_0_81;

namespace {

constexpr int TILES = 16;

struct Picture {
    std::atomic<int> sum{0};
    int result = 0;
};

class Tile : public JobDispatcher::JobBase {
public:
    // A job waits for one other job; those that wait for many form a chain of their last ones.
    Tile(Picture& picture, int number, int prerequisite)
        : JobBase(prerequisite), m_picture(picture), m_number(number) {}

    void run() override { m_picture.sum += m_number; }

private:
    Picture& m_picture;
    int m_number;
};

class Join : public JobDispatcher::JobBase {
public:
    Join(Picture& picture, int prerequisite) : JobBase(prerequisite), m_picture(picture) {}

    void run() override { m_picture.result = m_picture.sum; }

private:
    Picture& m_picture;
};

} // namespace

int main() {
    Picture picture;
    JobDispatcher dispatcher(4, "render");
    int last = JobDispatcher::JobBase::kNoPrerequisite;
    for (int number = 1; number <= TILES; ++number) {
        last = dispatcher.addJob(SharedPtr<JobDispatcher::JobBase>(new Tile(picture, number, last)));
    }
    int const joined = dispatcher.addJob(SharedPtr<JobDispatcher::JobBase>(new Join(picture, last)));
    dispatcher.prioritizeJob(joined); // first in the queue, but it still waits for the last tile
    dispatcher.waitJob(joined);

    std::cout << "joined: " << picture.result << '\n';
    return picture.result == TILES * (TILES + 1) / 2 ? 0 : 1;
}
