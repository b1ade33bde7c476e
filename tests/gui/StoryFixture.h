// The whole pane over a fresh demo client, used by a person from one end to the other. What a story leaves in
// the client's files is compared with what stood in them and the changes that the person has meant to make.
//
// With CORVANE_STORY_PICTURES=FOLDER in the environment a story leaves a picture of every state there, light
// or, with CORVANE_STORY_APPEARANCE=dark, dark.
#pragma once

#include <QDir>
#include <QLabel>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "AssistivePerson.h"
#include "GuiFixture.h"
#include "Person.h"
#include "UseRecorder.h"
#include "appearance/Appearance.h"
#include "support/DemoClient.h"
#include "support/Values.h"

namespace corvane::test {

enum class Means { Mouse, Keyboard, Assistive };

inline void PrintTo(Means means, std::ostream* stream) {
  constexpr const char* kNames[] = {"Mouse", "Keyboard", "AssistiveTechnology"};
  *stream << kNames[static_cast<int>(means)];
}

class StoryTest : public GuiTest, public ::testing::WithParamInterface<Means> {
 protected:
  void SetUp() override {  // the demo lays the client out
    const bool isDark = qEnvironmentVariable("CORVANE_STORY_APPEARANCE") == QLatin1String("dark");
    qt::applyAppearance(isDark ? qt::Appearance::Dark : qt::Appearance::Light);
  }

  void openPane() {
    open(demo.root);
    switch (GetParam()) {
      case Means::Mouse:
        person = std::make_unique<MousePerson>(window());
        break;
      case Means::Keyboard:
        person = std::make_unique<KeyboardPerson>(window());
        break;
      case Means::Assistive:
        person = std::make_unique<AssistivePerson>(window(), uses.assisted);
        break;
    }
  }

  // Files.
  [[nodiscard]] std::string settingsOf(const char* plugin) const {
    return demo.paths.pluginSupport + "/" + plugin + "_settings.plist";
  }
  /// The file holds what it held before, or when it was last compared, and these changes.
  using Changes = std::initializer_list<std::pair<const char*, PropertyList>>;
  void expectChanged(const std::string& path, Changes changes) {
    auto [expected, isNew] = expected_.try_emplace(path, Dictionary::make());
    if (isNew && before_.count(path) != 0) expected->second = before_.at(path);
    for (const auto& [key, value] : changes) expected->second.set(key, value);
    EXPECT_TRUE(eventually([&, &wanted = expected->second] {
      return readPlist(path) == PropertyList(wanted);
    })) << path
        << " holds " << DemoClient::contents(path);
  }
  /// Takes down what stands in the file now.
  void remember(const std::string& path) { before_[path] = readPlist(path).asDictionary(); }

  // What is shown.
  [[nodiscard]] QString message() { return find<QLabel>(*sheet(), "message").text(); }
  [[nodiscard]] QString explanation() { return find<QLabel>(*sheet(), "informative").text(); }

  /// Keeps a picture of the window, and of what is open above it.
  void picture(const char* name) {
    while (window().sheets().isSliding()) QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    picture(name, window());
  }
  void picture(const char* name, QWidget& shown) {
    const QString folder = qEnvironmentVariable("CORVANE_STORY_PICTURES");
    if (folder.isEmpty()) return;
    QApplication::processEvents();
    const QString file = QDir(folder).filePath(
        QStringLiteral("%1 %2 %3")
            .arg(pictures_++, 2, 10, QLatin1Char('0'))
            .arg(QString::fromUtf8(name))
            .arg(QString::fromStdString(::testing::PrintToString(GetParam())).toLower()));
    EXPECT_TRUE(shown.grab().save(file + QStringLiteral(".png")));
    for (QWidget* above : {QApplication::activeModalWidget(), QApplication::activePopupWidget()}) {
      if (above == nullptr) continue;
      EXPECT_TRUE(above->grab().save(file + QStringLiteral(" above.png")));
    }
  }

  DemoClient demo{"0"};
  UseRecorder uses;
  std::unique_ptr<Person> person;

 private:
  std::map<std::string, Dictionary> before_;
  std::map<std::string, Dictionary> expected_;
  int pictures_ = 1;
};

}  // namespace corvane::test
