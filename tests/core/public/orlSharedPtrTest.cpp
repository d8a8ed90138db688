// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlSharedPtr.h>

#include <orlRefCounted.h>

#include <gtest/gtest.h>

namespace {

using namespace ORL_0_81;

TEST(SharedPtr, HasTheSizeOfAPointer) { EXPECT_EQ(sizeof(SharedPtr<RefCountedST>), sizeof(void*)); }

} // namespace
