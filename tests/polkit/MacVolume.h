// A Mac's volume with an installed client, laid out by root with the owners and modes of a Mac.
#pragma once

#include <string>
#include <string_view>

#include <sys/types.h>

namespace corvane::test {

class MacVolume {
 public:
  static constexpr gid_t kAdministrators = 80;  // "admin" on a Mac

  /// Makes the folders below the new folder `root`.
  explicit MacVolume(std::string root);

  [[nodiscard]] const std::string& root() const { return root_; }
  /// Where a path of the Mac lies here.
  [[nodiscard]] std::string operator/(std::string_view path) const { return root_ + std::string(path); }
  void folder(std::string_view path, mode_t mode = 0755) const;
  void link(std::string_view path, const std::string& to) const;
  void file(std::string_view path, std::string_view contents, mode_t mode = 0644, gid_t group = 0) const;

  [[nodiscard]] std::string contents(std::string_view path) const;
  /// "OWNER:GROUP MODE" of what stands at the path itself, e.g. "0:80 644"; "missing".
  [[nodiscard]] std::string rights(std::string_view path) const;

 private:
  std::string root_;
};

}  // namespace corvane::test
