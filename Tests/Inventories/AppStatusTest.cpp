#include "LumoCore/Inventories/AppStatus.h"

#include <gtest/gtest.h>

using namespace lumo;
using platform::RunningProcess;

namespace {

const std::vector<InstalledApp> installed{
    {"Chrome Display", "com.google.Chrome", "/Applications/Chrome File.app"},
    {"Tool Display", "com.a.tool", "/Applications/Tool File.app"},
    {"Fox", "org.fox.Fox", "/p/org.fox.Fox.desktop"}};
const std::vector<DesktopEntry> entries{
    {"org.fox.Fox", "El Zorro", "/p/org.fox.Fox.desktop", "fox-bin"},
    {"com.docker.docker", "Docker del escritorio", "/p/d.desktop", ""},
    {"launched", "Launched", "/p/launched.desktop", ""},
    {"google-chrome", "Chrome", "/p/g.desktop", "google-chrome-stable", "/opt/google/chrome"}};

AppStatus with(std::vector<RunningProcess> processes) {
    return {installed, entries, std::move(processes)};
}

} // namespace

TEST(AppStatus, KnowsARunningApplicationByProcessProgramOrUnit) {
    using Case = std::tuple<const char*, RunningProcess, const char*, bool>;
    for (const auto& [about, process, bundleID, isRunning] : {
             Case{"a known process", {"chrome", "", ""}, "com.google.Chrome", true},
             Case{"called by a known name", {"ld.so", "google-chrome", ""}, "com.google.Chrome", true},
             Case{"a backend without a window", {"com.docker.backend", "", ""}, "com.docker.docker", true},
             Case{"a longer name is another program", {"chrome-remote", "", ""}, "com.google.Chrome", false},
             Case{"a known process is one application's", {"chrome", "", ""}, "com.moonshot.kimichat", false},
             Case{"the entry's program", {"fox-bin", "", ""}, "org.fox.Fox", true},
             Case{"called as the entry's program", {"", "fox-bin", ""}, "org.fox.Fox", true},
             Case{"its name alone does not count", {"Fox", "El Zorro", ""}, "org.fox.Fox", false},
             Case{"the desktop's unit", {"python3.11", "", "launched"}, "launched", true},
             Case{"a unit without an entry", {"", "", "com.a.tool"}, "com.a.tool", true},
             Case{"another unit", {"", "", "launched-2"}, "launched", false},
             Case{"an entry that names no program", {"", "", ""}, "launched", false},
             // A browser that a script had started under another name went unnoticed.
             Case{"a program of the folder", {"x", "x", "", "/opt/google/chrome/x"}, "google-chrome", true},
             Case{"the same by the catalogue",
                  {"x", "", "", "/opt/google/chrome/x"},
                  "com.google.Chrome",
                  true},
             Case{"a known process by the desktop's id", {"chrome", "", ""}, "google-chrome", true},
             Case{"the unit of a known one", {"", "", "google-chrome"}, "com.google.Chrome", true},
             Case{"another folder", {"x", "", "", "/opt/google/chromecast/x"}, "google-chrome", false},
         }) {
        EXPECT_EQ(with({{"init", "init", ""}, process}).isRunning(bundleID), isRunning) << about;
    }
    EXPECT_FALSE(with({}).isRunning("com.google.Chrome"));
    // Every process that no desktop started counted as the application without an identifier.
    EXPECT_FALSE(with({{"init", "init", ""}}).isRunning(""));
}

TEST(AppStatus, NamesARunningApplicationThenAKnownThenAnInstalledOne) {
    EXPECT_EQ(with({{"docker-desktop", "", ""}}).name("com.docker.docker"), "Docker del escritorio");
    EXPECT_EQ(with({}).name("com.docker.docker"), "Docker Desktop");
    EXPECT_EQ(AppStatus({}, {}, {}).name("com.docker.docker"), "Docker Desktop");
    EXPECT_EQ(with({}).name("com.google.Chrome"), "Google Chrome");
    EXPECT_EQ(with({}).name("org.fox.Fox"), "El Zorro");
    EXPECT_EQ(with({}).name("com.a.tool"), "Tool File");
    // Known by its processes only.
    EXPECT_EQ(with({}).name("ai.perplexity.macv3"), "ai.perplexity.macv3");
    EXPECT_EQ(with({}).name("com.a.unknown"), "com.a.unknown");
}
