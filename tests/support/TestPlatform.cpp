#include "support/TestPlatform.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <ostream>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "values/PropertyListCodec.h"
#include "values/Text.h"

namespace corvane::test {
namespace fs = std::filesystem;
namespace {

class GrantedAuthorization final : public Authorization {
 public:
  explicit GrantedAuthorization(RecordingAuthorization& owner) : owner_(owner) { owner_.granted = this; }
  ~GrantedAuthorization() override {
    if (owner_.granted == this) owner_.granted = nullptr;
  }

 private:
  RecordingAuthorization& owner_;
};

class ScriptedPipe final : public OutputPipe {
 public:
  ScriptedPipe(RecordingAuthorization& owner, std::string reply) : owner_(owner), reply_(std::move(reply)) {}
  ReadOutcome read(char* buffer, std::size_t capacity) override {
    ++owner_.pipeReads;
    if (reply_.empty()) return owner_.outcomeWithoutReply;
    const std::size_t count = std::min(capacity, reply_.size());
    std::memcpy(buffer, reply_.data(), count);
    reply_.erase(0, count);
    return {count, false, false};
  }

 private:
  RecordingAuthorization& owner_;
  std::string reply_;
};

class ScriptedStream final : public DirectoryEventStream {
 public:
  explicit ScriptedStream(std::shared_ptr<ScriptedDirectoryEvents::State> state) : state_(std::move(state)) {}
  ~ScriptedStream() override { state_->calls.emplace_back("release"); }
  void scheduleWithRunLoop() override { state_->calls.emplace_back("schedule"); }
  void unscheduleFromRunLoop() override { state_->calls.emplace_back("unschedule"); }
  bool start() override {
    state_->calls.emplace_back("start");
    return true;
  }
  void stop() override { state_->calls.emplace_back("stop"); }

 private:
  std::shared_ptr<ScriptedDirectoryEvents::State> state_;
};

/// Why the tool failed; empty when it did not.
std::string carryOut(const std::string& tool, const std::vector<std::string>& arguments) {
  std::error_code error;
  if (tool == "/bin/rm") fs::remove(arguments.at(0), error);
  if (tool == "/bin/mkdir") fs::create_directories(arguments.at(1), error);
  if (tool == "/bin/cp")
    fs::copy_file(arguments.at(0), arguments.at(1), fs::copy_options::overwrite_existing, error);
  return error ? error.message() : "";
}

}  // namespace

bool RealFiles::exists(const std::string& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

Files::ModificationDate RealFiles::modificationDate(const std::string& path) {
  if (const auto played = dates.find(path); played != dates.end()) return played->second;
  struct stat attributes {};
  if (stat(path.c_str(), &attributes) != 0) return {std::nullopt, std::strerror(errno)};
  return {Date{static_cast<double>(attributes.st_mtim.tv_sec) +
               static_cast<double>(attributes.st_mtim.tv_nsec) / 1e9},
          {}};
}

std::optional<std::string> RealFiles::contents(const std::string& path, std::size_t limit) {
  std::error_code error;
  if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > limit) return std::nullopt;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

std::optional<std::vector<std::string>> RealFiles::walk(const std::string& folder) {
  std::error_code error;
  if (!fs::is_directory(folder, error)) return std::nullopt;
  std::vector<std::string> found;
  const auto options = fs::directory_options::skip_permission_denied;
  for (fs::recursive_directory_iterator entry(folder, options, error), end; entry != end;
       entry.increment(error)) {
    found.push_back(entry->path().lexically_relative(folder).string());
  }
  std::sort(found.begin(), found.end());
  return found;
}

bool RealFiles::areSame(const std::string& one, const std::string& other) {
  std::error_code missing;
  return one == other || std::filesystem::equivalent(one, other, missing);
}

Files::Held RealFiles::holdFolder(const std::string& folder, double) {
  if (isTaken) return {.hold = nullptr, .isTaken = true};
  holds.push_back(folder);
  return {.hold = std::shared_ptr<void>(this, [this, folder](void*) { std::erase(holds, folder); })};
}

Files::Held RealFiles::claimTree(const std::string&) { return {.hold = nullptr, .isTaken = isTaken}; }

PropertyList RealPropertyListFiles::read(const std::string& path) {
  reads.push_back(path);
  const auto bytes = RealFiles().contents(path, std::size_t{1} << 30U);
  return bytes ? readPropertyList(*bytes) : PropertyList();
}

Result RealPropertyListFiles::write(const std::string& path, const PropertyList& value) {
  const auto xml = writeXmlPropertyList(value);
  if (!whyWritesFail.empty()) return {whyWritesFail};
  if (!xml) return {"not a property list"};
  std::ofstream stream(path, std::ios::binary | std::ios::trunc);
  stream << *xml;
  return {stream ? "" : "the stream failed"};
}

std::function<PropertyList()> RealPropertyListFiles::expectCopy(const std::string& path) {
  return
      [this, path, before = copiesTo(path)] { return copiesTo(path) > before ? read(path) : PropertyList(); };
}

void PrintTo(const RootCommand& command, std::ostream* stream) {
  *stream << command.tool;
  for (const std::string& argument : command.arguments) *stream << " [" << argument << "]";
  if (command.wantsOutput) *stream << " |";
}

void RecordingAuthorization::requestRights(std::string_view right, Done done) {
  requestedRights.emplace_back(right);
  waiting_ = std::move(done);
  if (answersAtOnce) answer(outcome);
}

void RecordingAuthorization::answer(AuthorizationOutcome given, std::string reason) {
  const Done done = std::exchange(waiting_, nullptr);
  if (!done) return;
  done({given,
        given == AuthorizationOutcome::Granted ? std::make_unique<GrantedAuthorization>(*this) : nullptr,
        std::move(reason)});
}

LaunchOutcome RecordingAuthorization::executeWithPrivileges(Authorization* authorization,
                                                            const std::string& tool,
                                                            const std::vector<std::string>& arguments) {
  commands.push_back({tool, arguments, false});
  if (onCommand) onCommand(commands.back());
  if (authorization == nullptr) return {launch_status::kInvalidAuthorization, {}};
  const auto status = statusOfTool.find(tool);
  const auto reason = reasonOfTool.find(tool);
  LaunchOutcome launch{status != statusOfTool.end() ? status->second : launch_status::kStarted,
                       reason != reasonOfTool.end() ? reason->second : std::string()};
  if (launch.result() && carriesOut) launch.reason = carryOut(tool, arguments);
  return launch;
}

LaunchOutcome RecordingAuthorization::executeWithPrivileges(Authorization* authorization,
                                                            const std::string& tool,
                                                            const std::vector<std::string>& arguments,
                                                            std::unique_ptr<OutputPipe>& output) {
  LaunchOutcome launch = executeWithPrivileges(authorization, tool, arguments);
  commands.back().wantsOutput = true;
  if (launch.status != launch_status::kStarted) return launch;
  std::string reply;
  if (!replies.empty()) {
    reply = replies.front();
    replies.pop_front();
  }
  output = std::make_unique<ScriptedPipe>(*this, std::move(reply));
  return launch;
}

std::vector<std::string> RecordingAuthorization::toolsStarted() const {
  std::vector<std::string> tools;
  for (const RootCommand& command : commands) tools.push_back(command.tool);
  return tools;
}

void ScriptedDialogs::beginSheet(const AlertDescription& alert, SheetWindow window,
                                 std::function<void(const AlertResult&)> ended) {
  sheets.push_back({alert, window, std::move(ended)});
  if (onSheet) onSheet(alert);
}

AlertResult ScriptedDialogs::runModalAlert(const AlertDescription& alert) {
  modalAlerts.push_back(alert);
  return {kAlertFirstButtonReturn, false};
}

std::vector<std::string> ScriptedDialogs::runOpenPanel(const OpenPanelDescription& panel) {
  openPanels.push_back(panel);
  return chosenPaths;
}

void ScriptedDialogs::endSheet(int returnCode, bool accessoryOn) {
  ASSERT_LT(endedSheets, sheets.size()) << "no sheet is open";
  const auto ended = sheets[endedSheets++].ended;  // a copy: the handler may begin another sheet
  if (ended) ended({returnCode, accessoryOn});
}

double FakeWorkspace::textWidth(std::string_view text, const Font& font) {
  measured.emplace_back(std::string(text), font);
  if (const auto given = widths.find(std::string(text)); given != widths.end()) return given->second;
  return static_cast<double>(utf16Length(text)) * font.size / 2;
}

std::string FakeBundle::pathForResource(std::string_view name, std::string_view type) {
  return "/bundle/Resources/" + std::string(name) + (type.empty() ? "" : ".") + std::string(type);
}

std::string FakeBundle::pathForAuxiliaryExecutable(std::string_view name) {
  return "/bundle/MacOS/" + std::string(name);
}

std::unique_ptr<DirectoryEventStream> ScriptedDirectoryEvents::createStream(
    std::vector<std::string> directories, double latency, Callback callback) {
  streams.push_back(std::make_shared<State>(State{std::move(directories), latency, std::move(callback), {}}));
  return std::make_unique<ScriptedStream>(streams.back());
}

TestPlatform::TestPlatform()
    : paths(root.path()), platform{log,           files,           propertyLists,
                                   runLoop,       directoryEvents, fileEventQueues,
                                   authorization, processes,       texts,
                                   dialogs,       workspace,       bundle} {
  fs::create_directories(root.path() + "/private/tmp");
  propertyLists.copiesTo = [this](const std::string& path) {
    return static_cast<std::size_t>(
        std::ranges::count_if(authorization.commands, [&](const RootCommand& command) {
          return authorization.carriesOut && command.tool == tool::kCp && command.arguments.back() == path;
        }));
  };
}

void TestPlatform::layOutFolders() {
  for (const std::string& folder : {paths.localInfo, paths.pluginSupport, paths.plugins, paths.updaterSupport,
                                    paths.systemConfiguration, paths.volumes}) {
    fs::create_directories(folder);
  }
}

void TestPlatform::writePlist(const std::string& path, const PropertyList& value) {
  const auto xml = writeXmlPropertyList(value);
  ASSERT_TRUE(xml.has_value());
  writeText(path, *xml);
}

void TestPlatform::writeText(const std::string& path, std::string_view text) {
  fs::create_directories(fs::path(path).parent_path());
  // A new file: cutting the old one to nothing first has ext4 flush it to disk on closing.
  std::error_code ignored;
  fs::remove(path, ignored);
  std::ofstream stream(path, std::ios::binary | std::ios::trunc);
  stream << text;
  ASSERT_TRUE(stream.good()) << path;
}

PropertyList TestPlatform::readPlist(const std::string& path) { return RealPropertyListFiles().read(path); }

void TestPlatform::remove(const std::string& path) { fs::remove_all(path); }

}  // namespace corvane::test
