// What assistive technology does with the window: finds things by what they are called, acts on them, and
// hears what they tell. All of it goes through the toolkit's own interface for that, within the process.
#pragma once

#include <QAccessible>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

namespace corvane::test {

/// The interface of the widget; never null.
[[nodiscard]] QAccessibleInterface& accessible(QObject& object);
[[nodiscard]] QString nameOf(QAccessibleInterface& thing);
/// What a screen reader calls the widget.
[[nodiscard]] inline QString spokenName(QWidget& widget) { return nameOf(accessible(widget)); }
/// Everything below the thing that can be perceived, in order, the thing itself first.
[[nodiscard]] std::vector<QAccessibleInterface*> everythingBelow(QAccessibleInterface& thing);
/// The thing below with this role and name; throws where there is none, or more than one.
[[nodiscard]] QAccessibleInterface& thingCalled(QAccessibleInterface& below, QAccessible::Role role,
                                                const QString& name);
[[nodiscard]] QStringList actionsOf(QAccessibleInterface& thing);
/// Does the action, which the thing must offer, and waits until what it has started is done.
void act(QAccessibleInterface& thing, const QString& action);
inline void pressThing(QAccessibleInterface& thing) { act(thing, QAccessibleActionInterface::pressAction()); }
inline void toggleThing(QAccessibleInterface& thing) {
  act(thing, QAccessibleActionInterface::toggleAction());
}

/// Assistive technology that runs while this lives, and what it has heard.
class Listener {
 public:
  struct Heard {
    QAccessible::Event event;
    QPointer<QObject> object;  // null for what is no widget
    QString name;
  };
  Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;
  ~Listener();

  /// The names in the interface file of the widgets that have told this.
  [[nodiscard]] QStringList namesOf(QAccessible::Event event) const;
  /// What all was called that has told this.
  [[nodiscard]] QStringList toldNames(QAccessible::Event event) const;
  void forget() { heard.clear(); }

  std::vector<Heard> heard;
};

}  // namespace corvane::test
