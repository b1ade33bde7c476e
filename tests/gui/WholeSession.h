// One random session of a person at the whole window: what may come next is chosen by a seeded generator,
// done at the window and in the model, and compared after every step. Mouse, keyboard and assistive
// technology take turns; in the middle of an act (a text is being typed, a button is held down, a menu, a
// sheet or a panel is open) the client changes its files, time passes, the lock closes.
#pragma once

#include <QPersistentModelIndex>
#include <array>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "AssistivePerson.h"
#include "Person.h"
#include "WholeModel.h"
#include "WholeWindow.h"

class QLineEdit;

namespace corvane::test {

class WholeSession {
 public:
  explicit WholeSession(unsigned seed);
  WholeSession(const WholeSession&) = delete;
  WholeSession& operator=(const WholeSession&) = delete;
  ~WholeSession();

  void live(int steps);

 private:
  enum class Way { Mouse, Keys, Assistive };
  using Act = std::function<void()>;

  // Choosing.
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  bool oneIn(int times) { return below(times) == 0; }
  template <typename Container>
  auto& anyOf(Container& container) {
    return container[static_cast<std::size_t>(below(static_cast<int>(container.size())))];
  }
  Person& person() { return *persons_[static_cast<std::size_t>(way_)]; }
  /// Takes down what is done, for whoever reads of a failure.
  void say(const std::string& what) { said_ += "\n  " + what; }

  // Steps.
  void step();
  void switchLock();
  void closeLock();
  void endEditOfRow();
  void actAtSetting();
  void typeInSetting(const ModelSetting& setting);
  void actAtVolumes();
  void typeThreshold(bool presence);
  void actAtSheet();
  void changeInSheet();
  void chooseHalfOfTheDay();
  void askForRemovalOfClient();
  void actAtPlugins();
  void actAtRow(const ModelRow& row);
  void typeInRow(const ModelRow& row);
  void pickInRow(const ModelRow& row);
  /// Chooses from the list that is open, in the midst of what may come in between. False when it has gone.
  bool chooseFromOpenList(int place);
  void chooseInPanel(const ModelRow& row);
  void testSettings(const ModelRow& row);
  void askForRemoval(const ModelRow& row);
  /// Clicks the row's control, perhaps with something in between while the mouse button is down.
  void clickRow(const ModelRow& row, Spot spot);

  // What can come in between.
  void meanwhile();
  void clientChangesSomething();
  void breakSomething();
  void reportChanges();
  void changeFate();
  /// Closes behind the user's back.
  void loseRights();
  void assistActsElsewhere();

  // The window.
  void goToTab(int tab);
  /// Goes to the one beside it, in the middle of something.
  void leaveTab(int next);
  /// Answers the sheet that is open.
  void answer(const char* button);
  [[nodiscard]] QWidget* sheet() { return window_.window().sheets().current(); }
  template <typename Widget = QWidget>
  [[nodiscard]] Widget& widget(const char* name) {
    return find<Widget>(window_.window(), name);
  }
  [[nodiscard]] qt::OutlineTree& tree() { return widget<qt::OutlineTree>("pluginsTable"); }
  [[nodiscard]] QModelIndex indexOf(const ModelRow& row);
  [[nodiscard]] TreeRow treeRow(const ModelRow& row);
  void settle();
  /// Puts a text in the place of what the field shows, all of which is selected: with keys or an input
  /// method, perhaps after clearing it or with some undoing. Answers the texts that stood in it one after the
  /// other; `allows` is its formatter.
  using Allows = std::function<bool(const std::string& text)>;
  [[nodiscard]] std::vector<std::string> enter(QLineEdit& field, const std::string& text,
                                               const Allows& allows);

  // Comparing.
  void compare();
  void comparePicture();
  void compareFiles();
  void compareSettings();
  void compareVolumes();
  void compareSheet();
  void comparePlugins();
  void compareValueRow(const ModelRow& row);

  std::mt19937 random_;
  WholeModel model_;
  WholeWindow window_{model_};
  std::set<std::string> assisted_;
  std::array<std::unique_ptr<Person>, 3> persons_;
  std::unique_ptr<Listener> listener_;
  Way way_ = Way::Mouse;
  int tab_ = 0;
  bool sheetIsOpen_ = false;
  const ModelSetting* typedSetting_ = nullptr;  // in which a text is being typed
  std::string typed_;
  bool editsRow_ = false;
  std::string said_;
};

}  // namespace corvane::test
