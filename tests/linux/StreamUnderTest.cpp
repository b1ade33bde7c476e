#include "linux/StreamUnderTest.h"

#include <gtest/gtest.h>
#include <poll.h>

namespace corvane::test {

void StreamUnderTest::start(const std::vector<std::string>& roots, bool mustStart) {
  std::vector<std::string> paths;
  for (const auto& root : roots) paths.push_back(root == "." ? folder.path() : folder / root);
  stream = events_.createStream(paths, 1.0, [this](const std::vector<std::string>& directories) {
    batches.push_back(directories);
    onDelivery();
  });
  stream->scheduleWithRunLoop();
  EXPECT_EQ(stream->start(), mustStart);
}

int StreamUnderTest::numberOfWakeUps() {
  int wakeUps = 0;
  for (bool any = true; any;) {
    any = false;
    for (const int descriptor : loop.descriptors()) {
      pollfd entry{descriptor, POLLIN, 0};
      if (::poll(&entry, 1, 0) != 1) continue;
      loop.makeReadable(descriptor);
      any = true;
      ++wakeUps;
    }
  }
  return wakeUps;
}

StreamUnderTest::Names StreamUnderTest::changes() {
  takeUpEvents();
  loop.advance(1.0);
  return takeDelivered();
}

StreamUnderTest::Names StreamUnderTest::takeDelivered() {
  Names names;
  for (const auto& batch : batches) {
    EXPECT_EQ(std::set(batch.begin(), batch.end()).size(), batch.size()) << "a directory twice in one batch";
    for (const auto& directory : batch) {
      names.insert(directory == folder.path() ? "." : directory.substr(folder.path().size() + 1));
    }
  }
  batches.clear();
  return names;
}

}  // namespace corvane::test
