#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/DirectoryBatch.h"
#include "support/VirtualRunLoop.h"

namespace corvane {
namespace {

using ::testing::IsEmpty;
using Batches = std::vector<std::vector<std::string>>;

struct DirectoryBatchTest : public ::testing::Test {
  test::VirtualRunLoop loop;
  Batches batches;
  std::unique_ptr<DirectoryBatch> batch = std::make_unique<DirectoryBatch>(
      loop, 1.0, [this](const std::vector<std::string>& directories) { batches.push_back(directories); });
};

TEST_F(DirectoryBatchTest, IsDeliveredOneLatencyAfterItsFirstDirectoryWhateverComesLater) {
  batch->add("/a");
  for (int later = 0; later < 9; ++later) {
    loop.advance(0.1);
    batch->add("/b");
    EXPECT_THAT(batches, IsEmpty());
  }
  loop.advance(0.125);
  EXPECT_EQ(batches, (Batches{{"/a", "/b"}}));
}

TEST_F(DirectoryBatchTest, HoldsEachDirectoryOnceAndInOrder) {
  for (const char* directory : {"/c", "/a", "/c", "/b", "/a"}) batch->add(directory);
  loop.advance(1);
  EXPECT_EQ(batches, (Batches{{"/a", "/b", "/c"}}));
}

TEST_F(DirectoryBatchTest, WhatComesAfterDeliveryBelongsToTheNextBatch) {
  batch->add("/a");
  loop.advance(1.5);
  EXPECT_EQ(loop.pendingTimers(), 0U);
  batch->add("/a");
  loop.advance(0.75);
  EXPECT_EQ(batches.size(), 1U);
  loop.advance(0.25);
  EXPECT_EQ(batches, (Batches{{"/a"}, {"/a"}}));
}

TEST_F(DirectoryBatchTest, WithoutDirectoriesThereIsNoTimerAndNoBatch) {
  loop.advance(10);
  EXPECT_EQ(loop.pendingTimers(), 0U);
  EXPECT_THAT(batches, IsEmpty());
}

TEST_F(DirectoryBatchTest, ClearedBatchIsNotDelivered) {
  batch->add("/a");
  batch->clear();
  loop.advance(2);
  EXPECT_THAT(batches, IsEmpty());
}

TEST_F(DirectoryBatchTest, MayBeDestroyedByItsReceiver) {
  int calls = 0;
  batch = std::make_unique<DirectoryBatch>(loop, 1.0, [&](const std::vector<std::string>& directories) {
    batch.reset();
    calls += static_cast<int>(directories.size());
  });
  batch->add("/a");
  loop.advance(1);
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(loop.pendingTimers(), 0U);
}

}  // namespace
}  // namespace corvane
