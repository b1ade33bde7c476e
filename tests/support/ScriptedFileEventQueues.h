// Event queues for one path that do what a test says: each step can be made to fail, events happen when the
// test fires them. Every path exists unless the test says otherwise.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/FileEventQueues.h"

namespace corvane::test {

class ScriptedFileEventQueues : public FileEventQueues {
 public:
  enum class Step { Open, CreateQueue, Register, Wrap, AddToRunLoop };

  /// Makes every later try of the step fail, with this text of the system where the step has one.
  void fail(Step step, std::string error = "Scripted failure") { failures_[step] = std::move(error); }
  void succeed(Step step) { failures_.erase(step); }
  /// Makes only this path fail to open.
  void failOpening(const std::string& path, std::string error) { openFailures_[path] = std::move(error); }
  /// What is at a path when it is opened; a test over real files can ask these.
  std::function<bool(const std::string&)> exists = [](const std::string&) { return true; };

  /// Lets the event happen; answers how many callbacks it made (none where the kind is not registered or the
  /// callback is not enabled).
  std::size_t fire(const std::string& path, FileEventKind kind = FileEventKind::Disappearance) {
    std::size_t calls = 0;
    for (Queue* queue : std::set(queues_)) {
      if (queues_.count(queue) == 0 || !queue->takesCallFor(path, kind)) continue;
      const auto callback = queue->callback;  // the call may destroy the queue
      callback();
      ++calls;
    }
    return calls;
  }

  [[nodiscard]] std::size_t openQueues() const { return queues_.size(); }
  [[nodiscard]] std::size_t openPaths() const { return openPaths_; }
  /// The paths that are watched for the event now: registered, with the callback enabled and on the run loop.
  [[nodiscard]] std::vector<std::string> armedPaths(FileEventKind kind = FileEventKind::Disappearance) const {
    std::vector<std::string> paths;
    for (const Queue* queue : queues_) {
      if (queue->isArmed() && queue->kind == kind) paths.push_back(queue->path);
    }
    return paths;
  }
  /// The callback of the queue of this path, for a call that comes late.
  [[nodiscard]] std::function<void()> callbackFor(const std::string& path) const {
    for (const Queue* queue : queues_) {
      if (queue->path == path) return queue->callback;
    }
    return {};
  }
  /// The steps taken so far, in words.
  std::vector<std::string> steps;

  OpenedPath openForEvents(const std::string& path) override {
    steps.push_back("open " + path);
    if (!exists(path)) return {nullptr, true, "No such file or directory"};
    if (const auto* error = failure(Step::Open)) return {nullptr, false, *error};
    if (const auto found = openFailures_.find(path); found != openFailures_.end())
      return {nullptr, false, found->second};
    return {std::make_unique<Path>(*this, path), false, {}};
  }
  CreatedQueue createQueue() override {
    steps.emplace_back("create queue");
    if (const auto* error = failure(Step::CreateQueue)) return {nullptr, *error};
    return {std::make_unique<Queue>(*this), {}};
  }

 private:
  struct Path : WatchedPath {
    Path(ScriptedFileEventQueues& all, std::string thePath) : owner(all), path(std::move(thePath)) {
      ++owner.openPaths_;
    }
    Path(const Path&) = delete;
    Path& operator=(const Path&) = delete;
    ~Path() override { --owner.openPaths_; }
    ScriptedFileEventQueues& owner;
    std::string path;
  };

  struct Queue : FileEventQueue {
    explicit Queue(ScriptedFileEventQueues& all) : owner(all) { owner.queues_.insert(this); }
    Queue(const Queue&) = delete;
    Queue& operator=(const Queue&) = delete;
    ~Queue() override { owner.queues_.erase(this); }

    std::optional<std::string> registerEvent(WatchedPath& watchedPath, FileEventKind theKind) override {
      owner.steps.emplace_back(theKind == FileEventKind::Write ? "register write" : "register disappearance");
      if (const auto* error = owner.failure(Step::Register)) return *error;
      path = static_cast<Path&>(watchedPath).path;
      kind = theKind;
      return std::nullopt;
    }
    bool wrap(std::function<void()> gotActivity) override {
      owner.steps.emplace_back("wrap");
      if (owner.failure(Step::Wrap) != nullptr) return false;
      callback = std::move(gotActivity);
      return true;
    }
    void enableCallBack() override {
      owner.steps.emplace_back("enable");
      enabled = true;
    }
    bool addToRunLoop() override {
      owner.steps.emplace_back("add");
      onRunLoop = owner.failure(Step::AddToRunLoop) == nullptr;
      return onRunLoop;
    }

    [[nodiscard]] bool isArmed() const { return enabled && onRunLoop && callback; }
    bool takesCallFor(const std::string& thePath, FileEventKind theKind) {
      if (!isArmed() || path != thePath || kind != theKind) return false;
      enabled = false;
      return true;
    }

    ScriptedFileEventQueues& owner;
    std::string path;
    FileEventKind kind = FileEventKind::Disappearance;
    std::function<void()> callback;
    bool enabled = false;
    bool onRunLoop = false;
  };

  [[nodiscard]] const std::string* failure(Step step) const {
    const auto found = failures_.find(step);
    return found == failures_.end() ? nullptr : &found->second;
  }

  std::map<Step, std::string> failures_;
  std::map<std::string, std::string> openFailures_;
  std::set<Queue*> queues_;
  std::size_t openPaths_ = 0;
};

}  // namespace corvane::test
