#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "pane/ObservableDictionary.h"

namespace corvane {
namespace {

class Recorder final : public KeyObserver {
 public:
  void observeValueForKey(const std::string& key, const PropertyList& /*newValue*/) override {
    keys.push_back(key);
    if (whileTold) whileTold();
  }
  std::vector<std::string> keys;
  std::function<void()> whileTold;
};

struct ObservableDictionaryTest : testing::Test {
  using Keys = std::vector<std::string>;
  Recorder owner;
  Recorder observer;
  Recorder other;
  const PropertyList kept = PropertyList::integer(1);
  ObservableDictionary dictionary{Dictionary::make({{"kept", kept}, {"replaced", PropertyList::integer(2)}}),
                                  owner};
};

TEST_F(ObservableDictionaryTest, AReplacementTellsOnlyOfValuesThatBecameOtherObjects) {
  dictionary.addObserver(observer, "kept");
  dictionary.addObserver(observer, "replaced");
  dictionary.replaceFrom(Dictionary::make({{"kept", kept}, {"replaced", PropertyList::integer(2)}}));
  EXPECT_EQ(observer.keys, Keys{"replaced"}) << "equal, but another object";
  EXPECT_TRUE(owner.keys.empty());
}

TEST_F(ObservableDictionaryTest, TheOwnerHearsOfAChangeFirstAndEveryRegistrationOnce) {
  std::vector<const Recorder*> order;
  for (Recorder* recorder : {&owner, &observer, &other}) {
    recorder->whileTold = [&order, recorder] { order.push_back(recorder); };
  }
  dictionary.addObserver(observer, "kept");
  dictionary.addObserver(other, "kept");
  dictionary.addObserver(observer, "kept");
  dictionary.set("kept", PropertyList::integer(3));
  EXPECT_EQ(order, (std::vector<const Recorder*>{&owner, &observer, &other, &observer}));
}

TEST_F(ObservableDictionaryTest, AnObserverThatIsTakenOffDuringAChangeIsNotToldOfIt) {
  dictionary.addObserver(observer, "kept");
  dictionary.addObserver(other, "kept");
  observer.whileTold = [this] { dictionary.removeObserver(other, "kept"); };
  dictionary.set("kept", PropertyList::integer(3));
  EXPECT_EQ(observer.keys, Keys{"kept"});
  EXPECT_TRUE(other.keys.empty());
}

TEST_F(ObservableDictionaryTest, TakingOffAnObserverThatIsNotThereDoesNothing) {
  dictionary.removeObserver(observer, "kept");
  dictionary.addObserver(observer, "kept");
  dictionary.removeObserver(other, "kept");
  dictionary.removeObserver(observer, "replaced");
  dictionary.set("kept", PropertyList::integer(3));
  EXPECT_EQ(observer.keys, Keys{"kept"});
}

}  // namespace
}  // namespace corvane
