#include "LumoCore/Scanning/Scanner.h"
#include "LumoCore/Inventories/AppCaches.h"
#include "LumoCore/Rules/RuleCatalog.h"
#include "LumoCore/Scanning/FolderLocation.h"
#include "LumoCore/Scanning/ProjectArtifacts.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

Rule ruleAt(std::string id, std::string path) {
    Rule rule;
    rule.id = std::move(id);
    rule.safety = Safety::safe;
    rule.locator = locator::Path{std::move(path)};
    return rule;
}

ScanReport scan(const TempHome& home, const std::vector<Rule>& rules, ScanOptions options = {},
                ScanContext context = {}) {
    options.home = home.path();
    return Scanner::scan(rules, options, context).value();
}

} // namespace

TEST(Scanner, ListsFindingsLargestFirstAndCreditsASharedPathToEveryRule) {
    const TempHome home;
    home.file("small/f", 10000);
    home.file("large/f", 300000);
    const ScanReport report = scan(home, {ruleAt("first", "~/small"), ruleAt("missing", "~/nowhere"),
                                          ruleAt("big", "~/large"), ruleAt("second", "~/small")});
    EXPECT_THAT(eachOf(report.findings, &Finding::ruleID), ElementsAre("big", "first", "second"));
    EXPECT_EQ(report.findings[1].usage, report.findings[2].usage);
    EXPECT_EQ(report.findings[0].usage.allocatedBytes,
              allocatedBytes(home.path("large")) + allocatedBytes(home.path("large/f")));
}

TEST(Scanner, SumsAFindingOverItsPathsAndDropsEmptyOnes) {
    const TempHome home;
    home.file("caches/a.updater", 5000);
    home.file("caches/b.updater", 7000);
    home.setModified("caches/a.updater", 1500000000);
    home.setModified("caches/b.updater", 1600000000);
    home.file("empty");
    // What a cleanup had emptied came back as "<1 MB", ticked, by the blocks of its folders.
    home.folder("emptied/within");
    Rule rule = ruleAt("updaters", "");
    rule.locator = locator::Children{"~/caches", {"*.updater"}};
    const ScanReport report = scan(home, {rule, ruleAt("empty", "~/empty"), ruleAt("emptied", "~/emptied")});
    ASSERT_THAT(eachOf(report.findings, &Finding::ruleID), ElementsAre("updaters"));
    EXPECT_THAT(report.findings[0].paths,
                ElementsAre(home.path("caches/a.updater"), home.path("caches/b.updater")));
    EXPECT_EQ(report.findings[0].usage.apparentBytes, 12000);
    EXPECT_EQ(report.findings[0].usage.lastModified, Date(std::chrono::seconds(1600000000)));
}

TEST(Scanner, ReportsCachesOfApplicationsFromFiftyMegabytesUp) {
    const TempHome home;
    // One byte less or more than the bound cannot be staged: disks allocate whole blocks.
    home.file("just-below", 49995776);
    home.file("just-above", 50003968);
    home.file("given/file", 10);
    ScanContext context;
    // The rules were located once more to find out what they have taken already.
    std::vector<std::string> located;
    context.findAppCaches = [&](const std::vector<std::string>& paths, const std::string&) {
        located = paths;
        return std::vector{ruleAt("cache-app:below", "~/just-below"),
                           ruleAt("cache-app:above", "~/just-above")};
    };
    EXPECT_THAT(
        eachOf(scan(home, {ruleAt("none", "~/none"), ruleAt("given", "~/given")}, {}, context).findings,
               &Finding::ruleID),
        ElementsAre("cache-app:above", "given"));
    EXPECT_THAT(located, ElementsAre(home.path("given")));
    EXPECT_THAT(
        eachOf(scan(home, {}, {.home = {}, .discoverAppCaches = false}, context).findings, &Finding::ruleID),
        IsEmpty());
}

TEST(Scanner, ASecondPassFindsWhatAScanAloneFindsAndMeasuresAgainOnlyWhatMayHaveChangedItsPlace) {
    // Every rule and every unknown folder was walked twice in a row, later still those with a hard link in
    // them.
    const TempHome home;
    for (int number = 0; number < 200; ++number) {
        home.file("steady/in/" + std::to_string(number), 10);
    }
    home.file("code/app/package.json", 5000);
    home.file("linked/file", 9000);
    home.hardLink("code/app/file", "linked/file");
    home.hardLink(".unknown/file", "linked/file");
    home.file(".other/file", 3000);
    home.hardLink("steady/file", "linked/file");
    home.hardLink("steady/again", "linked/file");
    const std::vector<Rule> rules{ruleAt("steady", "~/steady"), ruleAt("linked", "~/linked"),
                                  ruleAt("grows", "~/grows")};
    home.file("grows/first", 10);
    ScanMemory memory;
    const ScanOptions quick{.home = {}, .includeProjects = false, .unclassifiedMinimumBytes = 1};
    const ScanOptions full{.home = {}, .unclassifiedMinimumBytes = 1};
    scan(home, {rules[0], rules[2]}, quick, {.memory = &memory});
    home.file("grows/second", 10);
    ScanProgress progress;
    const ScanReport second = scan(home, rules, full, {.progress = &progress, .memory = &memory});
    const ScanReport alone = scan(home, rules, full);
    EXPECT_EQ(second.findings, alone.findings);
    EXPECT_EQ(second.projects, alone.projects);
    EXPECT_EQ(second.unclassified, alone.unclassified);
    EXPECT_EQ(progress.walked.entries, 8);
}

TEST(Scanner, FindsProjectsButNoneInsideAnotherNorWhereNoneAreLookedFor) {
    const TempHome home;
    home.files({"code/app/package.json", "code/app/packages/lib/package.json", "code/.hidden/package.json",
                "code/venv/pyproject.toml", ".dot/go.mod", "Library/x/Cargo.toml", "Movies/m/go.mod",
                "a/b/c/d/e/f/go.mod", "a/b/c/d/e/g/go.mod", "tool/Package.swift",
                ".minimax-agent/projects/p/requirements.txt"});
    home.file("1/2/3/4/5/6/7/go.mod");
    home.folder("repository/.git");
    home.link("linked", home.path("code"));
    home.files(
        {"more/a/CMakeLists.txt", "more/b/pom.xml", "more/c/App.csproj", "more/d/mix.exs", "more/e/.csproj"});
    const std::vector<std::string> projects = Scanner::discoverProjects(home.path(), 5);
    EXPECT_THAT(projects, ElementsAre(home.path(".minimax-agent/projects/p"), home.path("a/b/c/d/e/f"),
                                      home.path("a/b/c/d/e/g"), home.path("code/app"), home.path("more/a"),
                                      home.path("more/b"), home.path("more/c"), home.path("more/d"),
                                      home.path("repository"), home.path("tool")));
    Scanner::SeenFolders seen;
    for (const std::string& project : projects) {
        home.file(project.substr(home.path().size() + 1) + "/sub/file");
        EXPECT_EQ(Scanner::projectAbove(project, home.path(), seen), project);
        EXPECT_EQ(Scanner::projectAbove(project + "/sub/file", home.path(), seen), project);
    }
    for (const char* other : {"", "/code", "/code/.hidden/package.json", "/.dot", "/Library/x", "/code/venv",
                              "/1/2/3/4/5/6/7/go.mod", "/more/e", "/linked/app"}) {
        EXPECT_FALSE(Scanner::projectAbove(home.path() + other, home.path(), seen)) << other;
    }
    // For each file that was shown of a folder with a million of them, that was read from end to end.
    std::filesystem::remove(home.path("code/app/package.json"));
    EXPECT_EQ(Scanner::projectAbove(home.path("code/app/sub/other"), home.path(), seen),
              home.path("code/app"));
    Scanner::SeenFolders none;
    EXPECT_FALSE(Scanner::projectAbove(home.path("code/app/sub/other"), home.path(), none));
}

TEST(Scanner, TakesNoUnpackedProgramForAProjectThatSomebodyWorksOn) {
    // The node_modules of an editor's resources/app were deleted without a question.
    const TempHome home;
    home.files({"Code-x64/resources/app/package.json", "lib/site-packages/numpy/pyproject.toml",
                "go/pkg/mod/example.org/tool/go.mod", "venv/package.json", "app/resources/package.json",
                "tool-1.0/go.mod", "tool-2.0/share/web/package.json", "script/package.json",
                "library/package.json", "own/Cargo.toml", "own/sub/package.json"});
    for (const char* program : {"tool-1.0/tool", "tool-2.0/tool", "own/built"}) {
        home.fileWith(program, "\177ELF\2\1\1");
        home.setMode(program, 0755);
    }
    home.program("script/run", "exit 0");
    home.fileWith("library/tool.so", "\177ELF\2\1\1");
    home.folder("own/.git");
    EXPECT_THAT(
        Scanner::discoverProjects(home.path(), 5),
        ElementsAre(home.path("app/resources"), home.path("library"), home.path("own"), home.path("script")));
}

TEST(Scanner, FindsTheSameTwiceAndDatesAProjectByFilesThatAnotherIsChargedWith) {
    // Of two projects with a file in common one counted as long untouched, now this one and now that.
    const TempHome home;
    home.file("work/a/package.json");
    home.file("work/b/package.json");
    for (const char* name : {"work/a/package.json", "work/b/package.json"}) {
        home.setModified(name, 1500000000);
    }
    home.file(".store/file", 200000);
    for (const char* name : {"work/a/node_modules/x", "work/b/node_modules/x", "work/a/src/x", "work/b/src/x",
                             ".other/x", ".rule/deep/er/x"}) {
        home.hardLink(name, ".store/file");
    }
    home.setModified(".store/file", 1600000000);
    const auto scanned = [&] {
        ScanReport report = scan(home, {ruleAt("z", "~/.store"), ruleAt("a", "~/.rule")},
                                 {.home = {}, .unclassifiedMinimumBytes = 1});
        report.durationSeconds = 0;
        report.volume = {};
        return report;
    };
    const ScanReport first = scanned();
    EXPECT_EQ(first.findings.front().paths, std::vector{home.path(".rule")});
    EXPECT_THAT(eachOf(first.projects, &ProjectReport::lastCodeChange),
                Each(Date(std::chrono::seconds(1600000000))));
    for (int round = 0; round < 20; ++round) {
        ASSERT_EQ(scanned(), first);
    }
}

TEST(Scanner, CarriesWhatCouldNotBeReadInsteadOfFindingNothing) {
    // A cache folder without the right to read it was as good as empty.
    const TempHome home;
    expectHeld(asOrdinaryUser(home.path(), [&] {
        home.file(".known/f", 100);
        home.file(".cache/tool/f", 100);
        EXPECT_TRUE(Scanner::canList(home.path()));
        home.setMode(".known", 0);
        home.setMode(".cache", 0);
        const ScanReport report = scan(home, {ruleAt("known", "~/.known")});
        EXPECT_THAT(eachOf(report.findings, &Finding::ruleID), ElementsAre("known"));
        EXPECT_THAT(eachOf(report.unclassified, &UnclassifiedItem::path), ElementsAre(home.path(".cache")));
        EXPECT_EQ(report.unreadableCount(), 2);
        EXPECT_FALSE(Scanner::canList(home.path(".known")));
        return !HasFailure();
    }));
}

TEST(Scanner, MeasuresAProjectsArtifactsApart) {
    const TempHome home;
    home.file("code/app/package.json", 100);
    home.setModified("code/app/package.json", 1500000000);
    home.file("code/app/node_modules/x/index.js", 50000);
    home.file("code/app/packages/lib/node_modules/y/index.js", 30000);
    home.file("code/app/packages/lib/node_modules/y/node_modules/z/index.js", 20000);
    home.file("code/app/target/out", 70000);
    home.file("code/app/.venv/bin/python", 40000);
    HardLinkRegistry registry;
    const std::string path = home.path("code/app");
    std::optional<ProjectReport> project = Scanner::measureProject(path, home.path(), registry);
    ASSERT_TRUE(project);
    EXPECT_EQ(project->name, "code/app");
    ASSERT_EQ(project->artifacts.size(), 2U); // "target" is none without a Cargo.toml.
    EXPECT_EQ(project->artifacts[0].name, "node_modules");
    EXPECT_THAT(project->artifacts[0].paths,
                ElementsAre(path + "/node_modules", path + "/packages/lib/node_modules"));
    EXPECT_EQ(project->artifacts[0].usage.apparentBytes, 100000);
    EXPECT_EQ(project->artifacts[1].name, ".venv");
    EXPECT_EQ(project->artifacts[1].hint, ProjectArtifacts::hint(".venv"));
    EXPECT_EQ(project->usage.apparentBytes, 210100);
    EXPECT_EQ(project->recoverableBytes(),
              project->artifacts[0].usage.allocatedBytes + project->artifacts[1].usage.allocatedBytes);

    home.file("code/app/Cargo.toml");
    home.setModified("code/app/Cargo.toml", 1500000000);
    HardLinkRegistry another;
    project = Scanner::measureProject(path, home.path(), another);
    ASSERT_EQ(project->artifacts.size(), 3U);
    EXPECT_EQ(project->artifacts[1].name, "target");
    EXPECT_EQ(project->lastCodeChange, Date(std::chrono::seconds(1500000000)));
    EXPECT_FALSE(Scanner::measureProject(home.path("missing"), home.path(), another));
}

TEST(Scanner, TakesFoldersAtTheirWordThatTheyComeBackButNoneWithSources) {
    // Build folders of CMake, Maven and others took gigabytes that no project showed.
    const TempHome home;
    const std::string path = home.path("code/app");
    const std::string tag = "Signature: 8a477f597d28d172789f06886806bc55\n# made by a tool";
    const auto cache = [&](const std::string& folder, const std::string& sources) {
        home.fileWith("code/app/" + folder + "/CMakeCache.txt",
                      "# x\nCMAKE_HOME_DIRECTORY:INTERNAL=" + sources + "\nA:B=c\n");
    };
    home.files({"code/app/CMakeLists.txt", "code/app/lib/CMakeLists.txt", "code/app/inside/src/main.cpp",
                "code/app/kept/deep/er/main.py", "code/app/build/release/moc/x.o", "code/app/tagged/data"});
    cache("build/release", path);
    cache("lib", path + "/lib");     // Built in place.
    cache("inside", path);           // Beside the sources.
    cache("elsewhere", home.path()); // Of another project.
    home.file("code/app/build/release/sub/generated.cpp");
    home.file("code/app/build/release/sub/cmake_install.cmake");
    home.fileWith("code/app/tagged/CACHEDIR.TAG", tag);
    home.fileWith("code/app/kept/CACHEDIR.TAG", tag);
    home.fileWith("code/app/unsigned/CACHEDIR.TAG", "Signature: none");
    home.files({"code/app/pom.xml", "code/app/module/pom.xml", "code/app/module/target/classes/x",
                "code/app/module/src/target/X.java", "code/app/other/target/x"});
    HardLinkRegistry registry;
    const auto project = Scanner::measureProject(path, home.path(), registry);
    EXPECT_THAT(eachOf(project->artifacts, &ProjectArtifact::name),
                UnorderedElementsAre("build/release", "tagged", "target"));
    for (const ProjectArtifact& artifact : project->artifacts) {
        EXPECT_EQ(artifact.paths.size(), 1U);
        EXPECT_TRUE(ProjectArtifacts::isArtifact(artifact.paths.front(), path));
    }
    for (const char* other : {"", "/lib", "/inside", "/elsewhere", "/kept", "/unsigned", "/module/src/target",
                              "/other/target", "/build"}) {
        EXPECT_FALSE(ProjectArtifacts::isArtifact(path + other, path)) << other;
    }
}

TEST(Scanner, LeavesAModuleCalledTargetItsSources) {
    // The sources of a Rust module with that name were deleted with the build output.
    const TempHome home;
    home.files({"code/app/Cargo.toml", "code/app/src/target/mod.rs", "code/app/target/debug/app"});
    HardLinkRegistry registry;
    const auto project = Scanner::measureProject(home.path("code/app"), home.path(), registry);
    ASSERT_EQ(project->artifacts.size(), 1U);
    EXPECT_THAT(project->artifacts.front().paths, ElementsAre(home.path("code/app/target")));
}

TEST(Scanner, VisitsAFolderAboveAClaimedOneAndOffersTheRest) {
    const TempHome home;
    home.folders(
        {"Library/Caches/pip/x", "Library/Caches/other", "Library/Application Support/Google/Chrome/Model/x",
         "Library/Application Support/Google/Chrome/Other", "Library/Application Support/Google/Drive",
         ".cache/uv", ".cache/mystery", ".deep/1/2/3/4/5", ".deep/1/2/side", "Visible", ".zed",
         ".local/share/game/x", ".local/bin", ".var/app/org.a.B/x"});
    home.file("Library/Caches/loose", 100);
    home.link(".linked", "Visible");
    const auto candidates = Scanner::unclassifiedCandidates(
        HomePlaces(home.path()),
        {home.path("Library/Caches/pip"), home.path("Library/Application Support/Google/Chrome/Model"),
         home.path(".cache/uv"), home.path(".deep/1/2/3/4")});
    EXPECT_THAT(candidates, ElementsAre(home.path("Library/Application Support/Google/Chrome/Other"),
                                        home.path("Library/Application Support/Google/Drive"),
                                        home.path("Library/Caches/other"), home.path(".cache/mystery"),
                                        home.path(".deep/1/2/side"), home.path(".local/bin"),
                                        home.path(".local/share/game"), home.path(".var/app/org.a.B"),
                                        home.path(".zed")));
}

// Nothing was listed of what lay there.
TEST(Scanner, LooksForUnknownFoldersWhereTheBaseFoldersHaveBeenMoved) {
    const TempHome home;
    home.folders(
        {"var/cache/pip", "var/cache/mystery/inner", "var/own", ".hidden/state/game", "Documents/x"});
    const HomePlaces places(home.path(), System::linux, [&](const std::string& name) {
        return name == "XDG_CACHE_HOME"   ? std::optional(home.path("var/cache"))
               : name == "XDG_STATE_HOME" ? std::optional(home.path(".hidden/state"))
                                          : std::nullopt;
    });
    const std::vector<std::string> claimed{home.path("var/cache/pip")};
    EXPECT_THAT(Scanner::unclassifiedCandidates(places, claimed),
                ElementsAre(home.path(".hidden/state/game"), home.path("var/cache/mystery")));
    const auto isPlace = [&](const char* name) {
        return Scanner::isUnclassifiedPlace(home.path(name), places, claimed);
    };
    EXPECT_TRUE(isPlace("var/cache/mystery") && isPlace(".hidden/state/game"));
    for (const char* name : {"var", "var/own", "var/cache", "var/cache/pip", "var/cache/mystery/inner",
                             "Documents/x", ".hidden/state"}) {
        EXPECT_FALSE(isPlace(name)) << name;
    }
    EXPECT_EQ(folderLocation(home.path("var/cache/mystery"), places), FolderLocation::caches);
    EXPECT_EQ(folderLocation(home.path("var/own"), places), FolderLocation::other);
    EXPECT_EQ(ownersName(home.path("var/cache/mystery/inner"), places), "mystery");
    const auto rules = AppCaches::rules({{"Mystery", "mystery", "/p/mystery.desktop"}}, {}, places);
    ASSERT_EQ(rules.size(), 1U);
    EXPECT_EQ(resolve(rules.front(), home.path()), std::vector{home.path("var/cache/mystery")});
}

TEST(Scanner, ReportsUnclaimedFoldersFromTheAskedSizeAndLeavesClaimedOnesToTheirRules) {
    const TempHome home;
    home.file(".large/f", 400000);
    home.file(".larger/f", 500000);
    home.file(".small/f", 1000);
    home.file(".known/f", 400000);
    home.file("work/package.json");
    home.file(".minimax-agent/projects/p/f", 900000);
    // Our own folders were offered for removal.
    home.files(
        {"Library/Application Support/TarvoAI/Apartado/x", "Library/Caches/TarvoAI/x", ".config/TarvoAI/x"},
        900000);
    const ScanReport report =
        scan(home, {ruleAt("known", "~/.known")}, {.home = {}, .unclassifiedMinimumBytes = 300000});
    EXPECT_THAT(eachOf(report.unclassified, &UnclassifiedItem::path),
                ElementsAre(home.path(".larger"), home.path(".large")));
    ASSERT_EQ(report.projects.size(), 1U);
    EXPECT_EQ(report.projects[0].name, "work");
    EXPECT_GT(report.volume.totalBytes, 0);

    const ScanReport quick =
        scan(home, {}, {.home = {}, .includeProjects = false, .unclassifiedMinimumBytes = 0});
    EXPECT_THAT(quick.projects, IsEmpty());
    EXPECT_THAT(
        eachOf(quick.unclassified, &UnclassifiedItem::path),
        ElementsAre(home.path(".larger"), home.path(".known"), home.path(".large"), home.path(".small")));
}

TEST(ScanReport, AddsUpWhatRecreatesItself) {
    ScanReport report;
    report.findings = {{.safety = Safety::safe, .usage = {.allocatedBytes = 300, .unreadableCount = 1}},
                       {.safety = Safety::review, .usage = {.allocatedBytes = 1000, .unreadableCount = 2}}};
    report.projects = {{.usage = {.allocatedBytes = 90000, .unreadableCount = 4},
                        .artifacts = {{.usage = {.allocatedBytes = 30}}}}};
    EXPECT_EQ(report.bytes(Safety::review), 1000);
    EXPECT_EQ(report.safeBytes(), 330);
    EXPECT_EQ(report.unreadableCount(), 7);
}

TEST(Usage, StopsTheProcessRatherThanWrapping) {
    Usage most{.allocatedBytes = std::numeric_limits<std::int64_t>::max(), .lastModified = {}};
    EXPECT_DEATH(most += Usage({.allocatedBytes = 1, .lastModified = {}}), "64 bits");
}

TEST(Scanner, SurvivesHomesThatAreEmptyLinkedOrGone) {
    const TempHome home;
    home.folder("empty");
    home.file("real/.cache/uv/f", 4000);
    home.link("linked", "real");
    const auto& rules = RuleCatalog::all();
    for (const char* name : {"empty", "gone"}) {
        ScanOptions options{.home = home.path(name)};
        const auto report = Scanner::scan(rules, options, {});
        ASSERT_TRUE(report) << name;
        EXPECT_THAT(report->findings, IsEmpty()) << name;
        EXPECT_THAT(report->unclassified, IsEmpty()) << name;
    }
    const auto report = Scanner::scan(rules, {.home = home.path("linked")}, {});
    EXPECT_THAT(eachOf(report->findings, &Finding::ruleID), ElementsAre("uv-cache"));
    EXPECT_THAT(report->findings[0].paths, ElementsAre(home.path("linked/.cache/uv")));
}

TEST(Scanner, AStoppedScanGivesNoReport) {
    const TempHome home;
    home.file(".cache/uv/f", 4000);
    std::stop_source stop;
    stop.request_stop();
    ScanContext context;
    context.stop = stop.get_token();
    EXPECT_FALSE(Scanner::scan(RuleCatalog::all(), {.home = home.path()}, context));
}
