#include "PolkitMachine.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include "helper/Session.h"
#include "posix/Pipe.h"
#include "support/Patience.h"

namespace corvane::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kBus = "/usr/bin/dbus-daemon";
constexpr const char* kPolkit = "/usr/lib/polkit-1/polkitd";
constexpr const char* kActions = "/usr/share/polkit-1/actions";
constexpr const char* kActionsOfPolkit = "org.freedesktop.policykit.policy";
constexpr const char* kRules = "/etc/polkit-1/rules.d";
/// What crypt(3) makes of the user's password.
constexpr const char* kHashedPassword =
    "$6$corvanetest$9dLBGZ8XILYVZvbJtose0xEBAAWx4eBwaiQSlREdwmCT4hIJUfXLnCwio.G4i4u/ykxjdMt19t7p96dikcPHD.";

void write(const fs::path& path, const std::string& text, bool append = false) {
  fs::create_directories(path.parent_path());
  std::ofstream(path, append ? std::ios::app : std::ios::trunc) << text;
}
std::string read(const fs::path& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

}  // namespace

FileDescriptor watchProcess(pid_t pid) {
  return FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
}
bool readableSoon(int descriptor) {
  pollfd waited{descriptor, POLLIN, 0};
  return ::poll(&waited, 1, kHangMilliseconds) == 1;
}
bool hasNoChild() {
  siginfo_t ignored;
  return ::waitid(P_ALL, 0, &ignored, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD;
}
pid_t onlyChild() {
  std::ifstream list("/proc/thread-self/children");
  pid_t child = -1;
  list >> child;
  return child;
}

PolkitMachine::PolkitMachine() { ::chmod(base_.path().c_str(), 0755); }

PolkitMachine::~PolkitMachine() {
  while (!daemons_.empty()) killPolkit();
  if (!mounted_) return;
  for (const auto* path : {"/etc", kActions, "/run", "/usr/share/dbus-1/system-services"}) {
    ::umount2(path, MNT_DETACH);
  }
  ::umount2(base_.path().c_str(), MNT_DETACH);
}

std::optional<std::string> PolkitMachine::start(Rule rule, bool withPolicy) {
  if (::geteuid() != 0) return "this needs root";
  for (const auto* program : {kBus, kPolkit, "/usr/bin/pkexec"}) {
    if (::access(program, X_OK) != 0) return std::string(program) + " is not installed";
  }
  if (!mountFolders()) return std::string("no mount namespace can be made here: ") + std::strerror(errno);
  writeConfiguration(rule, withPolicy);
  layOutTree();
  if (!startDaemon({kBus, "--system", "--nofork", "--nopidfile", "--nosyslog", "--print-address=1"},
                   "unix:")) {
    return "the system bus does not start";
  }
  if (!startDaemon({kPolkit}, "Acquired the name org.freedesktop.PolicyKit1"))
    return "polkitd does not start";
  return std::nullopt;
}

bool PolkitMachine::mountFolders() {
  if (::unshare(CLONE_NEWNS) != 0 || ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
    return false;
  if (::mount("tmpfs", base_.path().c_str(), "tmpfs", 0, "mode=755") != 0) return false;
  mounted_ = true;
  const auto actionsOfPolkit = read(fs::path(kActions) / kActionsOfPolkit);
  for (const auto* folder : {"upper", "work", "opt", "tree"}) fs::create_directory(base_ / folder);
  const auto options = "lowerdir=/etc,upperdir=" + (base_ / "upper") + ",workdir=" + (base_ / "work");

  if (::mount("overlay", "/etc", "overlay", 0, options.c_str()) != 0) return false;
  for (const auto* path : {kActions, "/run", "/usr/share/dbus-1/system-services"}) {
    // The last one is emptied so that nothing that was killed is started again.
    if (::mount("tmpfs", path, "tmpfs", 0, "mode=755") != 0) return false;
  }
  fs::create_directory("/run/dbus");
  write(fs::path(kActions) / kActionsOfPolkit, actionsOfPolkit);
  return true;
}

void PolkitMachine::writeConfiguration(Rule rule, bool withPolicy) const {
  const auto id = std::to_string(kUser);
  write("/etc/passwd", "corvane-test:x:" + id + ":" + id + "::/:/bin/sh\n", true);
  write("/etc/shadow", std::string("corvane-test:") + kHashedPassword + ":19000:0:99999:7:::\n", true);
  write("/etc/machine-id", "0123456789abcdef0123456789abcdef\n");
  replaceHelper(QLHELPER_PATH);
  if (withPolicy) {
    auto policy = read(POLICY_TEMPLATE_PATH);
    for (const auto& [placeholder, value] :
         {std::pair{std::string("@CORVANE_HELPER_PATH@"), helper()},
          {std::string("@PROJECT_VERSION@"), std::string(helper::release())}})
      policy.replace(policy.find(placeholder), placeholder.size(), value);
    write(fs::path(kActions) / "org.example.corvane.pane.policy", policy);
  }
  ::chmod(kRules, 0755);
  for (const auto& entry : fs::directory_iterator(kRules)) fs::remove(entry);
  const auto* result = rule == Rule::Allow ? "YES" : rule == Rule::Refuse ? "NO" : "AUTH_ADMIN";
  write(fs::path(kRules) / "10-test.rules",
        std::string(
            "polkit.addAdminRule(function() { return ['unix-user:corvane-test']; });\n"
            "polkit.addRule(function(action, subject) {\n"
            "  if (action.id == 'org.example.corvane.pane.administer' && subject.user == 'corvane-test')\n"
            "    return polkit.Result.") +
            result + ";\n});\n");
}

void PolkitMachine::layOutTree() const {
  for (const auto* folder : {"private/tmp", "Library/Corvane/Plugins", "Library/Corvane/PluginSupport",
                             "Library/Corvane/Utilities/UpdaterSupport", "var/root", "fifos"}) {
    fs::create_directories(*this / folder);
  }
  ::chmod((*this / "private/tmp").c_str(), 01777);
  ::chmod((*this / "fifos").c_str(), 0777);
}

bool PolkitMachine::startDaemon(const std::vector<std::string>& line, const std::string& untilPrinted) {
  auto output = corvane::makePipe();
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::dup2(::open("/dev/null", O_RDWR), 0);
    ::dup2(output.writeEnd.get(), 1);
    ::dup2(output.writeEnd.get(), 2);
    std::vector<char*> vector;
    for (const auto& word : line) vector.push_back(const_cast<char*>(word.c_str()));
    vector.push_back(nullptr);
    ::execv(vector[0], vector.data());
    ::_exit(127);
  }
  output.writeEnd.reset();
  std::string printed;
  while (printed.find(untilPrinted) == std::string::npos && readableSoon(output.readEnd.get())) {
    char buffer[1000];
    const auto count = ::read(output.readEnd.get(), buffer, sizeof buffer);
    if (count <= 0) break;
    printed.append(buffer, static_cast<std::size_t>(count));
  }
  daemons_.push_back({pid, std::move(output.readEnd)});
  const bool started = printed.find(untilPrinted) != std::string::npos;
  if (!started) std::cerr << line[0] << " printed: " << printed << "\n";
  return started;
}

/// Ends the daemon that was started last.
void PolkitMachine::killPolkit() {
  ::kill(daemons_.back().pid, SIGKILL);
  ::waitpid(daemons_.back().pid, nullptr, 0);
  daemons_.pop_back();
}

void PolkitMachine::replaceHelper(const std::string& program) const {
  fs::copy_file(program, helper(), fs::copy_options::overwrite_existing);
  ::chmod(helper().c_str(), 0755);
}

pid_t PolkitMachine::startAsUser(const std::function<void()>& body, uid_t user) {
  std::cout.flush();
  const pid_t child = ::fork();
  if (child != 0) return child;
  ::prctl(PR_SET_PDEATHSIG, 0);
  if (::setgroups(0, nullptr) != 0 || ::setresgid(user, user, user) != 0 ||
      ::setresuid(user, user, user) != 0) {
    ::_exit(100);
  }
  body();
  std::cout.flush();
  ::_exit(testing::Test::HasFailure() ? 1 : 0);
}

void PolkitMachine::asUser(const std::function<void()>& body) const {
  int status = 0;
  const pid_t child = startAsUser(body);
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the user's process ended with " << status;
}

}  // namespace corvane::test
