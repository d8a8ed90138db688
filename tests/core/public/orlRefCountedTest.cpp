// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlRefCounted.h>

#include <gtest/gtest.h>

namespace {

using namespace ORL_0_81;

TEST(RefCountedST, ANewObjectHasNoOwner) {
    RefCountedST object;
    EXPECT_EQ(object.refcount(), 0);
}

} // namespace
