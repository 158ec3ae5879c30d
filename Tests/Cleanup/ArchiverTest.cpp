#include "LumoCore/Cleanup/Archiver.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "Platform/Folder.h"
#include "Platform/ZipListing.h"
#include "Tests/Cleanup/CleaningHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <thread>

using namespace lumo;
using Archiver::ArchiveError;
using Archiver::ArchiveProblem;
using Archiver::Estimate;
using namespace tarvo::testing;
using namespace testing;
namespace fs = std::filesystem;

namespace {

std::string randomBytes(std::size_t count) {
    std::mt19937_64 random(7);
    std::string bytes(count, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random());
    }
    return bytes;
}

std::expected<Archiver::Archive, ArchiveError> archiveOld(const CleaningHome& home,
                                                          const Archiver::ArchiveControl& control = {}) {
    const std::string path = home.path("Documents/Old");
    const PathGuard guard = home.guard();
    fs::create_directories(fs::path(home.historyPath()).parent_path());
    return Archiver::archive(path, Archiver::destination(path), guard, control);
}

} // namespace

TEST(Archiver, RefusesWhatArchivingWouldBreakAndSaysWhy) {
    const CleaningHome home;
    home.files().folder("Documents/Old");
    home.files().link("Documents/out", "/etc");
    const std::string only = "Solo se puede archivar lo que está en tu carpeta personal.";
    const std::string breaks = "Lo que hay en Library es de las apps: archivarlo las rompería.";
    const std::vector<std::pair<std::string, std::string>> rows{
        {"/etc", only},
        {home.root(), only},
        {home.root() + "2/x", only},
        {home.path("Documents/../x"), only},
        {home.path("Documents//Old"), only},
        {home.path("Documents"), "«Documents» es una carpeta de macOS: elige una de dentro."},
        {home.path("Library"), "«Library» es una carpeta de macOS: elige una de dentro."},
        {home.path("Library/Application Support/TarvoAI"), breaks},
        {home.path("Library/x.zip"), breaks},
        {home.path("Pictures/P.PhotosLibrary/originals"),
         "«originals» es una app o una biblioteca (o está dentro de una): archivarla la rompería."},
        {home.path(".cache/thing"),
         "«thing» está en una carpeta oculta de alguna herramienta: archivarla la rompería."},
        {home.path("Documents/backup.ZIP"), "«backup.ZIP» ya está comprimido."},
        {home.path("Documents/out/passwd"),
         "fuera de tu carpeta personal: " + home.path("Documents/out/passwd")},
        {home.path("Documents/Old"), ""},
        {home.path("Downloads/film.mp4"), ""},
        {home.path("Documents/Library"), ""}};
    for (const auto& [path, reason] : rows) {
        EXPECT_EQ(Archiver::refusal(path, home.root(), Language::es, System::macos).value_or(""), reason)
            << path;
    }
    // On Linux a person's own folder was called one of macOS, and Videos and Escritorio were none of them.
    EXPECT_EQ(Archiver::refusal(home.path("Music"), home.root(), Language::en, System::macos).value_or(""),
              "“Music” is a macOS folder: pick one inside it.");
    EXPECT_EQ(Archiver::refusal(home.path("Videos"), home.root(), Language::en, System::linux).value_or(""),
              "“Videos” is one of your main folders: pick one inside it.");
    home.files().fileWith(".config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Escritorio\"\n");
    EXPECT_TRUE(Archiver::refusal(home.path("Escritorio"), home.root(), Language::en, System::linux));
    EXPECT_FALSE(Archiver::refusal(home.path("Escritorio/x"), home.root(), Language::en, System::linux));
    // Behind a link in the home, and in a home behind a link, none of this was seen.
    home.files().folders({"Library/Application Support/x", ".ssh", "Pictures/P.photoslibrary/originals"});
    home.files().link("misc", "Library/Application Support");
    home.files().link("keys", ".ssh");
    home.files().link("albums", "Pictures/P.photoslibrary");
    home.files().link("docs", "Documents");
    const TempHome beside;
    beside.link("home", home.root());
    for (const std::string& root : {home.root(), beside.path("home")}) {
        for (const char* name : {"misc", "misc/x", "keys", "albums/originals", "docs"}) {
            EXPECT_TRUE(Archiver::refusal(root + "/" + name, root)) << name;
        }
        EXPECT_EQ(Archiver::refusal(root + "/docs/Old", root), std::nullopt);
    }
}

TEST(Archiver, EstimatesFromSamplesSpreadOverTheBytes) {
    const CleaningHome home;
    home.files().file("Photos/a.JPG", 5000);
    home.files().file("Photos/b/c.jpeg", 3000);
    EXPECT_EQ(Archiver::estimate(home.path("Photos")), (Estimate{.bytes = 8000, .compressedBytes = 8000}));
    const std::string random = randomBytes(400000);
    home.files().fileWith("Mixed/z", random);
    for (int number = 0; number < 50; ++number) {
        home.files().file("Mixed/small/" + std::to_string(number), 100);
    }
    home.files().fifo("Mixed/pipe");
    home.files().link("Mixed/link", "z");
    // The one large file holds nearly all the bytes, so it decides whatever the small ones are like.
    const Estimate mixed = Archiver::estimate(home.path("Mixed"), 2, 8000);
    EXPECT_EQ(mixed.bytes, 405000);
    EXPECT_GT(mixed.compressedBytes, 380000);
    EXPECT_EQ(mixed, Archiver::estimate(home.path("Mixed"), 2, 8000));
    // Zeros at the beginning alone must not stand for the whole file.
    home.files().fileWith("Half/disk", std::string(400000, '\0') + random);
    const Estimate half = Archiver::estimate(home.path("Half"), 1, 80000);
    EXPECT_NEAR(static_cast<double>(half.compressedBytes), 400000, 40000);
}

TEST(Archiver, TakesTheFirstFreeNameAlsoForTheLongestOne) {
    const CleaningHome home;
    home.files().file("Project.zip");
    home.files().link("Project (2).zip", "nowhere");
    EXPECT_EQ(Archiver::destination(home.path("Project")), home.path("Project (3).zip"));
    const std::string longest(255, 'x');
    EXPECT_EQ(Archiver::destination(home.path(longest)), home.path(std::string(251, 'x') + ".zip"));
}

TEST(Archiver, ArchivesAwkwardNamesAndSetsTheOriginalAside) {
    const CleaningHome home;
    for (const char* name : {"-rf", "*", "@", "new\nline", "stray\xE9", "a\\b", "plain"}) {
        home.files().fileWith(std::string("Documents/-Old[1]/") + name, name);
    }
    home.files().file("Documents/-Old[1]/zero");
    home.files().folder("Documents/-Old[1]/empty");
    home.files().link("Documents/-Old[1]/link", "../..");
    const std::string path = home.path("Documents/-Old[1]");
    const PathGuard guard = home.guard();
    fs::create_directories(fs::path(home.historyPath()).parent_path());
    // An archive that appears meanwhile under the wanted name is left alone.
    home.files().fileWith("Documents/-Old[1].zip", "mine");
    const auto made = Archiver::archive(path, path + ".zip", guard);
    ASSERT_TRUE(made) << made.error().errorDescription() << made.error().detail;
    EXPECT_EQ(made->path, path + " (2).zip");
    EXPECT_EQ(fs::status(made->path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    std::map<std::string, platform::EntryKind> kinds;
    ASSERT_TRUE(platform::visitZip(made->path, [&](const platform::ZipEntry& entry) {
        return kinds.emplace(entry.name, entry.kind).second;
    }));
    EXPECT_EQ(kinds.size(), 11U);
    EXPECT_EQ(kinds.at("-Old[1]/link"), platform::EntryKind::link);
    EXPECT_EQ(kinds.at("-Old[1]/empty"), platform::EntryKind::folder);

    const std::int64_t bytes = CleanupExecutor::remaining({.measuredPaths = {path}});
    const auto outcomes = Archiver::setAside(*made, "Old", bytes, guard, cleaningTime);
    ASSERT_EQ(outcomes.size(), 1U);
    EXPECT_EQ(outcomes.front().id, "archivar:" + path);
    EXPECT_EQ(outcomes.front().trashedBytes, bytes);
    EXPECT_EQ(home.history(), outcomes);
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ(home.undo().done, 1);
    EXPECT_THAT(platform::namesIn(home.path("Documents")),
                ElementsAre("-Old[1]", "-Old[1] (2).zip", "-Old[1].zip"));
}

TEST(Archiver, GivesBackAnOriginalThatWasSavedIntoUntilItWasMoved) {
    // What was saved between the last look and the move was in no archive, and the original was set aside.
    const CleaningHome home;
    home.files().fileWith("Documents/Old/file", "old");
    const auto made = archiveOld(home);
    ASSERT_TRUE(made);
    home.files().fileWith("Documents/Old/file", "new");
    const auto outcomes = Archiver::setAside(*made, "Old", 4096, home.guard(), cleaningTime);
    EXPECT_EQ(outcomes.front().status, CleanupStatus::failed);
    EXPECT_THAT(outcomes.front().message.value(), AnyOf(HasSubstr("se guardó"), HasSubstr("was saved")));
    EXPECT_EQ(outcomes.front().restorable, std::nullopt);
    EXPECT_EQ(outcomes.front().trashedBytes, 0);
    EXPECT_EQ(home.history(), outcomes);
    EXPECT_EQ(contentOf(home.path("Documents/Old/file")), "new");
    EXPECT_THAT(platform::namesIn(home.path("Documents")), ElementsAre("Old"));
    EXPECT_FALSE(fs::exists(OwnFiles::intents(home.root())));
}

TEST(Archiver, LeavesNothingButTheOriginalWhenAnythingIsNotAsItMustBe) {
    using Row = std::tuple<std::string, std::string, ArchiveProblem, std::string>;
    const std::string grows = "/usr/bin/zip \"$@\"; s=$?; echo more >>Old/file; exit $s";
    // Neither length nor time tell that something else stands there now.
    const std::string changes = "/usr/bin/zip \"$@\"; s=$?; touch -r Old/file ../t; printf BBBB >Old/file; "
                                "touch -r ../t Old/file; exit $s";
    const std::vector<Row> rows{
        {"zip", "exit 5", ArchiveProblem::failed, "5"},
        {"zip", "exit 0", ArchiveProblem::notVerified, ""},
        {"zip", grows, ArchiveProblem::notVerified, "Old/file"},
        {"zip", changes, ArchiveProblem::notVerified, "Old/file"},
        {"zip", "/usr/bin/zip \"$@\" -x Old/sub/link", ArchiveProblem::notVerified, "Old/sub/link"},
        {"zip", "shift; shift; /usr/bin/zip -r \"$@\"", ArchiveProblem::notVerified, ""},
        {"zip", "/usr/bin/zip \"$@\"; s=$?; touch Old/sub/new; exit $s", ArchiveProblem::notVerified, ""},
        {"unzip", "exit 3", ArchiveProblem::notVerified, "3"}};
    for (const auto& [tool, script, problem, detail] : rows) {
        const CleaningHome home;
        home.files().fileWith("Documents/Old/file", "AAAA");
        home.files().link("Documents/Old/sub/link", "../file");
        home.files().program(".local/bin/" + tool, script); // Found before the system\'s.
        const auto made = archiveOld(home);
        ASSERT_FALSE(made) << script;
        EXPECT_EQ(made.error().problem, problem) << script << made.error().detail;
        EXPECT_THAT(made.error().detail, HasSubstr(detail)) << script;
        EXPECT_THAT(platform::namesIn(home.path("Documents")), ElementsAre("Old")) << script;
        EXPECT_TRUE(fs::exists(home.path("Documents/Old/file")));
        EXPECT_FALSE(fs::exists(home.path("Library/Application Support/TarvoAI/archivando.jsonl")));
    }
}

TEST(Archiver, BeginsNothingThatCannotEndWell) {
    const CleaningHome home;
    home.files().fileWith("Documents/Old/file", "x");
    const auto big = archiveOld(home, {.expectedBytes = std::int64_t{1} << 62});
    EXPECT_EQ(big.error().problem, ArchiveProblem::notEnoughSpace);
    EXPECT_THAT(big.error().errorDescription(Language::en), HasSubstr("GB needed). Free something"));
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_EQ(archiveOld(home, {.stop = stopped.get_token()}).error().problem, ArchiveProblem::interrupted);
    home.files().fifo("Documents/Old/pipe");
    const auto pipe = archiveOld(home);
    EXPECT_EQ(pipe.error().problem, ArchiveProblem::notVerified);
    EXPECT_THAT(pipe.error().detail, HasSubstr("Old/pipe"));
    EXPECT_THAT(platform::namesIn(home.path("Documents")), ElementsAre("Old"));
}

TEST(Archiver, EndsTheToolAndTakesItsFileBackWhenStopped) {
    const CleaningHome home;
    home.files().fileWith("Documents/Old/file", "x");
    home.files().program(".local/bin/zip",
                         "for a; do case $a in *.zip) echo half >\"${a%.zip}.part\";; esac; done; sleep 60");
    std::stop_source stop;
    Archiver::ArchiveProgress progress;
    std::jthread stopper([&] {
        while (progress.writtenBytes == 0) {
            std::this_thread::yield();
        }
        stop.request_stop();
    });
    const auto made = archiveOld(home, {.progress = &progress, .stop = stop.get_token()});
    EXPECT_EQ(made.error().problem, ArchiveProblem::interrupted);
    EXPECT_THAT(platform::namesIn(home.path("Documents")), ElementsAre("Old"));
}

TEST(Archiver, SweepsWhatADeadProcessLeftAndNothingElse) {
    const CleaningHome home;
    const std::string ours = ".tarvo.nuevo-11111111-2222-4333-8444-555555555555";
    home.files().file("Documents/" + ours + "/ziAbCd", 9);
    home.files().file("Documents/mine", 9);
    std::string notes;
    for (const std::string& folder : {home.path("Documents/" + ours), home.path("Documents"),
                                      std::string("/etc/") + ours, home.path("Documents/mine")}) {
        notes += R"({"folder": ")" + folder + "\"}\n";
    }
    const std::string own = "Library/Application Support/TarvoAI/archivando.jsonl";
    home.files().fileWith(own, notes + "{\"torn");
    ASSERT_TRUE(HomeLock::take(home.guard(), {.program = "test", .now = cleaningTime}));
    EXPECT_THAT(platform::namesIn(home.path("Documents")), ElementsAre("mine"));
    EXPECT_FALSE(fs::exists(home.path(own)));
}
