#include <functional>

#include <gtest/gtest.h>

#include "formatters/MyNumberFormatter.h"

namespace corvane {
namespace {

class Client final : public Formatter::Client {
 public:
  void formatterDisplayDidChange() override {
    ++changes;
    if (whileTold) whileTold();
  }
  int changes = 0;
  std::function<void()> whileTold;
};

TEST(Formatter, ClientsHearWhenValuesAreShownDifferentlyUntilTheyAreTakenOff) {
  MyNumberFormatter formatter;
  Client client;
  formatter.addClient(client);
  static_cast<void>(formatter.isPartialStringValid(""));
  EXPECT_EQ(client.changes, 1);
  static_cast<void>(formatter.isPartialStringValid(""));
  EXPECT_EQ(client.changes, 1) << "cleared already";
  formatter.removeClient(client);
  static_cast<void>(formatter.isPartialStringValid("5"));
  EXPECT_EQ(client.changes, 1);
}

TEST(Formatter, AClientThatAnotherOneTakesOffIsNotToldAnyMore) {
  MyNumberFormatter formatter;
  Client first;
  Client second;
  formatter.addClient(first);
  formatter.addClient(second);
  first.whileTold = [&] { formatter.removeClient(second); };
  static_cast<void>(formatter.isPartialStringValid(""));
  EXPECT_EQ(first.changes, 1);
  EXPECT_EQ(second.changes, 0);
}

}  // namespace
}  // namespace corvane
