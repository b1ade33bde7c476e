// Acts of a person at the window, and waiting for what they lead to. Nothing here sleeps: a wait ends as soon
// as its condition holds.
#pragma once

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <source_location>
#include <string>

#include <gtest/gtest.h>

#include "support/Patience.h"

namespace corvane::test {

/// Runs the event loop until the condition holds; false when it never does.
template <typename Condition>
[[nodiscard]] bool eventually(Condition condition) {
  return QTest::qWaitFor(condition, kHangMilliseconds);
}

/// The widget with this object name anywhere below the window. Where there is none the test fails and ends
/// here.
template <typename Widget = QWidget>
[[nodiscard]] Widget& find(const QWidget& window, const char* name,
                           std::source_location asked = std::source_location::current()) {
  auto* widget = window.findChild<Widget*>(QString::fromLatin1(name));
  if (widget != nullptr) return *widget;
  const std::string missing =
      std::string("there is no ") + Widget::staticMetaObject.className() + " with the name \"" + name + "\"";
  ADD_FAILURE_AT(asked.file_name(), static_cast<int>(asked.line())) << missing;
  throw ::testing::AssertionException({::testing::TestPartResult::kFatalFailure, asked.file_name(),
                                       static_cast<int>(asked.line()), missing.c_str()});
}

inline void click(QWidget& widget, Qt::KeyboardModifiers modifiers = {}) {
  QTest::mouseClick(&widget, Qt::LeftButton, modifiers);
}

/// Moves the mouse to this point of the widget. Told by the window, not by the platform's cursor: that of the
/// offscreen platform does not reach all of a window that has more pixels than points.
inline void moveMouse(const QWidget& widget, const QPoint& point) {
  QTest::mouseMove(widget.window()->windowHandle(), widget.mapTo(widget.window(), point));
}

/// Presses a key where the keyboard focus of the widget's window is.
inline void press(const QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
  QWidget* focus = window.window()->focusWidget();
  QTest::keyClick(focus != nullptr ? focus : window.window(), key, modifiers);
}

/// A key that was pressed before and is still held down.
inline void hold(const QWidget& window, Qt::Key key) {
  QWidget* focus = window.window()->focusWidget();
  QWidget* receiver = focus != nullptr ? focus : window.window();
  const QString text = key == Qt::Key_Space ? QStringLiteral(" ") : QString();
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, key, {}, text, true);
    QApplication::sendEvent(receiver, &event);
  }
}

inline void type(QWidget& widget, const char* text) { QTest::keyClicks(&widget, QString::fromUtf8(text)); }

/// Does an act that opens a panel with an event loop of its own and answers the panel from inside of that;
/// says whether there was one.
template <typename Panel, typename Answer>
[[nodiscard]] bool answerPanel(const std::function<void()>& act, Answer answer) {
  bool seen = false;
  QElapsedTimer sinceAnswer;
  QTimer watch;
  QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
    auto* panel = qobject_cast<Panel*>(QApplication::activeModalWidget());
    if (panel == nullptr || !panel->isVisible()) return;
    if (!seen) {
      seen = true;
      answer(*panel);
      sinceAnswer.start();
    } else if (sinceAnswer.isValid() && sinceAnswer.hasExpired(kHangMilliseconds)) {
      ADD_FAILURE() << "the panel does not close after the answer";
      panel->reject();
    }
  });
  watch.start(0);
  act();
  return seen;
}

/// Shows the window and waits until it is on the screen and has the keyboard.
inline void showActive(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window, kHangMilliseconds));
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window, kHangMilliseconds));
}

}  // namespace corvane::test
