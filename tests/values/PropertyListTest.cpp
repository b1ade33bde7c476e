#include <cmath>
#include <limits>
#include <map>

#include <gtest/gtest.h>

#include "values/PropertyList.h"

namespace corvane {
namespace {

using Kind = PropertyList::Kind;

TEST(PropertyList, AnEmptyHandleHoldsNothingAndChangingItDoesNothing) {
  PropertyList nothing;
  EXPECT_FALSE(nothing);
  EXPECT_EQ(nothing.kind(), Kind::Nothing);
  EXPECT_EQ(nothing.asString(), nullptr);
  EXPECT_EQ(nothing.asInteger(), std::nullopt);
  EXPECT_FALSE(nothing.deepCopy());
  Dictionary dictionary;
  dictionary.set("a", PropertyList::integer(1));
  dictionary.remove("a");
  EXPECT_FALSE(dictionary);
  EXPECT_TRUE(dictionary.empty());
  EXPECT_TRUE(dictionary.entries().empty());
  EXPECT_FALSE(dictionary.value("a"));
  EXPECT_FALSE(dictionary.shallowCopy());
  Array array;
  array.append(PropertyList::integer(1));
  array.insert(0, PropertyList::integer(1));
  array.removeAt(0);
  array.replaceAll({PropertyList::integer(1)});
  EXPECT_EQ(array.removeAllEqualTo(PropertyList::integer(1)), 0u);
  EXPECT_FALSE(array);
  EXPECT_TRUE(array.elements().empty());
  EXPECT_FALSE(array.last());
  EXPECT_FALSE(array.shallowCopy());
}

TEST(PropertyList, AValueAnswersOnlyAsItsOwnKind) {
  const PropertyList values[] = {
      Dictionary::make(),       Array::make(),           PropertyList::string("s"),
      PropertyList::integer(1), PropertyList::real(1),   PropertyList::boolean(true),
      PropertyList::date({1}),  PropertyList::data({1}),
  };
  const Kind kinds[] = {Kind::Dictionary, Kind::Array,   Kind::String, Kind::Integer,
                        Kind::Real,       Kind::Boolean, Kind::Date,   Kind::Data};
  for (std::size_t i = 0; i < std::size(values); ++i) {
    const auto& value = values[i];
    const Kind kind = kinds[i];
    EXPECT_EQ(value.kind(), kind);
    EXPECT_EQ(bool(value.asDictionary()), kind == Kind::Dictionary);
    EXPECT_EQ(bool(value.asArray()), kind == Kind::Array);
    EXPECT_EQ(value.asString() != nullptr, kind == Kind::String);
    EXPECT_EQ(value.asInteger().has_value(), kind == Kind::Integer);
    EXPECT_EQ(value.asUnsignedInteger().has_value(), kind == Kind::Integer);
    EXPECT_EQ(value.asReal().has_value(), kind == Kind::Real);
    EXPECT_EQ(value.asBoolean().has_value(), kind == Kind::Boolean);
    EXPECT_EQ(value.asDate().has_value(), kind == Kind::Date);
    EXPECT_EQ(value.asData() != nullptr, kind == Kind::Data);
  }
}

TEST(PropertyList, IntegersCoverTheSignedAndTheUnsignedRange) {
  constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
  constexpr auto highest = std::numeric_limits<std::int64_t>::max();
  constexpr auto highestUnsigned = std::numeric_limits<std::uint64_t>::max();
  EXPECT_EQ(PropertyList::integer(lowest).asInteger(), lowest);
  EXPECT_EQ(PropertyList::integer(lowest).asUnsignedInteger(), std::nullopt);
  EXPECT_EQ(PropertyList::unsignedInteger(highestUnsigned).asUnsignedInteger(), highestUnsigned);
  EXPECT_EQ(PropertyList::unsignedInteger(highestUnsigned).asInteger(), std::nullopt);
  EXPECT_EQ(PropertyList::unsignedInteger(std::uint64_t(highest)).asInteger(), highest);
  EXPECT_EQ(PropertyList::unsignedInteger(5), PropertyList::integer(5));
  EXPECT_NE(PropertyList::unsignedInteger(highestUnsigned), PropertyList::integer(-1));
}

TEST(PropertyList, CopyingAHandleSharesTheObjectAndMakingNeverDoes) {
  const auto one = PropertyList::string("same");
  const auto shared = one;  // NOLINT(performance-unnecessary-copy-initialization): the copy is the subject
  const auto other = PropertyList::string("same");
  EXPECT_TRUE(shared.isSameObject(one));
  EXPECT_FALSE(other.isSameObject(one));
  EXPECT_EQ(other, one);
  EXPECT_TRUE(PropertyList().isSameObject(PropertyList()));
  EXPECT_FALSE(PropertyList::boolean(true).isSameObject(PropertyList::boolean(true)));
}

TEST(PropertyList, ContainersAreMutableThroughEveryHandle) {
  auto dictionary = Dictionary::make();
  const PropertyList held = dictionary;
  dictionary.set("key", PropertyList::integer(1));
  EXPECT_EQ(held.asDictionary().value("key"), PropertyList::integer(1));
  EXPECT_TRUE(held.isSameObject(dictionary));
}

TEST(PropertyList, AHandleCanBeAssignedFromWithinTheValueItHolds) {
  PropertyList value = Array::make({Array::make({PropertyList::string("inner")})});
  value = value.asArray().elements()[0];
  value = value.asArray().at(0);
  EXPECT_EQ(value, PropertyList::string("inner"));
  auto& same = value;
  value = same;
  EXPECT_EQ(value, PropertyList::string("inner"));
  value = std::move(same);
  EXPECT_EQ(value, PropertyList::string("inner"));
}

TEST(PropertyList, EqualityIsByKindAndContent) {
  const PropertyList different[] = {
      PropertyList(),
      PropertyList::boolean(true),
      PropertyList::boolean(false),
      PropertyList::integer(1),
      PropertyList::integer(2),
      PropertyList::real(1),
      PropertyList::real(std::nan("")),
      PropertyList::string("1"),
      PropertyList::string(""),
      PropertyList::date({1}),
      PropertyList::date({1.5}),
      PropertyList::data({1}),
      PropertyList::data({}),
      Array::make(),
      Array::make({PropertyList::integer(1)}),
      Array::make({PropertyList::integer(1), PropertyList::integer(1)}),
      Array::make({PropertyList::real(1)}),
      Array::make({PropertyList()}),
      Dictionary::make(),
      Dictionary::make({{"a", PropertyList::integer(1)}}),
      Dictionary::make({{"b", PropertyList::integer(1)}}),
      Dictionary::make({{"a", PropertyList::integer(2)}}),
      Dictionary::make({{"a", Array::make({Dictionary::make({{"x", PropertyList::integer(2)}})})}}),
      Dictionary::make({{"a", Array::make({Dictionary::make({{"x", PropertyList::integer(3)}})})}}),
  };
  for (std::size_t i = 0; i < std::size(different); ++i) {
    for (std::size_t j = 0; j < std::size(different); ++j) {
      EXPECT_EQ(different[i] == different[j], i == j) << i << ", " << j;
      EXPECT_EQ(different[i].deepCopy() == different[j], i == j) << i << ", " << j;
    }
  }
}

TEST(PropertyList, ADeepCopySharesNoObject) {
  const auto inner = Dictionary::make({{"k", PropertyList::string("v")}});
  const auto outer = Array::make({inner, PropertyList::integer(3), inner});
  const auto copy = outer.deepCopy().asArray();
  EXPECT_EQ(copy, outer);
  EXPECT_FALSE(copy.isSameObject(outer));
  EXPECT_FALSE(copy.at(0).isSameObject(outer.at(0)));
  EXPECT_FALSE(copy.at(1).isSameObject(outer.at(1)));
  copy.at(0).asDictionary().set("k", PropertyList::string("changed"));
  EXPECT_EQ(*inner.string("k"), "v");
}

TEST(PropertyList, VeryDeepValuesAreCopiedComparedAndFreedWithoutExhaustingTheStack) {
  const auto nested = [](PropertyList innermost) {
    for (int i = 0; i < 1'000'000; ++i) {
      innermost = i % 2 == 0 ? PropertyList(Array::make({innermost}))
                             : PropertyList(Dictionary::make({{"k", innermost}}));
    }
    return innermost;
  };
  const auto one = nested(PropertyList::integer(1));
  const auto copy = one.deepCopy();
  EXPECT_EQ(copy, one);
  EXPECT_NE(one, nested(PropertyList::integer(2)));
}

TEST(Array, ElementsAreReadInsertedAndRemovedByPosition) {
  auto array = Array::make({PropertyList::string("a"), PropertyList::string("b")});
  array.append(PropertyList::string("c"));
  array.insert(0, PropertyList::string("first"));
  array.insert(99, PropertyList::string("last"));
  array.removeAt(1);
  array.removeAt(99);
  const auto expected = Array::make({PropertyList::string("first"), PropertyList::string("b"),
                                     PropertyList::string("c"), PropertyList::string("last")});
  EXPECT_EQ(array, expected);
  EXPECT_EQ(array.size(), 4u);
  EXPECT_EQ(array.last(), PropertyList::string("last"));
  EXPECT_FALSE(array.at(4));
}

TEST(Array, ContainingAndRemovingGoByEquality) {
  auto array = Array::make({PropertyList::string("a"), PropertyList::integer(1), PropertyList::string("a")});
  EXPECT_TRUE(array.contains(PropertyList::string("a")));
  EXPECT_FALSE(array.contains(PropertyList::real(1)));
  EXPECT_EQ(array.removeAllEqualTo(array.elements()[0]), 2u);
  EXPECT_EQ(array, Array::make({PropertyList::integer(1)}));
  EXPECT_EQ(array.removeAllEqualTo(PropertyList::string("a")), 0u);
}

TEST(Array, AShallowCopyIsAnotherArrayOfTheSameObjects) {
  const auto array = Array::make({Array::make()});
  auto copy = array.shallowCopy();
  EXPECT_FALSE(copy.isSameObject(array));
  EXPECT_TRUE(copy.at(0).isSameObject(array.at(0)));
  copy.append(PropertyList::integer(1));
  EXPECT_EQ(array.size(), 1u);
}

TEST(Dictionary, KeysAreWalkedInUtf16CodeUnitOrder) {
  // In UTF-8 byte order the last two would stand the other way round: the emoji is a pair of surrogates in
  // UTF-16.
  const std::vector<std::string> ordered = {"",
                                            "A",
                                            "AA",
                                            "B",
                                            "a",
                                            "\xC3\xA9",
                                            "\xEA\x99\x80",
                                            "\xF0\x9F\x98\x80",
                                            "\xF0\x9F\x98\x80z",
                                            "\xEE\x80\x80",
                                            "\xEF\xBF\xBD"};
  auto dictionary = Dictionary::make();
  for (std::size_t i = 0; i < ordered.size(); ++i) {
    dictionary.set(ordered[(i * 7) % ordered.size()], PropertyList::integer(1));
  }
  EXPECT_EQ(dictionary.keys(), ordered);
}

TEST(Dictionary, SettingReplacesAndSettingNothingRemoves) {
  auto dictionary = Dictionary::make({{"a", PropertyList::integer(1)}, {"a", PropertyList::integer(2)}});
  EXPECT_EQ(dictionary.size(), 1u);
  EXPECT_EQ(dictionary.value("a"), PropertyList::integer(2));
  dictionary.set("a", PropertyList::integer(3));
  EXPECT_EQ(dictionary.value("a"), PropertyList::integer(3));
  dictionary.set("a", PropertyList());
  EXPECT_FALSE(dictionary.contains("a"));
  dictionary.remove("absent");
  EXPECT_TRUE(dictionary.empty());
}

TEST(Dictionary, KeysMayGoFromEitherEndUntilNoneIsLeft) {
  auto dictionary = Dictionary::make();
  dictionary.set("b", PropertyList::integer(1));
  dictionary.set("a", PropertyList::integer(2));
  dictionary.remove("b");
  dictionary.remove("a");
  EXPECT_TRUE(dictionary.empty());
  dictionary.set("c", PropertyList::integer(3));
  EXPECT_EQ(dictionary.keys(), std::vector<std::string>{"c"});
  EXPECT_EQ(dictionary.value("c"), PropertyList::integer(3));
}

TEST(Dictionary, TypedLookUpsTreatAnotherTypeAsAbsent) {
  const auto dictionary = Dictionary::make(
      {{"s", PropertyList::string("text")}, {"d", Dictionary::make()}, {"a", Array::make()}});
  EXPECT_EQ(*dictionary.string("s"), "text");
  EXPECT_TRUE(dictionary.dictionary("d"));
  EXPECT_TRUE(dictionary.array("a"));
  for (const auto* key : {"d", "a", "absent"}) EXPECT_EQ(dictionary.string(key), nullptr);
  for (const auto* key : {"s", "a", "absent"}) EXPECT_FALSE(dictionary.dictionary(key));
  for (const auto* key : {"s", "d", "absent"}) EXPECT_FALSE(dictionary.array(key));
}

TEST(Dictionary, FromEntriesSortsAndKeepsTheChosenOneOfEqualKeys) {
  const std::vector<Dictionary::Entry> entries = {{"b", PropertyList::integer(1)},
                                                  {"a", PropertyList::integer(2)},
                                                  {"b", PropertyList::integer(3)},
                                                  {"b", PropertyList::integer(4)}};
  const auto expect = [](std::int64_t b) {
    return Dictionary::make({{"a", PropertyList::integer(2)}, {"b", PropertyList::integer(b)}});
  };
  EXPECT_EQ(Dictionary::fromEntries(entries, Dictionary::Duplicates::FirstWins), expect(1));
  EXPECT_EQ(Dictionary::fromEntries(entries, Dictionary::Duplicates::LastWins), expect(4));
}

TEST(Dictionary, KeysThatDifferLateAreOrderedByTheirDifferenceAlone) {
  const std::string same = "Some_Long_Beginning_";  // longer than what is compared at one go
  Dictionary filled = Dictionary::make();
  for (const char* end :
       {"\xEF\xBF\xBD", "\xF0\x9F\x92\xBE", "b", "\xEE\x80\x80", "", "\xED\x9F\xBF", "aa", "a"}) {
    filled.set(same + end, PropertyList::boolean(true));
  }
  EXPECT_EQ(filled.keys(), (std::vector<std::string>{same, same + "a", same + "aa", same + "b",
                                                     same + "\xED\x9F\xBF", same + "\xF0\x9F\x92\xBE",
                                                     same + "\xEE\x80\x80", same + "\xEF\xBF\xBD"}));
}

TEST(Dictionary, SettingAllAddsAndReplacesAndKeepsTheRest) {
  auto own = Dictionary::make();
  for (const char* key : {"d", "b", "f", "a"}) own.set(key, PropertyList::string("old"));  // in no order
  const auto other = Dictionary::make({{"c", PropertyList::string("new")},
                                       {"b", PropertyList::string("new")},
                                       {"z", PropertyList::string("new")},
                                       {"A", PropertyList::string("new")}});
  own.setAll(other);
  EXPECT_EQ(own.keys(), (std::vector<std::string>{"A", "a", "b", "c", "d", "f", "z"}));
  for (const char* key : {"A", "b", "c", "z"})
    EXPECT_TRUE(own.value(key).isSameObject(other.value(key))) << key;
  for (const char* key : {"a", "d", "f"}) EXPECT_EQ(own.value(key), PropertyList::string("old")) << key;
  EXPECT_EQ(other.size(), 4U);

  const auto before = own.shallowCopy();
  own.setAll(own);
  own.setAll(Dictionary());
  EXPECT_EQ(own, before);
  Dictionary nothing;
  nothing.setAll(other);
  EXPECT_FALSE(nothing);
}

TEST(Dictionary, AnyOrderOfChangesGivesTheSameAsAMap) {
  // A small generator of its own, so that the sequence is the same everywhere.
  std::uint32_t state = 12345;
  const auto random = [&state](std::uint32_t below) {
    state = state * 1664525u + 1013904223u;
    return (state >> 8) % below;
  };
  auto dictionary = Dictionary::make();
  std::map<std::string, std::int64_t> model;
  for (int step = 0; step < 20'000; ++step) {
    const std::string key = std::to_string(random(600));
    switch (random(6)) {
      case 0:
        dictionary.remove(key);
        model.erase(key);
        break;
      case 1:
        ASSERT_EQ(dictionary.contains(key), model.contains(key));
        break;
      default:
        dictionary.set(key, PropertyList::integer(step));
        model[key] = step;
    }
    ASSERT_EQ(dictionary.size(), model.size());
    if (step % 97 != 0) continue;
    auto expected = model.begin();
    for (const auto& [foundKey, value] : dictionary.entries()) {
      ASSERT_EQ(foundKey, expected->first);
      ASSERT_EQ(value.asInteger(), expected->second);
      ++expected;
    }
  }
}

TEST(Dictionary, ManyKeysInAnyOrderAreKept) {
  constexpr int count = 100'000;
  for (const int stride : {1, 99'999, 7'919}) {
    auto dictionary = Dictionary::make();
    for (int i = 0; i < count; ++i) {
      dictionary.set(std::to_string((static_cast<std::int64_t>(i) * stride) % count),
                     PropertyList::integer(i));
    }
    EXPECT_EQ(dictionary.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(dictionary.entries().front().first, "0");
    EXPECT_EQ(dictionary.entries().back().first, "99999");
  }
}

}  // namespace
}  // namespace corvane
