#include "LumoCore/Cleanup/CleanupOutcome.h"
#include "Tests/faults/Household.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string_view>

using namespace tarvo::faults;
using lumo::CleanupAction;
using namespace std::literals;

namespace {

/// Paths that no action may touch: {H} is the home folder, {P} what holds it, {A} the application's
/// support folder, {S} the beginning of the screenshots.
constexpr const char* hostile = R"(
    . .. / // ~ ~/Downloads etc /etc /etc/passwd /tmp /home /Library/Caches /Applications
    /Applications/Utilities/Foo.app /Applications/Foo.app/../x /proc/self/cwd /proc/self/root{H}/Downloads/old.dmg
    {H} {H}/ {H}// {H}/. {H}/.. {H}/../home {H}/../canary {H}x {H}x/Downloads
    {P} {P}/ {P}/canary {P}/canary/kept/file {P}/alias {P}/alias/Downloads/old.dmg
    {H}/{S}set/out/kept {H}/{S}set/out/kept/file {H}/{S}link/file
    {H}/Library/Caches/app-updater/out/kept/file {H}/Library {H}/Library/ {A} {A}/ {A}/.. {A}/historial.jsonl
    {A}/apartado.jsonl {A}/cerrojo {A}/Apartado {A}/Apartado/20250314-093005 {A}/not/there/yet)";

/// Every component of a path in turn with something put before it, and something put behind them all.
void addSpoiled(const std::string& home, const std::string& relative, Arguments& paths) {
    for (const std::string_view spoiler : {".."sv, "."sv, ""sv, "x/.."sv, "..\0x"sv, "\0"sv}) {
        for (std::size_t at = 0; at != std::string::npos; at = relative.find('/', at + 1)) {
            const std::size_t next = at == 0 ? 0 : at + 1;
            paths.push_back(
                fmt::format("{}/{}{}/{}", home, relative.substr(0, next), spoiler, relative.substr(next)));
        }
        paths.push_back(fmt::format("{}/{}/{}", home, relative, spoiler));
    }
    for (const std::string_view before : {"", "./", "~/", "/"}) {
        paths.push_back(std::string(before) + relative);
    }
    for (const std::string_view before : {"/", " ", "file://", "/.", "//."}) {
        paths.push_back(fmt::format("{}{}/{}", before, home, relative));
    }
    paths.push_back(fmt::format("{}/{}{}", home, relative, "\0.old"sv));
}

Arguments hostilePaths(const Household& household) {
    Arguments paths{""};
    std::istringstream shapes(hostile);
    for (std::string shape; shapes >> shape;) {
        paths.push_back(fmt::format(fmt::runtime(shape), fmt::arg("H", household.home()),
                                    fmt::arg("P", household.slot()), fmt::arg("S", "Desktop/Screenshot "),
                                    fmt::arg("A", household.path("Library/Application Support/TarvoAI"))));
    }
    for (const char* relative : {"Downloads/old.dmg", "Desktop/Screenshot set/deep/er/twin",
                                 "Library/Caches/app-updater", ".cache/uv", "missing/folder/file"}) {
        addSpoiled(household.home(), relative, paths);
    }
    std::ranges::sort(paths);
    paths.erase(std::ranges::unique(paths).begin(), paths.end());
    return paths;
}

CleanupAction actionOn(const std::string& path, std::size_t variant) {
    CleanupAction action = variant % 2 == 0 ? safe("hostile", {path}) : review("hostile", {path});
    if (variant / 2 % 2 == 1) {
        action.method = lumo::method::TrashContents{{path}};
    }
    action.measuredPaths.clear();
    return action;
}

/// What a refusal changes nothing of: all but the log and the lock.
class Untouched final {
  public:
    explicit Untouched(const Household& household) : household_(household), before_(now()) {}
    ~Untouched() {
        for (const Difference& difference :
             differences(before_, now(), {.moved = {support + "historial.jsonl"}})) {
            ADD_FAILURE() << difference.what << ": " << difference.path;
        }
    }
    Untouched(const Untouched&) = delete;
    Untouched& operator=(const Untouched&) = delete;

  private:
    static inline const std::string support = "home/Library/Application Support/TarvoAI/";

    [[nodiscard]] Manifest now() const {
        return manifestOf(household_.slot(), {"plan.json", support + "historial.jsonl", support + "cerrojo"});
    }

    const Household& household_;
    Manifest before_;
};

} // namespace

TEST(Refusals, MeetEveryPathThatIsNotPlainlyInTheHome) {
    const Household household(scenarioNamed("CleanOwn"));
    household.run({"empty", "--expired"});
    std::filesystem::create_directory_symlink(household.home(), household.slot() + "/alias");
    const Arguments paths = hostilePaths(household);
    EXPECT_GE(paths.size(), 200U);
    const Untouched untouched(household);
    for (std::size_t variant = 0; variant < 4; ++variant) {
        std::vector<CleanupAction> plan;
        for (const std::string& path : paths) {
            plan.push_back(actionOn(path, variant));
        }
        std::ofstream(household.slot() + "/plan.json", std::ios::binary) << planDocument(plan);
        const bool isSpanish = variant < 2;
        Arguments command = cleanPlan;
        command.insert(command.end(), {"--idioma", isSpanish ? "es" : "en"});
        const Ran ended = household.run(command);
        EXPECT_EQ(ended.exitCode, 1) << ended.error;
        const std::string reason =
            isSpanish ? "fuera de tu carpeta personal: " : "outside your home folder: ";
        const auto outcomes = lumo::decodeJson<std::vector<lumo::CleanupOutcome>>(ended.output).value();
        ASSERT_EQ(outcomes.size(), paths.size());
        for (std::size_t index = 0; index < paths.size(); ++index) {
            EXPECT_EQ(outcomes[index].status, lumo::CleanupStatus::failed) << paths[index];
            EXPECT_EQ(outcomes[index].message, reason + paths[index]);
        }
    }
}

TEST(Refusals, KeepAToolOutOfTheHomeThatTarvoWasStartedFrom) {
    // A tool that was run for one home emptied the cache of whoever had started it.
    const CleanupAction npm = scenarioNamed("CleanMixed").plan[2];
    const Household household({.plan = {npm}, .command = cleanPlan});
    const std::string other = household.slot() + "/other";
    std::filesystem::create_directories(other + "/.npm/_cacache/index");
    Arguments environment = household.environment();
    environment.insert(environment.end(), {"HOME=" + other, "npm_config_cache=" + other + "/.npm"});
    std::erase(environment, "HOME=" + household.home());
    const Ran ended = Child(household.words(cleanPlan), environment).wait();
    EXPECT_EQ(ended.exitCode, 0) << ended.error << ended.output;
    EXPECT_FALSE(std::filesystem::exists(household.path(".npm/_cacache")));
    EXPECT_TRUE(std::filesystem::exists(other + "/.npm/_cacache/index"));
}

TEST(Refusals, MeetEveryFolderThatIsNoHome) {
    const Household household(scenarioNamed("Undo"));
    const std::string& home = household.home();
    const std::string file = home + "/Documents/letter";
    std::filesystem::create_symlink(home + "/nowhere", household.slot() + "/dangling");
    std::filesystem::create_symlink(file, household.slot() + "/to-file");
    const Untouched untouched(household);
    for (const std::string& bad : {""s, "/"s, "//"s, "/tmp/.."s, "no/such/folder"s, home + "/missing",
                                   home + "/missing/..", file, file + "/", file + "/..", home + "\n",
                                   household.slot() + "/dangling", household.slot() + "/to-file"}) {
        for (Arguments command :
             {cleanPlan, Arguments{"undo"}, Arguments{"restore", file}, Arguments{"empty", "--yes"},
              Arguments{"empty", "--expired"}, Arguments{"history"}, Arguments{"holding"}}) {
            std::ranges::replace(command, "@plan", household.slot() + "/plan.json");
            command.insert(command.begin(), tarvo::testing::tarvoProgram());
            const Ran byVariable = Child(command, {"HOME=" + bad}).wait();
            command.insert(command.end(), {"--home", bad});
            const Ran byOption = Child(command, household.environment()).wait();
            EXPECT_EQ(byVariable.exitCode, 2) << command[1] << ", HOME=" << bad << byVariable.error;
            EXPECT_EQ(byOption.exitCode, 2) << command[1] << " --home " << bad << byOption.error;
        }
    }
}

TEST(Refusals, MeetTheHomeOfSomebodyElseWhenRootAsks) {
    const Household household(scenarioNamed("Undo"));
    constexpr uid_t somebody = 4321;
    if (geteuid() != 0 || chown(household.home().c_str(), somebody, somebody) != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    const Untouched untouched(household);
    for (const Arguments& command : {cleanPlan, Arguments{"undo"}, Arguments{"empty", "--yes"}}) {
        const Ran ended = household.run(command);
        EXPECT_TRUE(ended.exitCode == 1 || ended.exitCode == 2) << ended.output;
        EXPECT_NE(ended.error, "");
    }
}
