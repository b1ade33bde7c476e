#include "Assistive.h"

#include <QAbstractButton>
#include <stdexcept>

#include <QtGui/private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

#include "Events.h"

namespace corvane::test {
namespace {

Listener* listening = nullptr;

void hear(QAccessibleEvent* event) {
  QAccessibleInterface* thing = event->accessibleInterface();
  listening->heard.push_back({event->type(), event->object(), thing != nullptr ? nameOf(*thing) : QString()});
}

/// The toolkit tells nothing as long as it thinks that nobody listens.
void setAssistiveTechnologyRuns(bool runs) {
  QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(runs);
}

void collect(QAccessibleInterface& thing, std::vector<QAccessibleInterface*>& all) {
  if (thing.state().invisible) return;
  all.push_back(&thing);
  for (int i = 0; i < thing.childCount(); ++i) {
    if (QAccessibleInterface* child = thing.child(i)) collect(*child, all);
  }
}

}  // namespace

QAccessibleInterface& accessible(QObject& object) {
  QAccessibleInterface* found = QAccessible::queryAccessibleInterface(&object);
  if (found == nullptr) throw std::runtime_error("a widget without an interface");
  return *found;
}

QString nameOf(QAccessibleInterface& thing) { return thing.text(QAccessible::Name); }

std::vector<QAccessibleInterface*> everythingBelow(QAccessibleInterface& thing) {
  std::vector<QAccessibleInterface*> all;
  collect(thing, all);
  return all;
}

QAccessibleInterface& thingCalled(QAccessibleInterface& below, QAccessible::Role role, const QString& name) {
  QAccessibleInterface* found = nullptr;
  for (QAccessibleInterface* thing : everythingBelow(below)) {
    if (thing->role() != role || nameOf(*thing) != name) continue;
    if (found != nullptr) throw std::runtime_error("two things are called " + name.toStdString());
    found = thing;
  }
  if (found == nullptr) throw std::runtime_error("nothing is called " + name.toStdString());
  return *found;
}

QStringList actionsOf(QAccessibleInterface& thing) {
  QAccessibleActionInterface* actions = thing.actionInterface();
  return actions != nullptr ? actions->actionNames() : QStringList();
}

void act(QAccessibleInterface& thing, const QString& action) {
  ASSERT_TRUE(actionsOf(thing).contains(action)) << nameOf(thing).toStdString() << " offers only "
                                                 << actionsOf(thing).join(QLatin1Char(' ')).toStdString();
  const QPointer<QAbstractButton> button = qobject_cast<QAbstractButton*>(thing.object());
  thing.actionInterface()->doAction(action);
  QApplication::processEvents();
  // A button that is pressed so goes down at first.
  EXPECT_TRUE(eventually([&] { return button.isNull() || !button->isDown(); }));
}

Listener::Listener() {
  listening = this;
  QAccessible::installUpdateHandler(hear);
  setAssistiveTechnologyRuns(true);
}

Listener::~Listener() {
  setAssistiveTechnologyRuns(false);
  QAccessible::installUpdateHandler(nullptr);
  listening = nullptr;
}

QStringList Listener::toldNames(QAccessible::Event event) const {
  QStringList names;
  for (const Heard& each : heard) {
    if (each.event == event) names << each.name;
  }
  return names;
}

QStringList Listener::namesOf(QAccessible::Event event) const {
  QStringList names;
  for (const Heard& each : heard) {
    if (each.event == event && each.object) names << each.object->objectName();
  }
  return names;
}

}  // namespace corvane::test
