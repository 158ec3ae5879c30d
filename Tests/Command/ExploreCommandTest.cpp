#include "Tests/support/RunTarvo.h"
#include "Tests/support/TerminalRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
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
    fs::create_hard_link(home.path("Videos/other.mkv"), home.path("kept"));
    const Pane pane(home, 80, 20);
    pane.run("cd");
    explore(pane, home, "");
    pane.waitFor("Videos/");
    pane.type({"Enter"});
    EXPECT_THAT(pane.waitFor("large.mkv"), HasSubstr("~/Videos"));
    pane.type({"?"});
    pane.waitFor("set aside for 7 days");
    pane.type({"x", "Space", "Space", "d"});
    // It told nowhere that what was set aside still takes its space, nor that a name elsewhere keeps it.
    EXPECT_THAT(pane.waitFor("[y/N]"),
                AllOf(HasSubstr("Set 2 items (5 MB) aside?"), HasSubstr("~/Videos/other.mkv"),
                      HasSubstr("Deleting it frees 3 MB; “tarvo empty” does it now.")));
    EXPECT_TRUE(fs::exists(home.path("Videos/large.mkv")));
    pane.type({"n"});
    pane.waitFor("nothing was touched");
    pane.type({"d"});
    pane.waitFor("[y/N]");
    pane.type({"y"});
    pane.waitFor("“tarvo empty” deletes it now");
    EXPECT_THAT(pane.shown(), Not(AnyOf(HasSubstr("large.mkv"), HasSubstr("other.mkv"))));
    EXPECT_FALSE(fs::exists(home.path("Videos/large.mkv")) || fs::exists(home.path("Videos/other.mkv")));
    pane.type({"u"});
    pane.waitFor("Put this back?");
    pane.type({"y"});
    pane.waitWithout("Put this back?"); // Which names it as well.
    pane.waitFor("large.mkv");
    EXPECT_EQ(contentOf(home.path("Videos/large.mkv")).size(), 3000000U);
    pane.type({"/", "SMA"});
    EXPECT_THAT(pane.waitWithout("large.mkv"), HasSubstr("small"));
    pane.type({"Escape"});
    pane.waitFor("large.mkv");
    pane.type({"i"});
    pane.waitFor("A file of your own");
    // What others had removed was called a folder of one's own, and stayed in the list.
    fs::remove(home.path("Videos/large.mkv"));
    pane.type({"x", "i"});
    EXPECT_THAT(pane.waitFor("large.mkv: it is no longer there"), Not(HasSubstr("large.mkv\n")));
    home.file("later", 1000000);
    pane.type({"h", "r"}); // At the top one was sent into a folder instead.
    pane.waitFor("later");
    pane.type({"q"});
    pane.waitFor("rc=0"); // What was typed says "rc=$?".
    expectAsBefore(pane, home);
}

TEST_F(ExploreCommand, MarksNothingThatIsNeverTouched) {
    const TempHome home;
    home.file("Thesis/draft", 3000000);
    ASSERT_EQ(runTarvo(home, {"settings", "set", "carpetasProtegidas", home.path("Thesis")}).exitCode, 0);
    const Pane pane(home, 80, 20);
    pane.run("cd");
    explore(pane, home, "");
    pane.waitFor("Thesis/  (never touched)");
    pane.type({"Space"});
    EXPECT_THAT(pane.waitFor("Thesis: it's in a folder protected in Settings"), Not(HasSubstr("marked")));
    pane.type({"q"});
    pane.waitFor("rc=0");
}

namespace {

/// Explores on a terminal of its own, in English.
class Exploring final {
  public:
    Exploring(const TempHome& home, Arguments words, const std::string& terminal = "xterm-256color",
              const std::string& locale = "C.UTF-8", unsigned short columns = 80, unsigned short rows = 24)
        : run(tarvoProgram(), withCommand(std::move(words)),
              {"HOME=" + home.path(), "TERM=" + terminal, "LC_ALL=" + locale, "PATH=/usr/bin:/bin"}, columns,
              rows) {}

    TerminalRun run;

  private:
    static Arguments withCommand(Arguments words) {
        words.insert(words.begin(), {"--idioma", "en", "explore"});
        return words;
    }
};

constexpr std::string_view enters = "\x1b[?1049h";
constexpr std::string_view leaves = "\x1b[?1049l";
constexpr std::string_view hidesCursor = "\x1b[?25l";
constexpr std::string_view showsCursor = "\x1b[?25h";

/// The last that was written left the whole screen and showed the cursor again.
void expectLeft(const std::string& shown, const TerminalRun& run, const std::string& after) {
    EXPECT_NE(shown.rfind(leaves), std::string::npos) << after;
    EXPECT_TRUE(shown.rfind(enters) == std::string::npos || shown.rfind(enters) < shown.rfind(leaves))
        << after;
    EXPECT_NE(shown.rfind(showsCursor), std::string::npos) << after;
    EXPECT_TRUE(shown.rfind(hidesCursor) == std::string::npos ||
                shown.rfind(hidesCursor) < shown.rfind(showsCursor))
        << after;
    EXPECT_TRUE(run.isSetAsBefore()) << after;
}

} // namespace

TEST(ExploreTerminal, IsAsBeforeWhateverEndsTheExplorer) {
    const TempHome home;
    home.file("Videos/large.mkv", 3000000);
    struct Ending {
        std::string name;
        std::string keys;
        int signal;
        int code;
    };
    for (const Ending& ending :
         {Ending{"q", "q", 0, 0}, Ending{"Ctrl-C", "\x03", 0, 130},
          Ending{"Ctrl-\\", "\x1c", 0, 128 + SIGQUIT}, Ending{"TERM", "", SIGTERM, 130},
          Ending{"HUP", "", SIGHUP, 130}, Ending{"SEGV", "", SIGSEGV, 128 + SIGSEGV},
          Ending{"ABRT", "", SIGABRT, 128 + SIGABRT}}) {
        Exploring exploring(home, {home.path("Videos")});
        exploring.run.waitFor("large.mkv");
        EXPECT_FALSE(exploring.run.isSetAsBefore()) << "it reads keys one by one";
        ending.signal != 0 ? exploring.run.signal(ending.signal) : exploring.run.type(ending.keys);
        expectLeft(exploring.run.waitForEnd(ending.code), exploring.run, ending.name);
        ASSERT_FALSE(HasFailure()) << "each wait for what never comes takes long";
    }
}

TEST(ExploreTerminal, IsAsBeforeWhileItIsStoppedAndDrawnAnewAfterwards) {
    // Ctrl-Z was lost while the screen was drawn, as it is here: the name is seen before the drawing has
    // ended.
    const TempHome home;
    home.file("Videos/large.mkv", 3000000);
    Exploring exploring(home, {home.path("Videos")});
    exploring.run.waitFor("large.mkv");
    exploring.run.type("\x1a");
    expectLeft(exploring.run.waitForEnd(128 + SIGTSTP), exploring.run, "Ctrl-Z");
    exploring.run.goOn();
    exploring.run.waitFor(enters);
    exploring.run.waitFor("large.mkv");
    exploring.run.type("q");
    expectLeft(exploring.run.waitForEnd(0), exploring.run, "q after Ctrl-Z");
}

TEST(ExploreTerminal, MayBePoorAndOfAnySizeAndIsToldNothingByNames) {
    const TempHome home;
    home.fileWith("saved",
                  R"([1,2,{},[{"name":"/srv"},
{"name":")"
                  "\xFF"
                  R"(\u001b[31m\u0007.mkv","dsize":90000000,"mtime":1000000000},{"name":"e\nf","dsize":8000},
{"name":"\u00f1and\u00fa","dsize":7000,"mtime":4000000000},[{"name":"shut","read_error":true}]]])");
    Exploring exploring(home, {home.path("saved")}, "vt100", "C", 60, 12);
    TerminalRun& run = exploring.run;
    std::string shown = run.waitFor("q: quit");
    EXPECT_THAT(shown, AllOf(HasSubstr(R"(\xFF\x1B[31m\x07.mkv)"), HasSubstr(R"(e\nf)"), HasSubstr("nandu"),
                             HasSubstr("!"), HasSubstr("shut/  (could not be read)"), HasSubstr(" - /srv ")));
    run.type("d");
    shown += run.waitFor("an export can only be looked at");
    run.type("a");
    shown += run.waitFor("unchanged for 6 months: 90 MB");
    run.type(" "); // How much was marked was cut for the sake of the order.
    shown += run.waitFor("1 marked: 90 MB");
    run.type("aaa");
    run.resize(24, 12); // Where a message took more than a line, its middle was left out.
    run.type("d");
    shown += run.waitFor("looked at");
    run.type("k");
    run.resize(100, 20);
    shown += run.waitFor("Space: mark");
    for (const auto& [columns, rows] :
         {std::pair<unsigned short, unsigned short>{20, 3}, {1, 1}, {200, 50}}) {
        run.resize(columns, rows);
        run.type("jk?x");
    }
    shown += run.waitFor("Space: mark");
    run.type("q");
    shown += run.waitForEnd(0);
    EXPECT_TRUE(run.isSetAsBefore());
    // Without a screen of its own the next prompt was written over the last line.
    EXPECT_GT(shown.rfind("\x1b[J"), shown.rfind("q: quit"));
    EXPECT_TRUE(std::ranges::all_of(shown, [](char c) { return static_cast<unsigned char>(c) < 128; }));
    EXPECT_THAT(shown, Not(AnyOf(HasSubstr("\x1b[31m"), HasSubstr("\a"))));
}

TEST(ExploreExport, IsReadByOthersAndNothingElseNeedsNoTerminal) {
    const TempHome home;
    home.files({"a/\xFF\x1B[31m", "b"}, 20000);
    home.hardLink("c", "b");
    home.fileWith("broken", "[1,2,{},[{\"name\":\"/\"}");
    for (const Arguments& wrong :
         {Arguments{"explore"}, Arguments{"explore", home.path("missing")},
          Arguments{"explore", "--export", "-", home.path("broken")}, Arguments{"explore", "--older", "x"},
          Arguments{"explore", "--older", "9", "--export", "-"}}) {
        EXPECT_EQ(runTarvo(home, wrong).exitCode, 2) << PrintToString(wrong);
    }
    const Ran written = runTarvo(home, {"explore", "--export", "-"});
    EXPECT_EQ(written.exitCode, 0);
    EXPECT_THAT(written.output, AllOf(HasSubstr("\xFF\\u001b[31m"), HasSubstr("\"hlnkc\":true,\"nlink\":2")));
    home.fileWith("ours", written.output);
    const Ran ncdu = runProgram("ncdu", {"-0", "-f", home.path("ours"), "-o", home.path("theirs")},
                                {"PATH=/usr/bin:/bin", "TERM=vt100"});
    if (ncdu.exitCode == 127) {
        GTEST_SKIP() << "ncdu is not installed";
    }
    EXPECT_EQ(ncdu.exitCode, 0) << ncdu.output << ncdu.error;
    EXPECT_EQ(runTarvo(home, {"explore", "--export", home.path("again"), home.path("theirs")}).exitCode, 0);
    EXPECT_THAT(contentOf(home.path("again")),
                HasSubstr("\"name\":\"\xFF\\u001b[31m\",\"asize\":20000,\"dsize\":20480"));
}
