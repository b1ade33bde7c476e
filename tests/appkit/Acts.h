// Acts of a person at the pane, and waiting for what they lead to. Nothing here sleeps: a wait ends as soon
// as its condition holds. Acts are events that are put into the queue of the application.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#import "AppKit.h"

namespace corvane::test {

/// Handles events until the condition holds; false when it does not within a minute.
[[nodiscard]] bool eventually(const std::function<bool()>& condition);
/// Handles what is in the queue now and what that leads to at once.
void settle();

/// A press and a release of the mouse, at a point of the view or in the middle of it. Brings its window to
/// the front first.
void click(NSView* view, NSPoint point, NSUInteger modifiers = 0);
void click(NSView* view, NSUInteger modifiers = 0);
/// Presses a key where the keyboard of the window is.
void press(NSWindow* window, const char* key, NSUInteger modifiers = 0);
inline constexpr const char* kReturn = "\r";
inline constexpr const char* kEscape = "\x1b";
inline constexpr const char* kTab = "\t";
inline constexpr const char* kBackspace = "\x7f";
inline constexpr const char* kUp = "\xEF\x9C\x80";  // U+F700 and so on, in UTF-8
inline constexpr const char* kDown = "\xEF\x9C\x81";
inline constexpr const char* kLeft = "\xEF\x9C\x82";
inline constexpr const char* kRight = "\xEF\x9C\x83";
void type(NSWindow* window, const std::string& text);

using Answer = std::function<void(NSWindow*)>;
/// Does what opens a sheet or a panel with an event loop of its own, answers that from inside the loop, and
/// waits until it has gone; says whether there was one. Several answers are to panels one after another.
[[nodiscard]] bool answering(const std::function<void()>& act, std::vector<Answer> answers);
[[nodiscard]] bool answering(const std::function<void()>& act, Answer answer);
/// The answer is a click on the button with this title.
[[nodiscard]] bool answering(const std::function<void()>& act, const std::string& button);

/// The button with this title anywhere below the view; nil when there is none.
[[nodiscard]] NSButton* buttonTitled(NSView* view, const std::string& title);
/// All texts that can be seen below the view, one a line, from top to bottom.
[[nodiscard]] std::string textsIn(NSView* view);
/// What a control shows: the title of a button, the text of a field.
[[nodiscard]] std::string textOf(NSView* view);
/// The text that is being typed in the window; empty when nothing is.
[[nodiscard]] std::string typedText(NSWindow* window);
[[nodiscard]] bool isTyping(NSWindow* window);

/// With CORVANE_PICTURES=FOLDER in the environment, leaves a picture of the window there.
void picture(NSWindow* window, const std::string& name);

}  // namespace corvane::test
