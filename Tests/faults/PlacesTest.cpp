#include "Tests/faults/Ground.h"
#include "Tests/faults/Household.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace tarvo::faults;
namespace fs = std::filesystem;

namespace {

/// A mount that ends with its owner, wherever it was moved to meanwhile.
class Mounted final {
  public:
    Mounted(const std::string& source, const std::string& target, const char* type, unsigned long flags,
            const char* options = "") {
        EXPECT_EQ(mount(source.c_str(), target.c_str(), type, flags, options), 0) << target;
        root_ = open(target.c_str(), O_PATH | O_CLOEXEC);
    }
    ~Mounted() {
        umount2(("/proc/self/fd/" + std::to_string(root_)).c_str(), MNT_DETACH);
        close(root_);
    }
    Mounted(const Mounted&) = delete;
    Mounted& operator=(const Mounted&) = delete;

  private:
    int root_ = -1;
};

/// True when what the scenario begins with cannot be made here.
bool lacksTracer(const std::string& scenario) {
    return scenario == "Recover" && !ground().whyNoTracing.empty();
}

/// Homes on file systems of their own.
class Places : public testing::Test {
  protected:
    void SetUp() override {
        if (!ground().whyNoMounts.empty()) {
            GTEST_SKIP() << ground().whyNoMounts;
        }
    }

    /// A home on a small disk with nothing free on it.
    struct FullDisk {
        explicit FullDisk(const std::string& scenario)
            : household(scenarioNamed(scenario)), disk("tmpfs", household.home(), "tmpfs", 0, "size=512k") {
            household.runShell("cp -a template/home/. home");
            std::ofstream fill(household.path("fill"), std::ios::binary);
            while (fill << std::string(4096, 'x') << std::flush) {
            }
            EXPECT_EQ(fs::space(household.home()).available, 0U);
        }
        /// Makes room and looks at everything.
        void settle() const {
            fs::remove(household.path("fill"));
            expectNone(household.settle());
        }

        Household household;
        Mounted disk;
    };
};

} // namespace

TEST_F(Places, FreeSpaceAndGiveBackAndLoseNothingOnAFullDisk) {
    using Case = std::pair<const char*, bool>;
    for (const auto& [scenario, mustSucceed] :
         {Case{"CleanCaches", true}, Case{"Undo", true}, Case{"Restore", true}, Case{"CleanOwn", false},
          Case{"CleanMixed", false}, Case{"Recover", false}}) {
        SCOPED_TRACE(scenario);
        if (lacksTracer(scenario)) {
            continue;
        }
        const FullDisk full(scenario);
        const Ran ended = full.household.startScenario().wait();
        EXPECT_TRUE(ended.exitCode == 0 || !mustSucceed) << ended.output << ended.error;
        expectNone(full.household.lies(ended));
        full.settle();
    }
}

TEST_F(Places, SayWhyNothingCanBeChangedOnAReadOnlyDisk) {
    for (const Scenario& scenario : scenarios()) {
        if (lacksTracer(scenario.name)) {
            continue;
        }
        SCOPED_TRACE(scenario.name);
        const Household household(scenario);
        const Manifest before = manifestOf(household.home());
        {
            const Mounted bound(household.home(), household.home(), nullptr, MS_BIND);
            const Mounted readOnly("none", household.home(), nullptr, MS_REMOUNT | MS_BIND | MS_RDONLY);
            const Ran ended = household.startScenario().wait();
            expectNone(household.lies(ended));
            // A scan has something to show even when it cannot be kept.
            EXPECT_TRUE(ended.exitCode == 1 || scenario.name == "Scan") << ended.output;
            EXPECT_FALSE(ended.output.empty() && ended.error.empty());
        }
        EXPECT_EQ(differences(before, manifestOf(household.home()), {}).size(), 0U);
    }
}

TEST_F(Places, StayOutOfWhatIsMountedInACache) {
    const Household household(scenarioNamed("CleanCaches"));
    fs::create_directory(household.path("Library/Caches/app-updater/mounted"));
    fs::create_directory(household.path("Library/Caches/app-updater/tree/memory"));
    const Mounted bound(household.canary(), household.path("Library/Caches/app-updater/mounted"), nullptr,
                        MS_BIND);
    const Mounted memory("tmpfs", household.path("Library/Caches/app-updater/tree/memory"), "tmpfs", 0);
    std::ofstream(household.path("Library/Caches/app-updater/tree/memory/file")) << "kept";
    const Ran ended = household.startScenario().wait();
    EXPECT_EQ(ended.exitCode, 1) << ended.output;
    expectNone(household.lies(ended));
    expectNone(household.canaryFindings());
    EXPECT_TRUE(fs::exists(household.path("Library/Caches/app-updater/tree/memory/file")));
    EXPECT_FALSE(fs::exists(household.path("Library/Caches/app-updater/closed")));
    EXPECT_FALSE(fs::exists(household.path(".cache/uv/wheel")));
}

TEST_F(Places, StayOutOfWhatIsMountedInAnItemThatIsSetAsideAndEmptied) {
    const Household household(scenarioNamed("CleanOwn"));
    for (const Arguments& second : {Arguments{"undo", "--json"}, Arguments{"empty", "--yes", "--json"}}) {
        fs::create_directory(household.path("Desktop/Screenshot set/mounted"));
        {
            const Mounted bound(household.canary(), household.path("Desktop/Screenshot set/mounted"), nullptr,
                                MS_BIND);
            household.startScenario().wait();
            household.run(second);
            expectNone(household.canaryFindings());
        }
        household.reset();
    }
}
