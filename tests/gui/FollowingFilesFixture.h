// The whole pane over a demo client whose files change behind it: what every tab shows can be taken down and
// compared, so that a test says which tabs follow a change and which are left alone.
#pragma once

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <fstream>
#include <string>

#include "GuiFixture.h"
#include "support/DemoClient.h"

namespace corvane::test {

/// Everything that a person reads in each part of the window.
struct Shown {
  QString header;
  QString configuration;
  QString options;
  QString plugins;
};

class FollowingFilesTest : public GuiTest {
 protected:
  void SetUp() override {}  // the demo lays the client out

  /// Opens pane and lock, lets the pane see each of the files once and waits until it has. A plug-in is left
  /// open.
  void openAndSettle() {
    open(demo.root);
    openLock();
    for (const std::string& file :
         {demo.paths.clientSettings, demo.paths.volumesSettings, demo.paths.updateStatus}) {
      using std::filesystem::perms;
      std::filesystem::permissions(
          file, perms::owner_read | perms::owner_write | perms::group_read | perms::others_read);
    }
    clickTab(2);
    answerSheet("Continue");
    plugins().expandItem(plugins().itemAtRow(0));
    watchPlugins();
    ASSERT_TRUE(eventually([this] { return pluginsWereReadAgain(); }));
    watchPlugins();
  }
  [[nodiscard]] OutlineView& plugins() { return pane->assembly().pluginsView().pluginsTable; }
  /// From now on. A reload of the Plugins tab makes all its rows anew.
  void watchPlugins() { watched_ = plugins().itemAtRow(0); }
  [[nodiscard]] bool pluginsWereReadAgain() { return plugins().rowForItem(watched_) < 0; }

  /// The plug-ins with a word on whether they were read again, which leaves them looking the same.
  [[nodiscard]] Shown shown() {
    return {textsOf({&widget("greetingButton"), &widget("urlButton"), &widget("clientVersionButton")}),
            textsBelow("ConfigurationTabPage"), textsBelow("OptionsTabPage"),
            textsBelow("PluginsTabPage") + QString::number(plugins().itemAtRow(0).id())};
  }
  /// Puts a text in the place of what the field shows, and leaves the caret in the middle of it.
  static void beginTyping(QLineEdit& field, const char* text, int caret) {
    field.setFocus();
    field.selectAll();
    type(field, text);
    field.setCursorPosition(caret);
  }
  static void expectStillTyping(const QLineEdit& field, const char* text, int caret) {
    EXPECT_TRUE(field.hasFocus());
    EXPECT_EQ(field.text().toStdString(), text);
    EXPECT_EQ(field.cursorPosition(), caret);
    EXPECT_FALSE(field.hasSelectedText());
  }

  // The client's own acts. Its scripts write files in place.
  static void writeInPlace(const std::string& path, const std::string& contents) {
    std::ofstream stream(path, std::ios::binary);
    stream << contents;
    ASSERT_TRUE(stream.flush()) << path;
  }
  /// Replaces the first occurrence of a text in a file.
  static void edit(const std::string& path, const std::string& from, const std::string& to) {
    std::string contents = DemoClient::contents(path);
    const auto at = contents.find(from);
    ASSERT_NE(at, std::string::npos) << from << " in " << path;
    writeInPlace(path, contents.replace(at, from.size(), to));
  }

  DemoClient demo{"0.2"};

 private:
  OutlineItem watched_;
  [[nodiscard]] QString textsBelow(const char* page) {
    return textsOf(widget(page).findChildren<QWidget*>());
  }

  [[nodiscard]] static QString textsOf(const QList<QWidget*>& widgets) {
    QString texts;
    for (QWidget* shown : widgets) texts += textOf(*shown) + QLatin1Char('\n');
    return texts;
  }
  [[nodiscard]] static QString textOf(QWidget& shown) {
    const QString state = QStringLiteral("%1 %2 %3 ")
                              .arg(shown.objectName())
                              .arg(shown.isEnabled())
                              .arg(shown.isVisibleTo(shown.parentWidget()));
    if (const auto* label = qobject_cast<QLabel*>(&shown)) return state + label->text();
    if (const auto* field = qobject_cast<QLineEdit*>(&shown)) return state + field->text();
    if (const auto* menu = qobject_cast<QComboBox*>(&shown)) return state + menu->currentText();
    if (const auto* button = qobject_cast<QAbstractButton*>(&shown)) {
      return state + button->text() + (button->isChecked() ? QStringLiteral(" on") : QString());
    }
    if (const auto* view = qobject_cast<QAbstractItemView*>(&shown)) return state + rowsOf(*view, {});
    return state;
  }
  [[nodiscard]] static QString rowsOf(const QAbstractItemView& view, const QModelIndex& parent) {
    QString rows;
    const auto* tree = qobject_cast<const QTreeView*>(&view);
    for (int row = 0; row < view.model()->rowCount(parent); ++row) {
      const QModelIndex index = view.model()->index(row, 0, parent);
      const bool selected = view.selectionModel()->isSelected(index);
      rows += QStringLiteral("\n  ") + (selected ? QStringLiteral("* ") : QString());
      for (int column = 0; column < view.model()->columnCount(parent); ++column) {
        rows += index.siblingAtColumn(column).data().toString() + QLatin1Char('|');
      }
      if (tree != nullptr && tree->isExpanded(index)) rows += rowsOf(view, index);
    }
    return rows;
  }
};

}  // namespace corvane::test
