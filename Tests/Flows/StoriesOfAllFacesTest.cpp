#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "Platform/Clock.h"
#include "Platform/RunningProcesses.h"
#include "TarvoModel/Flows/Preferences.h"
#include "Tests/Flows/Faces.h"
#include "Tests/support/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <optional>
#include <thread>

using namespace tarvo;
using namespace tarvo::testing;
using ::testing::AllOf;
using ::testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

/// Each story is told once and happens through the command, the window and the tool server.
class Stories : public ::testing::TestWithParam<FaceKind> {
  protected:
    Stories() {
        home.file(cache, 3000000);
        home.file(own, 2000000);
    }

    [[nodiscard]] std::unique_ptr<Face> face(const std::string& spelling = {}) const {
        return faceOf(GetParam(), spelling.empty() ? home.path() : spelling);
    }
    [[nodiscard]] bool has(std::string_view name) const { return fs::exists(home.path(name)); }

    static constexpr const char* cache = ".npm/_npx/tool";
    static constexpr const char* own = ".cache/whisper/model";

    TempHome home;
};

const auto nothing = [] {};

} // namespace

TEST_P(Stories, WhatIsCleanedIsGoneAndWhatWasOnesOwnComesBack) {
    const auto user = face();
    EXPECT_THAT(user->clean(nothing), HasSubstr("3 MB freed and 2 MB in Recently Cleaned"));
    EXPECT_FALSE(has(cache) || has(own));
    EXPECT_THAT(user->undo(), HasSubstr("Restored 1 item from"));
    EXPECT_TRUE(has(own));
    EXPECT_FALSE(has(cache));
}

TEST_P(Stories, WhatIsProtectedWhileTheQuestionStandsStaysAndIsNamed) {
    // The command had read the preferences before it asked, and deleted what was protected since.
    const std::string said = face()->clean([&] {
        EXPECT_EQ(runProgram(tarvoProgram(), {"settings", "set", "carpetasProtegidas", home.path(".npm")},
                             {"HOME=" + home.path()})
                      .exitCode,
                  0);
    });
    EXPECT_TRUE(has(cache));
    EXPECT_FALSE(has(own)) << "the rest of what was agreed to";
    EXPECT_THAT(said, AllOf(HasSubstr("npx temporary packages"), HasSubstr("folder protected in Settings")));
}

TEST_P(Stories, AHomeBehindALinkIsTheSameHome) {
    // What was set aside by one spelling of the home could not be put back by the other.
    const TempHome elsewhere;
    const std::string link = elsewhere.link("home", home.path());
    face(link)->clean(nothing);
    EXPECT_FALSE(has(own));
    EXPECT_THAT(face()->undo(), HasSubstr("Restored 1 item from"));
    EXPECT_TRUE(has(own));
    // Nor did a folder that was protected by the other spelling.
    home.file(cache, 3000000);
    home.fileWith(".config/TarvoAI/preferencias.json",
                  R"({"carpetasProtegidas": [")" + home.path(".npm") + "\"]}");
    face(link)->clean(nothing);
    EXPECT_TRUE(has(cache));
}

TEST_P(Stories, OfABatchThatIsHalfGoneTheOtherHalfComesBack) {
    home.file(".cache/whisper/second", 1000000);
    const auto user = face();
    user->clean(nothing);
    for (const auto& held : fs::recursive_directory_iterator(lumo::OwnFiles::holding(home.path()))) {
        if (held.path().filename().string().ends_with("-second")) {
            fs::remove(held.path());
            break;
        }
    }
    const std::string said = user->undo();
    EXPECT_TRUE(has(own));
    EXPECT_FALSE(has(".cache/whisper/second"));
    EXPECT_THAT(said, HasSubstr("second")) << "what is neither held nor in its place";
}

TEST_P(Stories, OfTwoAtOnceTheSecondSaysWhoTheFirstIs) {
    std::unique_ptr<lumo::HomeLock> lock;
    const std::string said = face()->clean([&] {
        lock = std::make_unique<lumo::HomeLock>(
            lumo::HomeLock::take(lumo::PathGuard(home.path()),
                                 {.program = "somebody else", .now = lumo::platform::now()})
                .value());
    });
    EXPECT_THAT(said, HasSubstr("somebody else is changing this home folder"));
    EXPECT_TRUE(has(cache) && has(own));
}

TEST_P(Stories, ALogThatCannotBeWrittenCostsNothingThatIsOnesOwn) {
    // An item that moved while its line could not be written was nowhere to be found again.
    const std::string log = lumo::OwnFiles::historyLog(home.path());
    EXPECT_THAT(face()->clean([&] { fs::create_directories(log); }), HasSubstr("could not be written into"));
    EXPECT_FALSE(has(own));
    fs::remove(log);
    EXPECT_THAT(face()->undo(), HasSubstr("Restored 1 item from"));
    EXPECT_TRUE(has(own));
}

TEST_P(Stories, AProgramThatIsStartedBeforeTheAnswerKeepsItsCache) {
    home.file("Library/Caches/Google/Chrome/page", 4000000);
    home.program("opt/chrome/chrome", "#!/bin/sh\nsleep 60\n");
    std::optional<Child> chrome;
    fs::copy_file("/bin/sleep", home.path("opt/chrome/chrome"), fs::copy_options::overwrite_existing);
    const std::string said = face()->clean([&] {
        chrome.emplace(Arguments{home.path("opt/chrome/chrome"), "60"}, Arguments{});
        // For a moment it still has the name of whoever started it.
        while (std::ranges::none_of(lumo::platform::runningProcesses(),
                                    [](const auto& process) { return process.argumentZero == "chrome"; })) {
            std::this_thread::yield();
        }
    });
    EXPECT_TRUE(has("Library/Caches/Google/Chrome/page"));
    EXPECT_THAT(said, HasSubstr("quit Google Chrome first"));
}

std::string nameOf(const ::testing::TestParamInfo<FaceKind>& face) {
    constexpr std::array names{"Command", "Window", "ToolServer"};
    return names.at(static_cast<std::size_t>(face.param));
}

INSTANTIATE_TEST_SUITE_P(Faces, Stories,
                         ::testing::Values(FaceKind::command, FaceKind::window, FaceKind::toolServer),
                         nameOf);
