#include "TarvoModel/Flows/Finding.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/History/SnapshotStore.h"
#include "TarvoModel/Flows/Cleaning.h"
#include "TarvoModel/Flows/Preferences.h"
#include "TarvoModel/Flows/PuttingBack.h"
#include "TarvoModel/Flows/ScanResult.h"
#include "Tests/support/OllamaLayout.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <filesystem>
#include <map>
#include <unistd.h>

using namespace lumo;
using namespace tarvo;
using namespace tarvo::testing;
using namespace ::testing;
namespace fs = std::filesystem;

namespace {

Desk deskOf(const TempHome& home) {
    return Desk::ofThisMachine(home.path(), "test");
}

std::map<std::string, DetailItem> itemsOf(const FindRequest& request, const TempHome& home) {
    std::map<std::string, DetailItem> items;
    for (const Inventory& inventory : found(request, deskOf(home))) {
        for (const DetailItem& item : inventory.items) {
            items[item.id] = item;
        }
    }
    return items;
}

/// What comes of cleaning these, carried out in that way.
Result<Cleaned> cleaned(const std::vector<std::string>& ids, const TempHome& home,
                        CarryOut carryOut = usualCarryOut) {
    const PlanRequest request{.items = ids};
    const Plan plan = planned(request, deskOf(home));
    return clean(request, agreementTo(plan), deskOf(home), {.carryOut = std::move(carryOut)});
}

/// The bytes of all files below the folder, by their paths.
std::map<std::string, std::string> filesIn(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files[entry.path().lexically_relative(folder)] = contentOf(entry.path());
        }
    }
    return files;
}

/// Three models: the first two share blob 'a', all of them blob 'c'.
void makeModels(const TempHome& home) {
    home.fileWith(ollamaManifests + "one/latest", manifest(blob('1'), blob('a')));
    home.fileWith(ollamaManifests + "two/8b", manifest(blob('2'), blob('a')));
    home.fileWith(ollamaManifests + "three/8b", manifest(blob('3'), blob('b')));
    for (const char digit : {'1', '2', '3', 'a', 'b', 'c'}) {
        home.fileWith(ollamaStore + "blobs/" + blob(digit), std::string(20000, digit));
    }
}

const std::string one = "modelo:ollama:" + ollamaManifests + "one/latest";
const std::string two = "modelo:ollama:" + ollamaManifests + "two/8b";
const std::string three = "modelo:ollama:" + ollamaManifests + "three/8b";

} // namespace

TEST(Finding, TakesASharedPartWithTheLastModelThatNeedsIt) {
    // Set aside together, two models left behind the part that both had used.
    const TempHome home;
    makeModels(home);
    const auto before = filesIn(home.path(".ollama"));
    const auto hasBlob = [&](char digit) {
        return fs::exists(home.path(ollamaStore + "blobs/" + blob(digit)));
    };
    const auto done = cleaned({two, one, two}, home);
    ASSERT_TRUE(done);
    EXPECT_THAT(eachOf(done->outcomes, &CleanupOutcome::status),
                ElementsAre(CleanupStatus::done, CleanupStatus::done));
    EXPECT_FALSE(hasBlob('1') || hasBlob('2') || hasBlob('a'));
    EXPECT_TRUE(hasBlob('3') && hasBlob('b') && hasBlob('c')) << "the third model needs them";
    EXPECT_TRUE(undo(deskOf(home))->failures.empty());
    EXPECT_EQ(filesIn(home.path(".ollama")), before);
    EXPECT_EQ(cleaned({one, two, three}, home)->outcomes.size(), 3U);
    EXPECT_THAT(filesIn(home.path(".ollama")), IsEmpty());
    EXPECT_TRUE(undo(deskOf(home))->failures.empty());
    EXPECT_EQ(filesIn(home.path(".ollama")), before);
}

TEST(Finding, PutsTogetherWhatWasTickedOneByOne) {
    // Ticked in a list, each model came to what it is alone: together they were said to have changed.
    const TempHome home;
    makeModels(home);
    home.file("film", 20000);
    Agreement ticked;
    for (const std::string& id : {two, std::string("archivo:film"), one}) {
        ticked.actions.push_back(itemNow(id, deskOf(home))->action);
    }
    ASSERT_TRUE(dependsOnCompany(ticked));
    const Agreement agreed = together(ticked, deskOf(home));
    EXPECT_THAT(eachOf(agreed.actions, &CleanupAction::id), ElementsAre(one, "archivo:film", two));
    const auto done = clean({}, agreed, deskOf(home));
    EXPECT_THAT(done->leftOut, IsEmpty());
    EXPECT_THAT(done->outcomes, Each(::testing::Field(&CleanupOutcome::status, CleanupStatus::done)));
    EXPECT_FALSE(fs::exists(home.path(ollamaStore + "blobs/" + blob('a'))));
    ticked.actions.resize(2);
    EXPECT_FALSE(dependsOnCompany(ticked));
}

TEST(Finding, LeavesASharedPartWhileAModelThatStaysNeedsIt) {
    const TempHome home;
    makeModels(home);
    const auto before = filesIn(home.path(".ollama"));
    const PlanRequest both{.items = {one, two}};
    const Plan plan = planned(both, deskOf(home));
    // The first of them is not carried out after all.
    const auto half = clean(both, agreementTo(plan), deskOf(home),
                            {.carryOut = [](const auto& actions, const auto& guard, const auto& control) {
                                return usualCarryOut({actions.back()}, guard, control);
                            }});
    ASSERT_TRUE(half);
    EXPECT_EQ(half->outcomes.at(0).status, CleanupStatus::failed);
    EXPECT_EQ(filesIn(home.path(".ollama")), before);
    // Only the second was agreed to: what it came to beside the first is not what it comes to alone.
    Agreement second = agreementTo(plan);
    second.actions.erase(second.actions.begin());
    EXPECT_THAT(clean(both, second, deskOf(home))->leftOut, SizeIs(1));
    EXPECT_EQ(filesIn(home.path(".ollama")), before);
    // The same plan from a file is carried out as it was planned.
    const PlanRequest saved{.saved = plan.entries};
    EXPECT_THAT(clean(saved, agreementTo(planned(saved, deskOf(home))), deskOf(home))->outcomes,
                Each(::testing::Field(&CleanupOutcome::status, CleanupStatus::done)));
    EXPECT_FALSE(fs::exists(home.path(ollamaStore + "blobs/" + blob('a'))));
}

TEST(Finding, HasAFileOnceAndHoldsBackWhatACleanupWould) {
    const TempHome home;
    home.files({"Videos/a", "Videos/kept/a", "Videos/mine", "Work/secret"}, 20000);
    home.fileWith("Videos/mine", std::string(20000, 'm'));
    home.fileWith("Work/secret", std::string(20000, 's'));
    const TempHome elsewhere;
    elsewhere.fileWith("film", std::string(20000, 'f'));
    auto preferences = Preferences::load(home.path());
    ASSERT_TRUE(preferences.set(preference::protectedFolders, {home.path("Work")}));
    FindRequest request{.kinds = {InventoryKind::large, InventoryKind::duplicates}, .minimumBytes = 1000};
    const auto items = itemsOf(request, home);
    EXPECT_THAT(items, UnorderedElementsAre(Key("copia:Videos/kept/a//Videos/a"), Key("archivo:Videos/mine"),
                                            Key("archivo:Work/secret")));
    EXPECT_FALSE(items.at("archivo:Videos/mine").blockedBecause);
    EXPECT_TRUE(items.at("archivo:Work/secret").blockedBecause);
    EXPECT_EQ(itemNow("archivo:Work/secret", deskOf(home)), items.at("archivo:Work/secret"));
    request.folders = {elsewhere.path()};
    const auto outside = itemsOf(request, home);
    EXPECT_THAT(outside.at("archivo:" + elsewhere.path("film")).blockedBecause.value_or(""),
                HasSubstr("film"));
    EXPECT_THAT(cleaned({"archivo:" + elsewhere.path("film")}, home)->outcomes, IsEmpty());
    EXPECT_TRUE(fs::exists(elsewhere.path("film")));
    EXPECT_THAT(missingFolders({.folders = {"~", home.path("none")}}, deskOf(home)),
                ElementsAre(home.path("none")));
}

TEST(Finding, GivesACopyBackWhoseOtherOneWentAfterTheLastLook) {
    // Somebody removes the copy that should stay between the comparison and the move: the last one was held.
    for (const bool isChanged : {false, true}) {
        const TempHome home;
        home.files({"a", "b/a"}, 20000);
        const auto raced =
            cleaned({"copia:b/a//a"}, home, [&](const auto& actions, const auto& guard, auto control) {
                const auto compare = control.refusal;
                control.refusal = [&, compare](const CleanupAction& action) {
                    const auto refused = compare(action);
                    isChanged ? (void)home.fileWith("a", std::string(20000, 'z'))
                              : (void)fs::remove(home.path("a"));
                    return refused;
                };
                return usualCarryOut(actions, guard, control);
            });
        ASSERT_TRUE(raced);
        EXPECT_EQ(raced->outcomes.at(0).status, CleanupStatus::failed);
        EXPECT_FALSE(raced->outcomes.at(0).restorable);
        EXPECT_EQ(raced->outcomes.at(0).trashedBytes, 0);
        EXPECT_EQ(contentOf(home.path("b/a")).size(), 20000U);
    }
}

TEST(Finding, CleansAgreedItemsThatTheRequestDoesNotName) {
    // Each face had to add them to the request, and one that forgot was told that they had gone.
    const TempHome home;
    home.file("film", 20000);
    const Agreement agreed = agreementTo(planned({.items = {"archivo:film"}}, deskOf(home)));
    EXPECT_THAT(clean({}, agreed, deskOf(home))->outcomes, SizeIs(1));
    EXPECT_FALSE(fs::exists(home.path("film")));
}

TEST(Finding, LeavesOneCopyHoweverManyGoAtOnce) {
    const TempHome home;
    home.files({"a", "b/a", "c/a", "d/e/a"}, 20000);
    std::vector<std::string> ids;
    for (const auto& [id, item] : itemsOf({.kinds = {InventoryKind::duplicates}, .minimumBytes = 1}, home)) {
        ids.push_back(id);
    }
    ASSERT_THAT(ids, SizeIs(3));
    ids.push_back("archivo:a");
    const auto done = cleaned(ids, home);
    EXPECT_THAT(done->outcomes, SizeIs(3));
    EXPECT_TRUE(fs::exists(home.path("a")));
    EXPECT_THAT(planned({.items = {ids[0]}}, deskOf(home)).unknownItems, ElementsAre(ids[0]));
}

TEST(Finding, ALargeFileThatIsNewSinceTheLastScanHasGrown) {
    // Only what a rule, a project or an unknown folder held was ever told to have grown.
    const TempHome home;
    home.folder("Videos");
    Desk desk = deskOf(home);
    const Date today = desk.now();
    desk.now = [&] { return today - std::chrono::days(1); };
    const auto pass = [&] { return *scanResult({.pass = ScanPass::full, .desk = desk, .stop = {}}); };
    EXPECT_THAT(pass().items, Each(::testing::Field(&Inventory::items, IsEmpty())));
    constexpr off_t film = 250000000;
    const int file = open(home.file("Videos/film.mkv").c_str(), O_WRONLY | O_CLOEXEC);
    EXPECT_EQ(posix_fallocate(file, 0, film), 0);
    close(file);
    desk.now = [&] { return today; };
    const ScanResult result = pass();
    ASSERT_TRUE(result.growth);
    EXPECT_THAT(result.growth->items,
                ElementsAre(::testing::Field(&GrowthItem::id, "archivo:Videos/film.mkv")));
    EXPECT_THAT(SnapshotStore(home.path()).load().back().sizes, Contains(Key("archivo:Videos/film.mkv")));
}
