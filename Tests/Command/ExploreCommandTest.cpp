#include "Tests/support/RunTarvo.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;

namespace {

/// A terminal that can be read as text: a pane of tmux with a shell in it, for one test.
class Pane final {
  public:
    Pane(const TempHome& home, int columns, int rows) : socket_(home.path("socket")) {
        const Arguments words{"-f",          "/dev/null",
                              "new-session", "-d",
                              "-x",          std::to_string(columns),
                              "-y",          std::to_string(rows),
                              "-e",          "HOME=" + home.path(),
                              "-e",          "PS1=$ ",
                              "sh"};
        EXPECT_EQ(tmux(words).exitCode, 0);
    }
    ~Pane() { tmux({"kill-server"}); }
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    Ran tmux(Arguments words) const {
        words.insert(words.begin(), {"-S", socket_});
        return runProgram("tmux", words, {"LC_ALL=C.UTF-8", "PATH=/usr/bin:/bin", "SHELL=/bin/sh"});
    }

    /// Keys by tmux's names; text that is none of these is typed.
    void type(const Arguments& keys) const {
        Arguments words{"send-keys"};
        words.insert(words.end(), keys.begin(), keys.end());
        tmux(words);
    }
    void run(const std::string& line) const { type({line, "Enter"}); }
    [[nodiscard]] std::string shown() const { return tmux({"capture-pane", "-p"}).output; }
    [[nodiscard]] std::string told(const std::string& format) const {
        return tmux({"display-message", "-p", format}).output;
    }

    /// Waits until the screen is as wanted; what it shows then, or in the end.
    template <class Wanted>
    std::string waitUntil(Wanted&& isWanted) const {
        const auto end = std::chrono::steady_clock::now() + hangLimit;
        std::string now = shown();
        while (!isWanted(now) && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            now = shown();
        }
        EXPECT_TRUE(isWanted(now)) << now;
        return now;
    }
    std::string waitFor(const std::string& text) const {
        return waitUntil([&](const std::string& now) { return now.find(text) != std::string::npos; });
    }
    std::string waitWithout(const std::string& text) const {
        return waitUntil([&](const std::string& now) { return now.find(text) == std::string::npos; });
    }

  private:
    std::string socket_;
};

/// Starts exploring; how the terminal is set is kept before and afterwards.
void explore(const Pane& pane, const TempHome& home, const std::string& words,
             const std::string& variables = "LC_ALL=C.UTF-8") {
    fs::remove(home.path("after"));
    pane.run("stty -g > before; " + variables + " " + tarvoProgram() + " --idioma en explore " + words +
             "; echo rc=$?; stty -g > now; mv now after");
}

/// The terminal is as it was before.
void expectAsBefore(const Pane& pane, const TempHome& home) {
    pane.waitUntil([&](const std::string&) { return fs::exists(home.path("after")); });
    EXPECT_EQ(pane.told("#{alternate_on} #{cursor_flag} #{keypad_cursor_flag}"), "0 1 0\n");
    EXPECT_EQ(contentOf(home.path("before")), contentOf(home.path("after")));
}

bool hasTmux() {
    return runProgram("tmux", {"-V"}, {"PATH=/usr/bin:/bin"}).exitCode == 0;
}

class ExploreCommand : public Test {
  protected:
    void SetUp() override {
        if (!hasTmux()) {
            GTEST_SKIP() << "tmux is not installed";
        }
    }
};

} // namespace

TEST_F(ExploreCommand, SetsAsideWhatIsMarkedAndPutsItBackAndLeavesTheTerminalAsItWas) {
    const TempHome home;
    home.file("Videos/large.mkv", 3000000);
    home.file("Videos/other.mkv", 2000000);
    home.file("Videos/small", 5000);
    const Pane pane(home, 80, 20);
    pane.run("cd");
    explore(pane, home, "");
    pane.waitFor("Videos/");
    pane.type({"Enter"});
    EXPECT_THAT(pane.waitFor("large.mkv"), HasSubstr("~/Videos"));
    pane.type({"?"});
    pane.waitFor("set the marked aside");
    pane.type({"x", "Space", "Space", "d"});
    EXPECT_THAT(pane.waitFor("[y/N]"),
                AllOf(HasSubstr("Set 2 items (5 MB) aside?"), HasSubstr("~/Videos/other.mkv")));
    EXPECT_TRUE(fs::exists(home.path("Videos/large.mkv")));
    pane.type({"n"});
    pane.waitFor("nothing was touched");
    pane.type({"d"});
    pane.waitFor("[y/N]");
    pane.type({"y"});
    EXPECT_THAT(pane.waitWithout("large.mkv"), Not(HasSubstr("other.mkv")));
    EXPECT_FALSE(fs::exists(home.path("Videos/large.mkv")) || fs::exists(home.path("Videos/other.mkv")));
    pane.type({"u"});
    pane.waitFor("Put this back?");
    pane.type({"y"});
    pane.waitFor("large.mkv");
    EXPECT_EQ(contentOf(home.path("Videos/large.mkv")).size(), 3000000U);
    pane.type({"/", "SMA"});
    EXPECT_THAT(pane.waitWithout("large.mkv"), HasSubstr("small"));
    pane.type({"Escape"});
    pane.waitFor("large.mkv");
    pane.type({"i"});
    pane.waitFor("A file of your own");
    pane.type({"x", "q"});
    EXPECT_THAT(pane.waitFor("rc="), HasSubstr("rc=0"));
    expectAsBefore(pane, home);
}
