// A small file system of folders, links and files, with watches, for tests of the bookkeeping of directory
// streams. Makes no events; the test hands them over in the order that it wants to see.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>

#include "platform/linux/FolderWatches.h"

namespace corvane::test {

class FakeFolderWatches : public FolderWatches {
 public:
  /// Makes a new folder, with its parents.
  void makeFolder(const std::string& path) {
    for (std::size_t slash = path.find('/', 1); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
      entries_.try_emplace(path.substr(0, slash), Node{Entry::Kind::Folder, ++lastNode_, {}});
    }
    entries_.insert_or_assign(path, Node{Entry::Kind::Folder, ++lastNode_, {}});
  }
  void makeFile(const std::string& path) { entries_[path] = {Entry::Kind::Other, ++lastNode_, {}}; }
  void makeLink(const std::string& path, const std::string& target) {
    entries_[path] = {Entry::Kind::Link, ++lastNode_, target};
  }
  void removeTree(const std::string& path) { takeTree(path); }
  void move(const std::string& from, const std::string& to) {
    for (auto& [below, node] : takeTree(from)) entries_[to + below] = node;
  }
  void swap(const std::string& one, const std::string& two) {
    const auto first = takeTree(one);
    move(two, one);
    for (const auto& [below, node] : first) entries_[two + below] = node;
  }

  /// The watch of the folder, or -1.
  [[nodiscard]] int watchOf(const std::string& path) const {
    const auto entry = entries_.find(resolved(path, Links::Follow));
    if (entry == entries_.end()) return -1;
    const auto watch = watches_.find(entry->second.node);
    return watch == watches_.end() ? -1 : watch->second;
  }
  [[nodiscard]] std::size_t watchCount() const { return watches_.size(); }

  std::size_t mostWatches = 1000;
  std::function<void(const std::string&)> beforeListing;  // something else happens while a folder is read

  AddOutcome add(const std::string& folder, Links links) override {
    const auto entry = entries_.find(resolved(folder, links));
    if (folder != "/" && (entry == entries_.end() || entry->second.kind != Entry::Kind::Folder)) return {};
    const int node = folder == "/" ? 0 : entry->second.node;
    if (watches_.count(node) == 0) {
      if (watches_.size() >= mostWatches) return {-1, true};
      watches_[node] = ++lastWatch_;
    }
    return {watches_[node], false};
  }
  void remove(int watch) override {
    std::erase_if(watches_, [watch](const auto& entry) { return entry.second == watch; });
  }
  std::optional<Listing> list(const std::string& folder) override {
    if (beforeListing) beforeListing(folder);
    const std::string real = resolved(folder, Links::Follow);
    if (real != "/" && entries_.count(real) == 0) return std::nullopt;
    Listing listing;
    const std::string prefix = entryPath(real, "");
    for (const auto& [path, node] : entries_) {
      if (path.compare(0, prefix.size(), prefix) != 0 || path.find('/', prefix.size()) != std::string::npos)
        continue;
      listing.empty = false;
      if (node.kind == Entry::Kind::Folder) listing.folders.push_back(path.substr(prefix.size()));
    }
    return listing;
  }
  Entry lookAt(const std::string& path) override {
    const auto entry = entries_.find(path);
    return entry == entries_.end() ? Entry{} : Entry{entry->second.kind, entry->second.target};
  }

 private:
  struct Node {
    Entry::Kind kind = Entry::Kind::Nothing;
    int node = 0;
    std::string target;
  };

  /// Links count only as a whole root here; that is where streams follow them.
  [[nodiscard]] std::string resolved(const std::string& path, Links links) const {
    for (const auto& [link, node] : entries_) {
      if (node.kind != Entry::Kind::Link) continue;
      if (path == link && links == Links::Follow) return node.target;
      if (path.compare(0, link.size() + 1, link + "/") == 0) return node.target + path.substr(link.size());
    }
    return path;
  }
  /// Removes the entry with everything below it; keyed by the path below it.
  std::map<std::string, Node> takeTree(const std::string& path) {
    std::map<std::string, Node> taken;
    std::erase_if(entries_, [&](const auto& entry) {
      if (entry.first != path && entry.first.compare(0, path.size() + 1, path + "/") != 0) return false;
      taken[entry.first.substr(path.size())] = entry.second;
      return true;
    });
    return taken;
  }

  std::map<std::string, Node> entries_;
  std::map<int, int> watches_;  // node to watch
  int lastNode_ = 0;
  int lastWatch_ = 0;
};

}  // namespace corvane::test
