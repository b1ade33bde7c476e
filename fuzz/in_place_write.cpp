// Replaces a settings file by another while pages fail, the disk is full and writes are short. The first six
// bytes say what goes wrong and how large the lists are, then stand the old file and, behind a line, the new
// list. After every page that is written the file is one of the two lists; after a failure it is the old one
// byte for byte, or the new list.
#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "posix/InPlaceWrite.h"
#include "support/BinaryFile.h"
#include "support/FaultyFile.h"
#include "values/PropertyListCodec.h"

namespace {

using namespace corvane;
using test::FaultyFile;

void require(bool holds) {
  if (!holds) std::abort();
}

struct Plan {
  std::size_t failing;
  std::size_t room;
  std::size_t oldPadding;
  std::size_t newPadding;
  bool canReserve;
  bool shortWrites;
  bool oldIsBinary;
  bool oldIsAsGiven;
};

Plan planOf(std::string_view bytes) {
  const auto at = [bytes](std::size_t i) {
    return static_cast<std::size_t>(static_cast<std::uint8_t>(bytes[i]));
  };
  return {.failing = at(0) < 128 ? at(0) : FaultyFile::kNever,
          .room = at(1) < 64 ? at(1) * 1024 : FaultyFile::kNever,
          .oldPadding = at(2) * 80,
          .newPadding = at(3) * 80,
          .canReserve = (at(4) & 1U) != 0,
          .shortWrites = (at(4) & 2U) != 0,
          .oldIsBinary = (at(4) & 4U) != 0,
          .oldIsAsGiven = (at(4) & 8U) != 0};
}

/// A list of about the size around a text.
Dictionary padded(std::string_view text, std::size_t size) {
  std::string ascii;
  for (const char c : text.substr(0, 2000)) ascii += static_cast<char>(c & 0x7F);
  return Dictionary::make(
      {{"Text", PropertyList::string(ascii)}, {"Size", PropertyList::string(std::string(size, '-'))}});
}

/// Whether the table of a binary list fits the page that moves it.
bool hasSmallTable(std::string_view old) {
  if (!old.starts_with("bplist0") || old.size() < 40) return true;
  std::uint64_t objects = 0;
  for (const char byte : old.substr(old.size() - 24, 8))
    objects = objects << 8 | static_cast<std::uint8_t>(byte);
  const auto offsetSize = std::max<std::size_t>(4, static_cast<std::uint8_t>(old[old.size() - 26]));
  return objects * offsetSize <= FaultyFile::kPage - 32;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t header = 6;
  if (size < header || size > 40000) return 0;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const Plan plan = planOf(input);
  const std::string_view body = input.substr(header);
  const std::size_t middle = std::min(body.find("\n--\n"), body.size());
  const std::string_view first = body.substr(0, middle);
  const std::string_view second = body.substr(std::min(body.size(), middle + 4));

  std::string old(first);
  if (!plan.oldIsAsGiven) {
    const Dictionary values = padded(first, plan.oldPadding);
    old = plan.oldIsBinary ? test::BinaryWriter::bytesOf(values) : writeXmlPropertyList(values).value_or("");
  }
  const PropertyList given = readPropertyList(second);
  const Dictionary values = padded(given ? "" : second, plan.newPadding);
  if (given) values.asDictionary().set("Given", given);
  const auto fresh = writeXmlPropertyList(values);
  if (!fresh) return 0;  // nested too deeply with the rest
  const PropertyList before = readPropertyList(old);
  const PropertyList after = readPropertyList(*fresh);
  require(static_cast<bool>(after));

  FaultyFile file(old);
  file.failing = plan.failing;
  file.room = std::max(plan.room, old.size());
  file.canReserve = plan.canReserve;
  file.shortWrites = plan.shortWrites;
  bool inSteps = true;
  file.onChange = [&] {
    if (!before || !inSteps) return;
    const auto now = readPropertyList(file.contents);
    require(now == before || now == after);
  };
  const int error = replaceContents(file, old, *fresh, [&](std::string_view step) {
    // Written by one call: whole only where that stays within a page, or is not cut off.
    if (step == "reserve") inSteps = fresh->size() <= FaultyFile::kPage;
    if (step == "append") inSteps = hasSmallTable(old);
  });
  if (error == 0) {
    require(readPropertyList(file.contents) == after);
  } else {
    // Where the disk is full and then fails to cut what was appended, that stays, and does not matter.
    const bool failedTwice = error == ENOSPC && file.acts > plan.failing;
    const auto now = readPropertyList(file.contents);
    require(file.contents == old || now == after || (failedTwice && before && now == before));
  }
  return 0;
}
