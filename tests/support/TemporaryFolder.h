// A folder of its own for one test, removed with everything in it at the end.
#pragma once

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

#include <gtest/gtest.h>

namespace corvane::test {

class TemporaryFolder {
 public:
  explicit TemporaryFolder(const std::filesystem::path& base = std::filesystem::temp_directory_path()) {
    std::string name = (base / "corvane-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) ADD_FAILURE() << "no temporary folder: " << name;
    // Without links in it, as the programs under test may report it.
    path_ = std::filesystem::canonical(name).string();
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  /// Where thousands of files cost no disk time, if there is such a place.
  [[nodiscard]] static std::filesystem::path inMemory() {
    const std::filesystem::path shared = "/dev/shm";
    return std::filesystem::exists(shared) ? shared : std::filesystem::temp_directory_path();
  }

  [[nodiscard]] const std::string& path() const { return path_; }
  /// The absolute path of something in the folder.
  [[nodiscard]] std::string operator/(const std::string& relative) const { return path_ + "/" + relative; }

  /// Makes the folder, with its parents; answers with its absolute path.
  std::string makeFolder(const std::string& relative) const {
    std::filesystem::create_directories(*this / relative);
    return *this / relative;
  }
  /// Writes the file, with its parent folders; answers with its absolute path.
  std::string writeFile(const std::string& relative, const std::string& contents = {}) const {
    const std::filesystem::path file = *this / relative;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary | std::ios::trunc) << contents;
    return file.string();
  }
  [[nodiscard]] std::string readFile(const std::string& relative) const {
    std::ostringstream contents;
    contents << std::ifstream(*this / relative, std::ios::binary).rdbuf();
    return contents.str();
  }

 private:
  std::string path_;
};

}  // namespace corvane::test
