// The codec beside libplist, on values that libplist handles well: texts, integers, booleans, dates of this
// age.
#include <gtest/gtest.h>

#include "values/PropertyListCodec.h"
#include "values/RandomPropertyList.h"

#ifdef CORVANE_HAS_LIBPLIST
#include <cstdlib>
#include <memory>

#include <plist/plist.h>

namespace corvane {
namespace {

using Tree = std::unique_ptr<void, decltype(&plist_free)>;
using Buffer = std::unique_ptr<char, decltype(&std::free)>;

PropertyList valueOf(plist_t node);

PropertyList dictionaryOf(plist_t node) {
  auto result = Dictionary::make();
  plist_dict_iter iterator = nullptr;
  plist_dict_new_iter(node, &iterator);
  while (true) {
    char* key = nullptr;
    plist_t value = nullptr;
    plist_dict_next_item(node, iterator, &key, &value);
    const Buffer freed(key, &std::free);
    if (value == nullptr) break;
    result.set(key, valueOf(value));
  }
  std::free(iterator);
  return result;
}

PropertyList arrayOf(plist_t node) {
  auto result = Array::make();
  for (std::uint32_t i = 0; i < plist_array_get_size(node); ++i)
    result.append(valueOf(plist_array_get_item(node, i)));
  return result;
}

PropertyList valueOf(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_DICT:
      return dictionaryOf(node);
    case PLIST_ARRAY:
      return arrayOf(node);
    case PLIST_BOOLEAN: {
      std::uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return PropertyList::boolean(value != 0);
    }
    case PLIST_UINT: {
      std::uint64_t value = 0;
      plist_get_uint_val(node, &value);
      return PropertyList::integer(static_cast<std::int64_t>(value));
    }
    case PLIST_REAL: {
      double value = 0;
      plist_get_real_val(node, &value);
      return PropertyList::real(value);
    }
    case PLIST_STRING: {
      char* text = nullptr;
      plist_get_string_val(node, &text);
      const Buffer freed(text, &std::free);
      return PropertyList::string(text);
    }
    case PLIST_DATE: {
      std::int32_t seconds = 0;
      std::int32_t microseconds = 0;
      plist_get_date_val(node, &seconds, &microseconds);
      return PropertyList::date({978307200.0 + seconds + microseconds / 1e6});
    }
    case PLIST_DATA: {
      char* bytes = nullptr;
      std::uint64_t size = 0;
      plist_get_data_val(node, &bytes, &size);
      const Buffer freed(bytes, &std::free);
      return PropertyList::data(PropertyList::Bytes(bytes, bytes + size));
    }
    default:
      return {};
  }
}

template <typename Writing>
std::string bytesOf(Writing writing, plist_t tree) {
  char* bytes = nullptr;
  std::uint32_t size = 0;
  writing(tree, &bytes, &size);
  const Buffer freed(bytes, &std::free);
  return {bytes, size};
}

TEST(PropertyListBesideLibplist, BothReadAndWriteTheSameValues) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    const PropertyList value = RandomPropertyList(seed).dictionary();
    const auto written = writeXmlPropertyList(value);
    ASSERT_TRUE(written) << seed;
    plist_t parsed = nullptr;
    plist_from_xml(written->data(), static_cast<std::uint32_t>(written->size()), &parsed);
    const Tree tree(parsed, &plist_free);
    ASSERT_TRUE(tree) << seed;
    ASSERT_EQ(valueOf(tree.get()), value) << "read by libplist, " << seed;
    ASSERT_EQ(readPropertyList(bytesOf(plist_to_xml, tree.get())), value)
        << "XML written by libplist, " << seed;
    ASSERT_EQ(readPropertyList(bytesOf(plist_to_bin, tree.get())), value)
        << "binary written by libplist, " << seed;
  }
}

}  // namespace
}  // namespace corvane

#else

TEST(PropertyListBesideLibplist, BothReadAndWriteTheSameValues) {
  GTEST_SKIP() << "NOT COMPARED: built without libplist (Debian package libplist-dev)";
}

#endif
