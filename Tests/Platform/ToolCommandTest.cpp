#include "Platform/ToolCommand.h"

#include "Platform/Folder.h"
#include "Platform/Place.h"
#include "Platform/StateFile.h"
#include "Tests/support/TempHome.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

using namespace lumo;
using platform::readWhole;
using platform::runTool;
using platform::ToolRun;
using namespace tarvo::testing;
using namespace testing;

namespace {

constexpr std::size_t mostOutput = std::size_t{64} * 1024 + std::size_t{1024} * 1024;

ToolRun runScript(const TempHome& home, std::string_view script, std::stop_token stop = {}) {
    home.program(".local/bin/tool", script);
    return runTool({"tool"}, home.path(), std::move(stop));
}

/// The number that a process writes as a line into the file, once it is there.
pid_t numberIn(const std::string& path) {
    std::string line;
    while (!line.ends_with('\n')) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        line = readWhole(path, 100).value_or("");
    }
    return std::stoi(line);
}

/// True for a process that has not ended; one that only waits to be forgotten has.
bool isRunning(pid_t process) {
    const auto status = readWhole("/proc/" + std::to_string(process) + "/stat", 4096);
    return status && status->find(") Z") == std::string::npos;
}

/// What was killed is gone a moment later.
bool endsSoon(pid_t process) {
    for (int tries = 0; isRunning(process) && tries < 5000; ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return !isRunning(process);
}

/// Runs a script and requests the stop once it has written the number of a process to "ready".
ToolRun runUntilReady(const TempHome& home, std::string_view script, pid_t& process) {
    std::stop_source stop;
    const std::jthread stopper([&] {
        process = numberIn(home.path("ready"));
        stop.request_stop();
    });
    return runScript(home, "cd " + home.path() + "\n" + std::string(script), stop.get_token());
}

} // namespace

TEST(ToolCommand, FindsToolsWhereTheyInstallThemselves) {
    const TempHome home;
    home.program(".local/bin/tool", "echo local \"$@\"; echo $PATH");
    home.program(".bun/bin/tool", "echo bun");
    home.program(".bun/bin/other", "echo bun >&2; exit 3");
    home.program("inherited/third", "echo third");
    const std::string added =
        home.path(".local/bin") + ":" + home.path(".bun/bin") + ":/opt/homebrew/bin:/usr/local/bin:";
    ASSERT_EQ(setenv("PATH", (home.path("inherited") + ":/bin").c_str(), 1), 0);
    EXPECT_EQ(runTool({"tool", "a b", "-x", "C=d"}, home.path()).output,
              "local a b -x C=d\n" + added + home.path("inherited") + ":/bin\n");
    EXPECT_EQ(runTool({"third"}, home.path()).output, "third\n");
    const ToolRun other = runTool({"other"}, home.path());
    EXPECT_EQ(other.output, "bun\n");
    EXPECT_EQ(other.status, 3);
    ASSERT_EQ(unsetenv("PATH"), 0);
    EXPECT_THAT(runTool({"tool"}, home.path()).output, EndsWith(added + "/usr/bin:/bin\n"));
}

TEST(ToolCommand, SaysWhyAToolCouldNotBeStarted) {
    const TempHome home;
    for (const Arguments& arguments : {Arguments{}, Arguments{"--version"}, Arguments{"-i"},
                                       Arguments{"A=b", "true"}, Arguments{"tool-that-is-not-installed"},
                                       Arguments{"echo", std::string(std::size_t{8} << 20, 'x')}}) {
        const ToolRun run = runTool(arguments, home.path());
        EXPECT_EQ(run.status, 127) << PrintToString(arguments).substr(0, 60);
        EXPECT_THAT(run.output, Not(IsEmpty()));
        EXPECT_FALSE(run.wasEndedByUs);
    }
}

TEST(ToolCommand, StartsToolsWithNothingOfOursButTheOutput) {
    const TempHome home;
    const auto lock = platform::BaseFolder::open(home.path());
    // What the tests themselves were started with is not ours.
    for (const std::string& name : platform::namesIn("/proc/self/fd")) {
        if (const int number = std::stoi(name); number > 2) {
            fcntl(number, F_SETFD, FD_CLOEXEC);
        }
    }
    EXPECT_EQ(runScript(home, "exec ls /proc/self/fd").output, "0\n1\n2\n3\n");
    EXPECT_EQ(runScript(home, "cat && readlink /proc/self/fd/0").output, "/dev/null\n");
    EXPECT_EQ(runScript(home, "read -r _ _ _ _ _ session terminal _ </proc/$$/stat\n"
                              "[ $session = $$ ] && echo $terminal")
                  .output,
              "0\n");
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(runScript(home, "sed -n 's/SigBlk:.//p' /proc/self/status").output, "0000000000000000\n");
    const std::string ignored = runScript(home, "sed -n 's/SigIgn:.//p' /proc/self/status").output;
    // The C library keeps two signals beyond the ordinary ones for itself.
    EXPECT_EQ(std::stoull(ignored, nullptr, 16) & 0x7FFFFFFF, 0U) << ignored;
}

TEST(ToolCommand, KnowsHowAToolEndedEvenWhereChildrenAreIgnored) {
    // Programs started by some launchers inherit this, and waiting for a child then fails.
    std::signal(SIGCHLD, SIG_IGN);
    const TempHome home;
    EXPECT_EQ(runScript(home, "exit 3").status, 3);
    const ToolRun killed = runScript(home, "exec >/dev/null 2>&1; kill -KILL $$");
    EXPECT_EQ(killed.status, 128 + SIGKILL);
    EXPECT_FALSE(killed.wasEndedByUs);
    struct sigaction forgetting = {};
    forgetting.sa_flags = SA_NOCLDWAIT;
    sigaction(SIGCHLD, &forgetting, nullptr);
    EXPECT_EQ(runScript(home, "true").status, 255);
    std::signal(SIGCHLD, SIG_DFL);
}

TEST(ToolCommand, KeepsTheBeginningAndTheEndOfALongOutput) {
    const TempHome home;
    const std::string zeros = "head -c " + std::to_string(mostOutput) + " /dev/zero";
    EXPECT_EQ(runScript(home, zeros).output, std::string(mostOutput, '\0'));
    const std::string cut = runScript(home, "echo first; " + zeros + "; echo last").output;
    EXPECT_EQ(cut.size(), mostOutput + std::string_view("\n…\n").size());
    EXPECT_THAT(cut, StartsWith("first\n"));
    EXPECT_EQ(cut.substr(std::size_t{64} * 1024, 6), std::string("\n…\n\0", 6));
    EXPECT_THAT(cut, EndsWith(std::string("\0last\n", 6)));
}

TEST(ToolCommand, StopsAToolThatWritesForever) {
    const TempHome home;
    pid_t process = 0;
    const ToolRun run = runUntilReady(home, "yes | head -c 300000000; echo $$ >ready; exec yes", process);
    EXPECT_TRUE(run.wasEndedByUs);
    EXPECT_EQ(run.status, 128 + SIGTERM);
    EXPECT_LE(run.output.size(), mostOutput + 5);
    EXPECT_THAT(run.output, HasSubstr("y\n…\n"));
}

TEST(ToolCommand, StopsAllThatAToolStartedAndWhatWouldNotListen) {
    using Case = std::tuple<std::string, int>;
    for (const auto& [script, status] :
         {Case{"echo $$ >ready; exec sleep 1000", 128 + SIGTERM}, Case{"polite & wait", 128 + SIGTERM},
          Case{"exec stubborn", 128 + SIGKILL}, Case{"stubborn >/dev/null 2>&1 & wait", 128 + SIGTERM}}) {
        const TempHome home;
        home.program(".local/bin/stubborn", "trap '' TERM; echo $$ >ready; exec sleep 1000");
        home.program(".local/bin/polite", "trap 'touch asked' TERM; sleep 1000 & echo $$ >ready; wait");
        pid_t process = 0;
        const ToolRun run = runUntilReady(home, script, process);
        EXPECT_TRUE(run.wasEndedByUs) << script;
        EXPECT_EQ(run.status, status) << script;
        EXPECT_TRUE(endsSoon(process)) << script;
        EXPECT_EQ(platform::kindOf(home.path("asked")).has_value(), script.starts_with("polite"));
    }
    std::stop_source stop;
    stop.request_stop();
    const TempHome home;
    EXPECT_TRUE(runScript(home, "touch " + home.path("started"), stop.get_token()).wasEndedByUs);
    EXPECT_FALSE(platform::kindOf(home.path("started")));
}

TEST(ToolCommand, DoesNotWaitForWhatAToolLeavesBehind) {
    const TempHome home;
    const ToolRun run = runScript(home, "sleep 100 & echo $!");
    EXPECT_EQ(run.status, 0);
    EXPECT_FALSE(run.wasEndedByUs);
    const pid_t left = std::stoi(run.output);
    EXPECT_TRUE(isRunning(left));
    kill(left, SIGKILL);
    const std::string late =
        runScript(home, "(while kill -0 $$ 2>&-; do :; done; echo late) & echo early").output;
    EXPECT_EQ(late, "early\nlate\n");
}

TEST(ToolCommand, WorksInTheHomeInHandWhateverTheEnvironmentSays) {
    // A cleanup of another home emptied the caches of whoever had started it.
    const TempHome home;
    const std::string own = getenv("HOME") == nullptr ? "/" : getenv("HOME");
    for (const char* name : {"HOME", "XDG_CACHE_HOME", "UV_CACHE_DIR", "npm_config_cache", "NPM_CONFIG_CACHE",
                             "Npm_Config_Prefix", "PIP_CACHE_DIR", "DOCKER_HOST"}) {
        ASSERT_EQ(setenv(name, "/elsewhere", 1), 0);
    }
    ASSERT_EQ(setenv("XDG_RUNTIME_DIR", "/run/kept", 1), 0);
    const std::string output = "\n" + runTool({"/usr/bin/env"}, home.path()).output;
    ASSERT_EQ(setenv("HOME", own.c_str(), 1), 0);
    EXPECT_THAT(output, HasSubstr("\nHOME=" + home.path() + "\n"));
    EXPECT_THAT(output, Not(HasSubstr("=/elsewhere")));
    EXPECT_THAT(output, HasSubstr("XDG_RUNTIME_DIR=/run/kept\n"));
}
