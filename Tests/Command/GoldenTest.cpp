#include "Tests/support/Golden.h"
#include "LumoAI/ExplanationCache.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/History/SnapshotStore.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/ScanReport.h"
#include "TarvoModel/Flows/Preferences.h"
#include "Tests/support/RunTarvo.h"

#include <gtest/gtest.h>

using namespace lumo;
using namespace tarvo::testing;

namespace {

const Date noon = *dateFromIsoText("2025-03-14T12:00:00Z");

/// With one of everything: each cleanup, a project that has slept, folders that nobody knows.
ScanReport madeUpReport(const TempHome& home) {
    const auto usage = [](std::int64_t bytes) {
        return Usage{.allocatedBytes = bytes, .apparentBytes = bytes, .fileCount = 3, .lastModified = noon};
    };
    const std::string project = home.path("code/shop");
    ScanReport report{.home = home.path(), .scannedAt = noon, .durationSeconds = 1.5};
    report.volume = {.totalBytes = 500000000000, .availableBytes = 38200000000};
    const auto find = [&](std::string_view id, const char* path, std::int64_t bytes) {
        const auto rules = RuleCatalog::inLanguage(Language::es);
        const auto rule = std::ranges::find(rules, id, &Rule::id);
        report.findings.push_back({rule->id,
                                   rule->name,
                                   rule->category,
                                   rule->safety,
                                   rule->explanation,
                                   rule->cleanup,
                                   {home.path(path)},
                                   usage(bytes),
                                   rule->closeFirst});
    };
    find("photos-library", "Pictures/P.photoslibrary", 90000000000);
    find("puppeteer-browsers", ".cache/puppeteer", 3000000000);
    find("whisper", ".cache/whisper", 1200000000);
    find("trash", ".Trash", 800000000);
    report.projects = {{"code/shop",
                        project,
                        usage(2500000000),
                        {{"node_modules", "npm install", {project + "/node_modules"}, usage(2000000000)}},
                        noon}};
    report.unclassified = {{home.path("raw\xE9"), usage(5000000000)}, {home.path(".tool"), usage(700000000)}};
    return report;
}

CleanupOutcome madeUpOutcome(const TempHome& home) {
    return {.id = "screenshots",
            .title = "Capturas",
            .status = CleanupStatus::failed,
            .message = "a.png: ocupado",
            .freedBytes = 4096,
            .trashedBytes = 2000000,
            .restorable = {{{home.path("Desktop/b\xE9.png"),
                             OwnFiles::holding(home.path()) + "/20250314-120000/UUID-b\xE9.png"}}},
            .date = noon,
            .caller = "Agent"};
}

/// A home with everything that is ever stored, through those who store it.
std::string furnish(const TempHome& home) {
    EXPECT_TRUE(HistoryLog::append(madeUpOutcome(home), OwnFiles::historyLog(home.path())));
    const ScanReport report = madeUpReport(home);
    DiskSnapshot before = DiskSnapshot::from(report);
    before.date = noon - std::chrono::hours(48);
    before.sizes["puppeteer-browsers"] -= 1000000000;
    for (const DiskSnapshot& snapshot : {before, DiskSnapshot::from(report)}) {
        EXPECT_TRUE(SnapshotStore(home.path()).append(snapshot, 60));
    }
    ExplanationCache explanations = ExplanationCache::ofHome(home.path());
    explanations.store({.path = home.path(".tool"),
                        .sizeBytes = 700000000,
                        .whatItIs = "Modelos de voz",
                        .owner = "Voces",
                        .safety = Safety::review,
                        .suggestedSafety = Safety::safe,
                        .reason = "Se descargan.",
                        .howToFree = "Desinstala la herramienta.",
                        .note = "La IA lo cree seguro.",
                        .source = Explanation::Source::ai,
                        .createdAt = noon},
                       Language::es);
    EXPECT_TRUE(explanations.save());
    auto preferences = tarvo::Preferences::load(home.path());
    EXPECT_TRUE(preferences.set(tarvo::preference::protectedFolders, {"/srv/keep"}));
    EXPECT_TRUE(preferences.set(tarvo::preference::textScale, 1.25));
    EXPECT_TRUE(preferences.set(tarvo::preference::lastWeeklyCleanup, noon));
    return home.fileWith("report.json", dumpJson(encode(report), JsonLayout::indented) + "\n");
}

/// The same on every machine.
std::string withoutPlace(std::string text, const TempHome& home) {
    for (auto at = text.find(home.path()); at != std::string::npos; at = text.find(home.path(), at)) {
        text.replace(at, home.path().size(), "/HOME");
    }
    return text;
}

/// What the command answers to each of the lines, one after the other.
std::string answers(const TempHome& home, const std::vector<std::string>& lines,
                    const std::string& language) {
    std::string all;
    for (const std::string& line : lines) {
        const Ran ran = runTarvo(home, wordsIn(line), {"TARVO_IDIOMA=" + language, "TZ=UTC"});
        all += "$ tarvo " + line + "\n" + ran.output + ran.error;
        all += ran.exitCode == 0 ? "\n" : "exit " + std::to_string(ran.exitCode) + "\n\n";
    }
    return withoutPlace(std::move(all), home);
}

} // namespace

TEST(Golden, HelpOfEveryCommand) {
    const TempHome home;
    std::vector<std::string> lines{"--help"};
    for (const char* command : {"scan",
                                "plan",
                                "clean",
                                "find",
                                "explore",
                                "holding",
                                "undo",
                                "restore",
                                "empty",
                                "archive",
                                "history",
                                "rules",
                                "apps",
                                "growth",
                                "folder",
                                "explain",
                                "summary",
                                "ask",
                                "space",
                                "settings",
                                "settings get",
                                "settings set",
                                "settings unset",
                                "agents",
                                "agents status",
                                "agents connect",
                                "agents disconnect",
                                "agents snippets",
                                "map",
                                "weekly",
                                "weekly run",
                                "mcp"}) {
        lines.push_back(std::string(command) + " --help");
    }
    for (const std::string language : {"es", "en"}) {
        expectGolden("help-" + language + ".txt", answers(home, lines, language));
    }
}

TEST(Golden, TablesOfAMadeUpHome) {
    const TempHome home;
    furnish(home);
    home.file("Music/a.flac", 3000000);
    home.file("Music/b/c.flac", 1000000);
    for (const char* file : {"Music/a.flac", "Music/b/c.flac"}) {
        home.setModified(file, 1741953600);
    }
    const std::vector<std::string> lines{"plan --report report.json",
                                         "plan --report report.json --only whisper",
                                         "clean --report report.json --dry-run",
                                         "holding",
                                         "history",
                                         "growth --report report.json",
                                         "summary --report report.json",
                                         "folder Music",
                                         "settings",
                                         "ask --topics",
                                         "ask docker",
                                         "restore nothing",
                                         "frobnicate"};
    std::vector<std::string> there;
    for (std::string line : lines) {
        for (const std::string name : {"report.json", "Music"}) {
            if (const auto at = line.find(name); at != std::string::npos) {
                line.replace(at, name.size(), home.path(name));
            }
        }
        there.push_back(line);
    }
    for (const std::string language : {"es", "en"}) {
        expectGolden("tables-" + language + ".txt", answers(home, there, language));
    }
}

TEST(Golden, FindsOfAMadeUpHome) {
    const TempHome home;
    // What has no extension, and what has been opened since, is named so.
    for (const char* name : {"Videos/film.mkv", "Downloads/film copy.mkv", "disk", "raw\xE9.iso"}) {
        home.file(name, name[0] == 'r' ? 3000000 : 2000000);
        home.setModified(name, 1741953600);
    }
    home.fileWith("disk", std::string(2500000, 'd'));
    home.setModified("disk", 1741953600);
    home.fileWith("Downloads/setup.run", std::string(1500000, 'r'));
    home.setModified("Downloads/setup.run", 1741953600);
    const std::vector<std::string> lines{"find large --min 1000000",
                                         "find large duplicates --min 1000000 --ids",
                                         "find installers cloud",
                                         "find duplicates --min 1000000 --json",
                                         "plan --item archivo:disk",
                                         "clean --item archivo:disk --dry-run",
                                         "clean --item archivo:gone --yes",
                                         "find nonsense",
                                         "find --min ten",
                                         "find --pick"};
    for (const std::string language : {"es", "en"}) {
        expectGolden("find-" + language + ".txt", answers(home, lines, language));
    }
}

TEST(Golden, FilesThatAreStored) {
    const TempHome home;
    const std::string report = furnish(home);
    std::string all;
    for (const std::string& path :
         {OwnFiles::historyLog(home.path()), OwnFiles::snapshots(home.path()),
          OwnFiles::explanations(home.path()), OwnFiles::preferences(home.path()), report}) {
        all += path + ":\n" + contentOf(path) + "\n";
    }
    all += "plan:\n" + runTarvo(home, {"plan", "--json", "--report", report}).output;
    expectGolden("stored.txt", withoutPlace(std::move(all), home));
}
