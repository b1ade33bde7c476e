// Acts of a person at the window, and waiting for what they lead to. Nothing here sleeps: a wait ends as soon
// as its condition holds.
#pragma once

#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

namespace corvane::test {

inline constexpr int kPatienceMilliseconds = 10000;

/// Runs the event loop until the condition holds; false when it never does.
template <typename Condition>
[[nodiscard]] bool eventually(Condition condition) {
  return QTest::qWaitFor(condition, kPatienceMilliseconds);
}

/// The widget with this object name anywhere below the window; never null (the test fails with an exception
/// of the test framework's own kind otherwise).
template <typename Widget = QWidget>
[[nodiscard]] Widget& find(const QWidget& window, const char* name) {
  auto* widget = window.findChild<Widget*>(QString::fromLatin1(name));
  if (widget == nullptr) throw std::runtime_error(std::string("no widget is called ") + name);
  return *widget;
}

inline void click(QWidget& widget, Qt::KeyboardModifiers modifiers = {}) {
  QTest::mouseClick(&widget, Qt::LeftButton, modifiers);
}

/// Presses a key where the keyboard focus of the widget's window is.
inline void press(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  QWidget* focus = window.window()->focusWidget();
  QTest::keyClick(focus != nullptr ? focus : window.window(), key, modifiers);
}

inline void type(QWidget& widget, const char* text) { QTest::keyClicks(&widget, QString::fromUtf8(text)); }

/// Shows the window and waits until it is on the screen and has the keyboard.
inline void showActive(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

}  // namespace corvane::test
