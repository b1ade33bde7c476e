#include "posix/InPlaceWrite.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <optional>

namespace corvane {
namespace {

using namespace std::string_view_literals;

/// One call, and further ones only after a short write. Answers 0 or the error.
int writeAll(WritableFile& file, std::string_view bytes, std::size_t offset) {
  while (!bytes.empty()) {
    const ssize_t written = file.write(bytes, offset);
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    if (written == 0) return EIO;
    bytes.remove_prefix(static_cast<std::size_t>(written));
    offset += static_cast<std::size_t>(written);
  }
  return 0;
}

/// A write that stays inside one aligned page of so many bytes is never cut off, neither by a kill nor by a
/// full disk.
constexpr std::size_t kPage = 4096;

/// What hides a part of an XML file from its readers.
struct Hiding {
  std::string_view begin;
  std::string_view end;
};
constexpr Hiding kHidings[] = {{"<!--", "-->"}, {"<?p ", "?>"}};

constexpr std::string_view kXmlBegin = "<?xml";
constexpr std::string_view kBinarySignature = "bplist0";
constexpr std::size_t kTrailerSize = 32;

void step(const StepObserver& before, std::string_view name) {
  if (before) before(name);
}

/// A file system that cannot reserve (the Mac's among them) is asked again by the writes themselves.
int reserve(WritableFile& file, std::size_t size) {
  const int error = file.reserve(size);
  return error == EOPNOTSUPP || error == ENOSYS || error == EINTR ? 0 : error;
}

std::uint64_t bigEndian(std::string_view bytes) {
  std::uint64_t value = 0;
  for (const char byte : bytes) value = value << 8 | static_cast<std::uint8_t>(byte);
  return value;
}
void appendBigEndian(std::string& bytes, std::uint64_t value, std::size_t size) {
  for (std::size_t i = size; i-- > 0;) bytes += static_cast<char>(i < 8 ? value >> 8 * i & 0xFF : 0);
}

/// The end of a binary list: where each object stands, and where that is written.
struct BinaryEnd {
  std::string_view table;
  std::string_view trailer;
  std::size_t offsetSize = 0;

  /// Nothing when the contents are no binary list.
  static std::optional<BinaryEnd> of(std::string_view contents) {
    if (!contents.starts_with(kBinarySignature) || contents.size() < 8 + kTrailerSize) return std::nullopt;
    BinaryEnd end;
    end.trailer = contents.substr(contents.size() - kTrailerSize);
    end.offsetSize = static_cast<std::uint8_t>(end.trailer[6]);
    const std::uint64_t start = bigEndian(end.trailer.substr(24));
    if (end.offsetSize == 0 || start >= contents.size() - kTrailerSize) return std::nullopt;
    end.table = contents.substr(start, contents.size() - kTrailerSize - start);
    return end.table.size() % end.offsetSize == 0 ? std::optional(end) : std::nullopt;
  }

  /// The same end for a list that has grown to `size` bytes, with offsets that reach as far.
  [[nodiscard]] std::string movedTo(std::size_t size) const {
    std::size_t wide = offsetSize;
    while (wide < sizeof size && size >> (8 * wide) != 0) ++wide;
    std::string end;
    for (std::size_t at = 0; at < table.size(); at += offsetSize) {
      appendBigEndian(end, bigEndian(table.substr(at, offsetSize)), wide);
    }
    const std::size_t start = size - kTrailerSize - end.size();
    end += trailer.substr(0, 6);
    appendBigEndian(end, wide, 1);
    end += trailer.substr(7, 17);
    appendBigEndian(end, start, 8);
    return end;
  }
};

/// How a file goes from the old list to the fresh one while it is one of them at every moment.
class Switch {
 public:
  /// Nothing when these contents do not allow it.
  static std::optional<Switch> between(std::string_view old, std::string_view fresh) {
    const std::size_t declarationEnd = fresh.find("?>");
    if (!fresh.starts_with(kXmlBegin) || declarationEnd == std::string_view::npos) return std::nullopt;
    // What is appended to UTF-16 would have to be UTF-16.
    if (old.starts_with("\xFE\xFF"sv) || old.starts_with("\xFF\xFE"sv) || old.substr(0, 4).find('\0') < 4)
      return std::nullopt;
    for (const Hiding& hiding : kHidings) {
      Switch plan(old, fresh, declarationEnd + 2, hiding);
      if (plan.head_.size() > kPage || plan.head_.size() > fresh.size()) continue;
      const auto hidden = old.substr(std::min(old.size(), plan.head_.size()));
      const auto shown = fresh.substr(declarationEnd + 2);
      if (hidden.find(hiding.end) == std::string_view::npos &&
          shown.find(hiding.end) == std::string_view::npos) {
        return plan;
      }
    }
    return std::nullopt;
  }

  [[nodiscard]] int carryOut(WritableFile& file, const StepObserver& before) const {
    step(before, "append");
    if (int error = append(file); error != 0) {
      (void)file.resize(old_.size());
      return error;
    }
    step(before, "switch");
    if (const int error = writeAll(file, head_, 0); error != 0) {
      (void)writeAll(file, old_.substr(0, head_.size()), 0);
      (void)file.resize(old_.size());
      return error;
    }
    // The file is the fresh list now. What follows only brings it to its final form: where that fails, the
    // list stays as it is.
    if (const int error = file.flush(); error != 0) return error;
    if (const auto error = tidyUp(file, before)) return *error;
    step(before, "cut");
    (void)file.resize(fresh_.size());
    step(before, "flush");
    return file.flush();
  }

 private:
  Switch(std::string_view old, std::string_view fresh, std::size_t declarationSize, Hiding hiding)
      : old_(old), fresh_(fresh), declarationSize_(declarationSize) {
    head_ = fresh.substr(0, declarationSize);
    head_ += hiding.begin;
    hiddenEnd_ = std::max({old.size(), fresh.size(), head_.size()});
    tail_.assign(hiddenEnd_ - old.size(), ' ');
    tail_ += hiding.end;
    tail_ += fresh.substr(declarationSize);
    if (const auto end = BinaryEnd::of(old)) {
      // The size only decides how wide the offsets are, which decides about the size.
      const std::size_t enough =
          end->movedTo(old.size() + tail_.size() + 9 * end->table.size() + 2 * kPage).size();
      const std::size_t size = (old.size() + tail_.size() + enough + kPage - 1) / kPage * kPage;
      binaryEnd_ = end->movedTo(size);
      tail_.resize(size - old.size() - binaryEnd_.size(), ' ');
    }
  }

  /// Puts the fresh list behind the old one, which remains what the file is.
  [[nodiscard]] int append(WritableFile& file) const {
    const std::size_t size = old_.size() + tail_.size() + binaryEnd_.size();
    if (const int error = reserve(file, size); error != 0) return error;
    // The end first: with it the file grows and is the binary list again in one. Unless the list has some
    // thousand objects, that is one page.
    if (const int error = writeAll(file, binaryEnd_, size - binaryEnd_.size()); error != 0) return error;
    if (const int error = writeAll(file, tail_, old_.size()); error != 0) return error;
    return file.flush();
  }

  /// Brings what is hidden to its final form, and takes away what hides it. Flushed in between, since a disk
  /// that loses power may have written the later part alone. Answers nothing when that is done, else the
  /// error: 0 where the list only keeps its present form.
  [[nodiscard]] std::optional<int> tidyUp(WritableFile& file, const StepObserver& before) const {
    // Blanks first: a piece of the one list beside a piece of the other could read as the end of the hidden
    // part.
    step(before, "blank");
    if (writeAll(file, std::string(hiddenEnd_ - head_.size(), ' '), head_.size()) != 0) return file.flush();
    if (const int error = file.flush(); error != 0) return error;
    step(before, "write");
    if (writeAll(file, fresh_.substr(head_.size()), head_.size()) != 0) return file.flush();
    if (const int error = file.flush(); error != 0) return error;
    step(before, "uncover");
    const auto uncovered = fresh_.substr(declarationSize_, head_.size() - declarationSize_);
    if (writeAll(file, uncovered, declarationSize_) != 0) return file.flush();
    if (const int error = file.flush(); error != 0) return error;
    return std::nullopt;
  }

  std::string_view old_;
  std::string_view fresh_;
  std::size_t declarationSize_;
  std::string head_;           // the fresh list's declaration, and what hides the rest
  std::size_t hiddenEnd_ = 0;  // where the fresh list goes on
  std::string tail_;           // what stands behind the old list while both are there
  std::string binaryEnd_;      // and behind that, where the old list is a binary one
};

/// Writes the whole by one call, with blanks over what is longer. Behind an XML list that fits one page the
/// rest does not matter until it is cut, and the call stays within the page.
int overwrite(WritableFile& file, const std::string& old, const std::string& fresh,
              const StepObserver& before) {
  std::string padded = fresh;
  const std::size_t covered = fresh.starts_with(kXmlBegin) ? std::min(old.size(), kPage) : old.size();
  padded.resize(std::max(fresh.size(), covered), ' ');
  step(before, "reserve");
  int error = reserve(file, padded.size());
  if (error != 0) return error;
  step(before, "write");
  error = writeAll(file, padded, 0);
  if (error != 0) (void)writeAll(file, old.substr(0, padded.size()), 0);
  step(before, "cut");
  const int cut = file.resize(error == 0 ? fresh.size() : old.size());
  step(before, "flush");
  const int flushed = file.flush();
  return error != 0 ? error : cut != 0 ? cut : flushed;
}

}  // namespace

int replaceContents(WritableFile& file, const std::string& old, const std::string& fresh,
                    const StepObserver& before) {
  if (fresh.size() > kPage) {
    if (const auto plan = Switch::between(old, fresh)) return plan->carryOut(file, before);
  }
  return overwrite(file, old, fresh, before);
}

}  // namespace corvane
