// What was made last is kept for when it is wanted again: texts that are laid out, shapes that are drawn.
#pragma once

#include <QCache>
#include <QCoreApplication>
#include <utility>

namespace corvane::qt {

/// The value for the key, made anew where it is not among those that were used last. A key has a `qHash`. The
/// values go with the application, before the fonts and pictures that they hold; the answer lasts until the
/// next one of its kind is asked for.
template <typename Value, typename Key, typename Make>
const Value& kept(const Key& key, int most, const Make& make) {
  static QCache<Key, Value>* values = nullptr;
  if (values == nullptr) {
    values = new QCache<Key, Value>(most);
    qAddPostRoutine([] { delete std::exchange(values, nullptr); });
  }
  if (const Value* known = values->object(key)) return *known;
  auto* made = new Value(make());
  values->insert(key, made);
  return *made;
}

}  // namespace corvane::qt
