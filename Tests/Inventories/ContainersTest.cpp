#include "LumoCore/Inventories/Containers.h"
#include "LumoCore/Inventories/AskedTool.h"
#include "LumoCore/Inventories/ContainerLists.h"
#include "Tests/support/InventoryQuery.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <map>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

/// As Docker's own client writes it: sizes and counts are texts.
const char* const dockerAnswer = R"json({"Images":[
{"ID":"sha256:aa","Repository":"alpine","Tag":"latest","Size":"8MB","UniqueSize":"5MB","Containers":"0"},
{"ID":"sha256:aa","Repository":"alpine","Tag":"3","Size":"8MB","UniqueSize":"5MB","Containers":"0"},
{"ID":"sha256:bb","Repository":"<none>","Tag":"<none>","UniqueSize":"1.5GB","Containers":"0"},
{"ID":"sha256:cc","Repository":"db","Tag":"1","UniqueSize":"2MB","Containers":"2"},
{"ID":"--force","Repository":"x","Tag":"1","UniqueSize":"2MB","Containers":"0"}],
"Containers":[
{"ID":"c1","Names":"old","Image":"alpine","State":"exited","Status":"Exited (0)","Size":"7kB (virtual 8MB)"},
{"ID":"c2","Names":"live","Image":"db:1","State":"running","Status":"Up","Size":"9MB (virtual 9MB)"}],
"Volumes":[{"Name":"data","Links":"0","Size":"40MB"},{"Name":"used","Links":"1","Size":"1GB"}],
"BuildCache":[{"ID":"x","InUse":"false","Shared":"false","Size":"3MB"},
{"ID":"y","InUse":"true","Shared":"false","Size":"1GB"}]})json";

std::map<std::string, DetailItem> itemsOf(const Inventory& inventory) {
    std::map<std::string, DetailItem> items;
    for (const DetailItem& item : inventory.items) {
        items[item.id] = item;
    }
    return items;
}

std::vector<std::string> wordsOf(const DetailItem& item) {
    return std::get<method::Command>(item.action.method).words;
}

} // namespace

TEST(Containers, AreWhatDockerSaysEachRemovedByItsOwnCommand) {
    const TempHome home;
    home.fileWith("answer", std::string("WARNING: something\n") + dockerAnswer + "\n");
    home.program(".local/bin/docker",
                 "[ \"$*\" = 'system df -v --format {{json .}}' ] && cat '" + home.path("answer") + "'");
    const Inventory found = Containers::find(queryOf(home));
    EXPECT_FALSE(found.unavailable);
    const auto items = itemsOf(found);
    EXPECT_THAT(items, UnorderedElementsAre(
                           Key("docker:docker:image:sha256:aa"), Key("docker:docker:image:sha256:bb"),
                           Key("docker:docker:image:sha256:cc"), Key("docker:docker:container:c1"),
                           Key("docker:docker:volume:data"), Key("docker:docker:cache:all")));
    const auto& image = items.at("docker:docker:image:sha256:aa");
    EXPECT_EQ(image.name, "alpine:latest, alpine:3");
    EXPECT_EQ(image.bytes, 5000000) << "once, however many names it has";
    EXPECT_THAT(wordsOf(image), ElementsAre("docker", "image", "rm", "alpine:latest", "alpine:3"));
    EXPECT_THAT(wordsOf(items.at("docker:docker:image:sha256:bb")),
                ElementsAre("docker", "image", "rm", "sha256:bb"));
    EXPECT_TRUE(items.at("docker:docker:image:sha256:cc").blockedBecause) << "containers use it";
    EXPECT_EQ(items.at("docker:docker:container:c1").bytes, 7000);
    EXPECT_THAT(items.at("docker:docker:volume:data").detail, HasSubstr("may hold a database"));
    EXPECT_EQ(items.at("docker:docker:cache:all").bytes, 3000000);
    EXPECT_EQ(found.items.front().id, "docker:docker:image:sha256:bb") << "the largest first";
}

TEST(Containers, OfPodmanCountALayerOnceAndLeaveNoStorageBehind) {
    const TempHome home;
    const auto image = [](const std::string& id, const std::string& layers, int size) {
        return R"({"Id": ")" + id + R"(", "Size": )" + std::to_string(size) + R"(, "Names": ["localhost/)" +
               id + R"(:1"], "Containers": 0, "RootFS": {"Layers": [)" + layers + "]}}";
    };
    const std::string images = "[" + image("base", R"("l1")", 100) + "," +
                               image("app", R"("l1", "l2")", 150) + "," + image("alone", R"("l9")", 70) +
                               "," + image("twin", R"("l1", "l3", "l4")", 400) + "," +
                               image("other", R"("l1", "l3", "l5")", 500) + "]";
    const auto lists = podmanLists(images, R"([{"Id": "c", "State": "exited", "Names": ["n"],
        "Size": {"rootFsSize": 3, "rwSize": 2}}])",
                                   R"([{"Name": "v", "Mountpoint": "/m"}])", images);
    ASSERT_TRUE(lists);
    std::map<std::string, std::int64_t> bytes;
    for (const ContainerImage& each : lists->images) {
        bytes[each.id] = each.uniqueBytes;
    }
    // Nobody tells what the layer takes that the last two share.
    EXPECT_THAT(bytes, ElementsAre(Pair("alone", 70), Pair("app", 50), Pair("base", 0), Pair("other", 0),
                                   Pair("twin", 0)));
    // In Podman's storage it is written.
    const auto weighed = podmanLists(images, "[]", "[]", images,
                                     R"([{"id": "x", "diff-digest": "l4", "diff-size": 250},
        {"id": "y", "diff-digest": "l5", "diff-size": 9000}, {"id": "z", "diff-digest": "l5"}, 7])");
    for (const ContainerImage& each : weighed->images) {
        bytes[each.id] = each.uniqueBytes;
    }
    EXPECT_THAT(bytes, ElementsAre(Pair("alone", 70), Pair("app", 50), Pair("base", 0), Pair("other", 0),
                                   Pair("twin", 250)));
    EXPECT_EQ(lists->containers.at(0).bytes, 2);
    EXPECT_EQ(lists->volumes.at(0).folder, "/m");
    for (const char* broken : {"", "{", "[1, null]", "{\"a\": []}"}) {
        EXPECT_TRUE(!podmanLists(broken, "[]", "[]", "[]") ||
                    podmanLists(broken, "[]", "[]", "[]")->images.empty());
    }
    home.program(".local/bin/podman", "mkdir -p ~/.local/share/containers/storage; echo '[]'");
    // A Spanish window had the tool's English alone, which says nothing of what to do.
    home.program(".local/bin/docker", "echo 'Cannot connect to the daemon'; exit 1");
    EXPECT_EQ(Containers::find(queryOf(home)).unavailable,
              "Docker does not answer: start it and look again. It says: “Cannot connect to the daemon”");
    EXPECT_FALSE(std::filesystem::exists(home.path(".local/share/containers")));
    home.program(".local/bin/docker", "echo 'Got permission denied while trying to connect'; exit 1");
    EXPECT_EQ(
        Containers::find(queryOf(home)).unavailable,
        "you have no permission to use docker. It says: “Got permission denied while trying to connect”");
}

TEST(AskedTool, IsEndedWhenItHangs) {
    const TempHome home;
    home.program(".local/bin/slow", "sleep 60 & sleep 60");
    const auto start = std::chrono::steady_clock::now();
    const auto answer = askTool({"slow"}, queryOf(home), std::chrono::milliseconds(100));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
    EXPECT_EQ(answer.error().reason, "slow did not answer in time");
    EXPECT_TRUE(askTool({"no-such-tool"}, queryOf(home)).error().isMissing);
    EXPECT_EQ(jsonIn("warning {\n[1]\nbye"), "[1]");
    EXPECT_EQ(jsonIn("nothing"), "");
    for (const auto& [shown, bytes] : std::map<std::string, std::int64_t>{{"1.23GB", 1230000000},
                                                                          {"0B (virtual 4.8MB)", 0},
                                                                          {"12 kB", 12000},
                                                                          {"-1GB", 0},
                                                                          {"1e300GB", 0},
                                                                          {"", 0}}) {
        EXPECT_EQ(shownBytes(shown), bytes) << shown;
    }
}
