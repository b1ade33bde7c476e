// The helper tool itself: a session over its standard input, and the program that runs its first argument.
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sched.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/sysinfo.h>
#include <sys/wait.h>

#include "TreeFixture.h"
#include "helper/Launch.h"
#include "helper/Session.h"
#include "support/Patience.h"

namespace corvane::helper::test {
namespace {

using ::testing::HasSubstr;

bool readableSoon(int descriptor) {
  pollfd waited{descriptor, POLLIN, 0};
  return ::poll(&waited, 1, corvane::test::kHangMilliseconds) == 1;
}

/// One helper process. `arrange` runs in it before the tool does.
class Helper {
 public:
  Helper(
      const std::string& root, const std::function<void()>& arrange = [] {}) {
    int ends[2];
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0);
    socket = FileDescriptor(ends[0]);
    const FileDescriptor theirs(ends[1]);
    child_ = ::fork();
    if (child_ == 0) {
      ::dup2(theirs.get(), 0);
      ::setenv("PKEXEC_UID", std::to_string(::geteuid() == 0 ? kUser : ::geteuid()).c_str(), 1);
      arrange();
      ::execl(QLHELPER_PATH, QLHELPER_PATH, "--session", "--root", root.c_str(), nullptr);
      ::_exit(99);
    }
  }
  ~Helper() {
    socket.reset();
    if (child_ > 0) (void)exitStatus();
  }
  Helper(const Helper&) = delete;
  Helper& operator=(const Helper&) = delete;

  Packet receive() const {
    EXPECT_TRUE(readableSoon(socket.get())) << "the helper is silent";
    return receivePacket(socket.get());
  }
  bool saysHello() const { return receive().bytes == hello(); }
  Reply ask(const Request& request) {
    EXPECT_TRUE(sendPacket(socket.get(), encodeRequest(request).value()));
    last = receive();
    const auto reply = decodeReply(last.bytes);
    EXPECT_TRUE(reply);
    return reply.value_or(Reply{.outcome = Outcome::Failed, .message = "no reply"});
  }
  int exitStatus() {
    int status = 0;
    EXPECT_EQ(::waitpid(std::exchange(child_, -1), &status, 0) > 0, true);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 1000 + WTERMSIG(status);
  }
  void kill() const { ::kill(child_, SIGKILL); }

  FileDescriptor socket;
  Packet last;

 private:
  pid_t child_ = -1;
};

class Session : public TreeFixture {
 protected:
  std::string script(const std::string& relative, const std::string& text) const {
    const auto path = folder.writeFile(relative, text);
    ::chmod(path.c_str(), 0755);
    return path;
  }
  static std::string readToEnd(int descriptor) {
    std::string text;
    char buffer[1000];
    while (readableSoon(descriptor)) {
      const auto count = ::read(descriptor, buffer, sizeof buffer);
      if (count <= 0) return text;
      text.append(buffer, static_cast<std::size_t>(count));
    }
    return text + " (does not end)";
  }
  Request validation(const std::string& plugin) const {
    return {.program = self, .arguments = {plugin, "--test-mode"}, .wantsOutput = true};
  }
  const std::string self = std::filesystem::canonical(QLHELPER_PATH).string();
};

TEST_F(Session, GreetsServesAndEndsWithTheSocket) {
  Helper helper(folder.path());
  ASSERT_TRUE(helper.saysHello());
  const auto staging = stage("a.plist", "new");
  const auto target = folder / "Library/Corvane/PluginSupport/a.plist";
  expectDone(helper.ask({.program = "/bin/cp", .arguments = {staging, target}}));
  EXPECT_EQ(folder.readFile("Library/Corvane/PluginSupport/a.plist"), "new");
  expectDone(helper.ask({.program = "/bin/rm", .arguments = {staging}}));
  EXPECT_FALSE(exists("private/tmp/a.plist"));
  helper.socket.reset();
  EXPECT_EQ(helper.exitStatus(), 0);
}

TEST_F(Session, RefusesAndGoesOn) {
  Helper helper(folder.path());
  ASSERT_TRUE(helper.saysHello());
  for (const auto& program : {"/usr/bin/id", "relative", "/bin/../bin/rm", "/bin/bash"}) {
    EXPECT_EQ(helper.ask({.program = program, .arguments = {}}).outcome, Outcome::Denied) << program;
  }
  const auto staging = stage("a.plist", "x");
  expectDone(helper.ask({.program = "/bin/rm", .arguments = {staging}}));
}

TEST_F(Session, SomethingThatIsNoRequestEndsIt) {
  const auto whole =
      encodeRequest({.program = "/bin/rm", .arguments = {folder / "private/tmp/a.plist"}}).value();
  const std::string packets[] = {"x",
                                 std::string(100, '\xff'),
                                 whole.substr(0, whole.size() - 1),
                                 whole.substr(0, 9),
                                 whole + "x",
                                 whole + std::string(kLargestPacket, 'x')};
  for (const auto& packet : packets) {
    stage("a.plist", "x");
    Helper helper(folder.path());
    ASSERT_TRUE(helper.saysHello());
    ASSERT_TRUE(sendPacket(helper.socket.get(), packet));
    EXPECT_EQ(helper.receive().state, Packet::State::Closed) << packet.size();
    EXPECT_EQ(helper.exitStatus(), 1) << packet.size();
    EXPECT_TRUE(exists("private/tmp/a.plist")) << packet.size();
  }
}

TEST_F(Session, ForeignStagingFileIsJudgedByTheUserWhoAsked) {
  CORVANE_NEEDS_ROOT();
  Helper helper(folder.path());
  ASSERT_TRUE(helper.saysHello());
  own(stage("a.plist", "x"), kStranger);
  expectDenied(helper.ask({.program = "/bin/rm", .arguments = {folder / "private/tmp/a.plist"}}),
               "another user");
}

TEST_F(Session, WhatRootStartsHasACleanStateAndNoDescriptors) {
  const auto plugin = script("Library/Corvane/Plugins/check_x",
                             "#!/bin/bash\n"
                             "echo \"$(umask)|$PWD|$PATH|$HOME$LD_PRELOAD$BASH_ENV|$(ulimit -f)\"\n"
                             "for ((n = 3; n < 250; ++n)); do [ -e /proc/$$/fd/$n ] && echo leaked $n; done\n"
                             "readlink /proc/$$/fd/0 /proc/$$/fd/2\n");
  Helper helper(folder.path(), [] {
    ::umask(0077);
    ::dup2(0, 9);
    ::setenv("BASH_ENV", "/tmp/evil", 1);
    (void)std::signal(SIGPIPE, SIG_IGN);
  });
  ASSERT_TRUE(helper.saysHello());
  expectDone(helper.ask(validation(plugin)));
  EXPECT_EQ(readToEnd(helper.last.descriptors[0].get()),
            "0022|/|/usr/bin:/bin:/usr/sbin:/sbin||unlimited\n/dev/null\n/dev/null\n");
}

TEST_F(Session, FoldersThatItMakesAreOpenToReadersWhateverTheMaskOfTheUsersSession) {
  folder.makeFolder("var");
  Helper helper(folder.path(), [] { ::umask(0077); });
  ASSERT_TRUE(helper.saysHello());
  expectDone(helper.ask({.program = "/bin/mkdir", .arguments = {"-p", folder / "var/root/Library"}}));
  EXPECT_EQ(attributesOf("var/root/Library").st_mode & 07777, 0755U);
}

struct Limit {
  __rlimit_resource_t resource;
  char letter;  // of the shell's "ulimit"
  rlim_t unit;
  rlim_t usual = RLIM_INFINITY;  // what a program of root's has
};
constexpr Limit kSessionLimits[] = {{RLIMIT_CORE, 'c', 1024},
                                    {RLIMIT_DATA, 'd', 1024},
                                    {RLIMIT_FSIZE, 'f', 1024},
                                    {RLIMIT_MEMLOCK, 'l', 1024},
                                    {RLIMIT_NOFILE, 'n', 1, 1024},
                                    {RLIMIT_STACK, 's', 1024, 8 << 20},
                                    {RLIMIT_CPU, 't', 1},
                                    {RLIMIT_NPROC, 'u', 1},
                                    {RLIMIT_AS, 'v', 1024},
                                    {RLIMIT_SIGPENDING, 'i', 1},
                                    {RLIMIT_NICE, 'e', 1, 0},
                                    {RLIMIT_RTPRIO, 'r', 1, 0},
                                    {RLIMIT_MSGQUEUE, 'q', 1, 819200}};

/// A user's session with little of everything.
void narrowSession() {
  for (const auto& limit : kSessionLimits) {
    rlimit little{};
    ::getrlimit(limit.resource, &little);
    little.rlim_cur = limit.resource == RLIMIT_NOFILE ? 10 : limit.unit * 64;
    if (limit.resource == RLIMIT_STACK || limit.resource == RLIMIT_AS || limit.resource == RLIMIT_DATA)
      little.rlim_cur = rlim_t{64} << 20;
    ::setrlimit(limit.resource, &little);
  }
  ::setpriority(PRIO_PROCESS, 0, 7);
  const sched_param idle{};
  ::sched_setscheduler(0, SCHED_IDLE, &idle);
  ::syscall(SYS_ioprio_set, 1, 0, 3 << 13);
  cpu_set_t one;
  CPU_ZERO(&one);
  CPU_SET(0, &one);
  ::sched_setaffinity(0, sizeof one, &one);
  const FileDescriptor score(::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC));
  (void)!::write(score.get(), "500", 3);
  (void)std::signal(SIGXFSZ, SIG_DFL);
}

TEST_F(Session, LimitsAndPriorityOfTheUsersSessionReachNeitherTheHelperNorWhatItStarts) {
  CORVANE_NEEDS_ROOT();
  std::string text = "#!/bin/bash\n";
  std::string expected;
  for (const auto& [resource, letter, unit, usual] : kSessionLimits) {
    rlimit own{};
    ::getrlimit(resource, &own);
    // Where root may not widen what this machine has set, nobody can.
    if (usual == RLIM_INFINITY && own.rlim_max != RLIM_INFINITY) continue;
    text += std::string("echo -n \"") + letter + " $(ulimit -S" + letter + ") \"\n";
    expected +=
        std::string(1, letter) + " " +
        (usual == RLIM_INFINITY ? "unlimited" : std::to_string(std::min(usual, own.rlim_max) / unit)) + " ";
  }
  const auto plugin =
      script("Library/Corvane/Plugins/check_x", text +
                                                    "echo $(nice) $(cat /proc/self/oom_score_adj) $(chrt -p "
                                                    "$$ | grep -o SCHED_.*) $(ionice) $(nproc)\n");
  Helper helper(folder.path(), narrowSession);
  ASSERT_TRUE(helper.saysHello());
  const auto staging = stage("a.plist", std::string(5000, 'n'));
  expectDone(helper.ask(
      {.program = "/bin/cp", .arguments = {staging, folder / "Library/Corvane/PluginSupport/a.plist"}}));
  expectDone(helper.ask(validation(plugin)));
  ASSERT_TRUE(helper.last.descriptors[0]);
  EXPECT_EQ(readToEnd(helper.last.descriptors[0].get()),
            expected + "0 0 SCHED_OTHER none: prio 0 " + std::to_string(::get_nprocs()) + "\n");
}

/// A write in a process that may open no further file fails for that reason, and for no other.
TEST_F(Session, WithoutDescriptorsACommandFailsForThisReason) {
  stage("a.plist", "new");
  folder.writeFile("Library/Corvane/PluginSupport/a.plist", "old");
  int done = 0;
  for (rlim_t most = 3; most < 20; ++most) {
    const RootTree tree(folder.path(), user);
    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit few{most, before.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &few);
    const auto reply = tree.writeTarget("a.plist", "/Library/Corvane/PluginSupport");
    ::setrlimit(RLIMIT_NOFILE, &before);
    if (reply.exitStatus == 0) {
      expectDone(reply);
      ++done;
    } else {
      EXPECT_EQ(reply.outcome, Outcome::Started);
      EXPECT_THAT(reply.message, HasSubstr("Too many open files")) << most;
    }
  }
  EXPECT_GT(done, 0);
  EXPECT_EQ(folder.readFile("Library/Corvane/PluginSupport/a.plist"), "new");
}

/// Makes a terminal the controlling one of this process, which leads a session of its own; its other side.
FileDescriptor enterTerminal() {
  FileDescriptor keyboard(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC));
  EXPECT_EQ(::grantpt(keyboard.get()) | ::unlockpt(keyboard.get()), 0);
  EXPECT_GT(::setsid(), 0);
  char name[100] = {};
  EXPECT_EQ(::ptsname_r(keyboard.get(), name, sizeof name), 0);
  const FileDescriptor terminal(::open(name, O_RDWR | O_CLOEXEC));  // the first one that a session opens
  EXPECT_EQ(::tcgetpgrp(terminal.get()), ::getpgrp());
  return keyboard;
}
/// Presses the key; true when its signal has reached this process, and with it all of its group.
bool press(const FileDescriptor& keyboard, char key, int signal) {
  sigset_t awaited;
  ::sigemptyset(&awaited);
  ::sigaddset(&awaited, signal);
  ::sigprocmask(SIG_BLOCK, &awaited, nullptr);
  const timespec deadline{corvane::test::kHangMilliseconds / 1000, 0};
  return ::write(keyboard.get(), &key, 1) == 1 && ::sigtimedwait(&awaited, nullptr, &deadline) == signal;
}

TEST_F(Session, KeysOfThePanesTerminalDoNotReachTheHelper) {
  const auto staging = stage("a.plist", "x");
  const pid_t pane = ::fork();
  if (pane == 0) {
    const auto keyboard = enterTerminal();
    Helper helper(folder.path());
    EXPECT_TRUE(helper.saysHello());
    EXPECT_TRUE(press(keyboard, '\x03', SIGINT));
    EXPECT_TRUE(press(keyboard, '\x1c', SIGQUIT));
    expectDone(helper.ask({.program = "/bin/rm", .arguments = {staging}}));
    helper.socket.reset();
    EXPECT_EQ(helper.exitStatus(), 0);
    ::_exit(HasFailure() ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(pane, &status, 0), pane);
  EXPECT_EQ(status, 0);
  EXPECT_FALSE(exists("private/tmp/a.plist"));
}

/// A plug-in that does not end, nor does what it has started in sessions of their own; all of them hold a
/// FIFO open.
class HangingValidation : public Session {
 protected:
  HangingValidation() {
    EXPECT_EQ(::mkfifo((folder / "alive").c_str(), 0600), 0);
    alive = FileDescriptor(::open((folder / "alive").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    plugin =
        script("Library/Corvane/Plugins/check_x",
               "#!/bin/bash\nexec 9> '" + folder.path() + "/alive'\n" +
                   "setsid bash -c '(trap \"\" TERM HUP INT; setsid sleep 1000 & echo x >&9; sleep 1000) & "
                   "disown; exec sleep 1000' &\ntrap '' TERM HUP\nsleep 1000\n");
  }
  void start(Helper& helper) {
    ASSERT_TRUE(helper.saysHello());
    expectDone(helper.ask(validation(plugin)));
    ASSERT_TRUE(helper.last.descriptors[1]);
    ASSERT_TRUE(readableSoon(alive.get()));
    char buffer[2];
    ASSERT_EQ(::read(alive.get(), buffer, 2), 2);
  }
  bool allHaveEnded() {
    char buffer[1];
    return readableSoon(alive.get()) && ::read(alive.get(), buffer, 1) == 0;
  }
  FileDescriptor alive;
  std::string plugin;
};

TEST_F(HangingValidation, EndsWithAllItStartedWhenThePaneLetsGo) {
  Helper helper(folder.path());
  start(helper);
  helper.last.descriptors[1].reset();
  EXPECT_TRUE(allHaveEnded());
}

TEST_F(HangingValidation, EndsAfterAGraceWhenItsReplyWasRead) {
  Helper helper(folder.path());
  start(helper);
  releaseGently(helper.last.descriptors[1]);
  EXPECT_TRUE(allHaveEnded());
}

TEST_F(HangingValidation, EndsWithTheSession) {
  Helper helper(folder.path());
  start(helper);
  helper.socket.reset();
  EXPECT_TRUE(allHaveEnded());
}

TEST_F(HangingValidation, EndsWhenTheHelperIsKilled) {
  Helper helper(folder.path());
  start(helper);
  helper.kill();
  EXPECT_TRUE(allHaveEnded());
}

TEST_F(HangingValidation, SecondRunDoesNotKeepTheFirstOneAlive) {
  Helper helper(folder.path());
  start(helper);
  auto leash = std::move(helper.last.descriptors[1]);
  const auto other = script("Library/Corvane/Plugins/check_y", "#!/bin/sh\nexec sleep 1000\n");
  expectDone(helper.ask(validation(other)));
  leash.reset();
  EXPECT_TRUE(allHaveEnded());
}

TEST_F(Session, ClientRunOutlivesTheSessionAndTheHelpersDeath) {
  for (const bool killed : {false, true}) {
    const auto go = folder / (killed ? "go1" : "go2");
    const auto done = folder / (killed ? "done1" : "done2");
    ASSERT_EQ(::mkfifo(go.c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(done.c_str(), 0600), 0);
    const auto path =
        script("Library/Corvane/RunClient", "read line < '" + go + "'\necho \"$*\" > '" + done + "'\n");
    const FileDescriptor reader(::open(done.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    {
      Helper helper(folder.path());
      ASSERT_TRUE(helper.saysHello());
      expectDone(helper.ask(
          {.program = self, .arguments = {"/bin/bash", path, "--log-parent", "prefpane-client", "--force"}}));
      if (killed) helper.kill();
    }
    const FileDescriptor writer(::open(go.c_str(), O_WRONLY | O_CLOEXEC));
    ASSERT_EQ(::write(writer.get(), "x\n", 2), 2);
    EXPECT_EQ(readToEnd(reader.get()), "--log-parent prefpane-client --force\n");
  }
}

TEST_F(Session, DoesNotStartOnABadPrefixOrWithoutASocket) {
  std::filesystem::create_directory_symlink(folder / "Library", folder / "link");
  for (const auto& root :
       {std::string("relative"), folder.path() + "/../x", folder / "none", folder / "link"}) {
    Helper helper(root);
    EXPECT_EQ(helper.receive().state, Packet::State::Closed) << root;
    EXPECT_EQ(helper.exitStatus(), 2) << root;
  }
  Helper withoutSocket(folder.path(), [] { ::dup2(::open("/dev/null", O_RDWR), 0); });
  EXPECT_EQ(withoutSocket.exitStatus(), 2);
}

TEST_F(Session, DoesNotStartOnATreeThatOthersCanChange) {
  CORVANE_NEEDS_ROOT();
  for (const char* open : {"Library/Corvane", "Library", "private"}) {
    own(folder / open, kStranger);
    Helper helper(folder.path());
    EXPECT_EQ(helper.receive().state, Packet::State::Closed) << open;
    EXPECT_EQ(helper.exitStatus(), 2) << open;
    own(folder / open, 0);
  }
  Helper helper(folder.writeFile("file"));
  EXPECT_EQ(helper.receive().state, Packet::State::Closed) << "the prefix is a file";
  EXPECT_EQ(helper.exitStatus(), 2);
}

/// Runs the tool to its end; answers what it printed and how it ended.
std::pair<std::string, int> run(std::vector<std::string> arguments, bool throughPolkit = false) {
  auto pipe = makePipe();
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(pipe.writeEnd.get(), 1);
    ::dup2(pipe.writeEnd.get(), 2);
    ::unsetenv("PKEXEC_UID");
    if (throughPolkit) ::setenv("PKEXEC_UID", "1000", 1);
    std::vector<char*> vector{const_cast<char*>(QLHELPER_PATH)};
    for (auto& argument : arguments) vector.push_back(argument.data());
    vector.push_back(nullptr);
    ::execv(QLHELPER_PATH, vector.data());
    ::_exit(99);
  }
  pipe.writeEnd.reset();
  std::string text;
  char buffer[1000];
  for (ssize_t count = 0; (count = ::read(pipe.readEnd.get(), buffer, sizeof buffer)) > 0;) {
    text.append(buffer, static_cast<std::size_t>(count));
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return {text, WIFEXITED(status) ? WEXITSTATUS(status) : 1000};
}

TEST(HelperTool, BecomesItsFirstArgumentAndPassesTheOutputThrough) {
  EXPECT_EQ(run({"/usr/bin/printf", "%s|", "a b", "", "--session"}),
            (std::pair<std::string, int>{"a b||--session|", 0}));
  EXPECT_EQ(run({"/bin/sh", "-c", "exit 7"}).second, 7);
}

TEST(HelperTool, ProgramThatCannotRunIsSaidSo) {
  const auto [text, status] = run({"/nonexistent"});
  EXPECT_EQ(status, 127);
  EXPECT_THAT(text, HasSubstr("/nonexistent: No such file or directory"));
}

TEST(HelperTool, RunsNothingElseWhenItWasStartedThroughPolkit) {
  const auto [text, status] = run({"/bin/echo", "reached"}, true);
  EXPECT_EQ(status, 2);
  EXPECT_THAT(text, Not(HasSubstr("reached\n")));
}

TEST(HelperTool, WrongCommandLinesAreRefused) {
  for (const auto& line : std::vector<std::vector<std::string>>{{},
                                                                {"--session"},
                                                                {"--session", "--root"},
                                                                {"--session", "/x", "/y"},
                                                                {"--session", "--root", "/", "x"},
                                                                {"echo", "reached"}}) {
    EXPECT_EQ(run(line).second, 2) << line.size();
  }
}

}  // namespace
}  // namespace corvane::helper::test
