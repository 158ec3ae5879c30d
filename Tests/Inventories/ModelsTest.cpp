#include "LumoCore/Inventories/Models.h"
#include "LumoCore/Inventories/ModelHeader.h"
#include "LumoCore/Inventories/OllamaStore.h"
#include "Tests/support/InventoryQuery.h"
#include "Tests/support/OllamaLayout.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

std::map<std::string, DetailItem> itemsOf(const TempHome& home) {
    std::map<std::string, DetailItem> items;
    for (const DetailItem& item : Models::find(queryOf(home)).items) {
        items[item.name] = item;
    }
    return items;
}

std::vector<std::string> pathsOf(const DetailItem& item) {
    return std::get<method::TrashItems>(item.action.method).paths;
}

std::string number(std::uint64_t value, std::size_t width) {
    std::string bytes;
    for (std::size_t index = 0; index < width; ++index) {
        bytes += static_cast<char>(value >> (8 * index));
    }
    return bytes;
}

std::string textWithLength(std::string_view text) {
    return number(text.size(), 8) + std::string(text);
}

/// A header as llama.cpp writes it, with a list before what tells something.
std::string ggufHeader() {
    return "GGUF" + number(3, 4) + number(1, 8) + number(4, 8) + textWithLength("tokens") + number(9, 4) +
           number(8, 4) + number(2, 8) + textWithLength("a") + textWithLength("b") +
           textWithLength("general.name") + number(8, 4) + textWithLength("Llama") +
           textWithLength("general.size_label") + number(8, 4) + textWithLength("8B") +
           textWithLength("general.file_type") + number(4, 4) + number(15, 4);
}

} // namespace

TEST(ModelHeader, ReadsWhatBothFormatsSay) {
    const std::string gguf = ggufHeader();
    EXPECT_EQ(modelHeaderIn(gguf), (ModelHeader{"Llama", "8B", "Q4_K_M"}));
    const std::string json = R"({"__metadata__": {"a": "b"}, "x": {"dtype": "BF16", "shape": [2000, 1000000],
        "data_offsets": [0, 1]}, "y": {"dtype": "F32", "shape": [7], "data_offsets": [1, 2]}})";
    EXPECT_EQ(modelHeaderIn(number(json.size(), 8) + json), (ModelHeader{"", "2.0B", "BF16"}));
    // Bytes that break off anywhere, or claim lengths that nothing has.
    for (std::size_t length = 0; length < gguf.size(); ++length) {
        const auto header = modelHeaderIn(gguf.substr(0, length));
        EXPECT_TRUE(!header || header->quantisation.empty());
    }
    EXPECT_FALSE(
        modelHeaderIn("GGUF" + number(3, 4) + number(~0ULL, 8) + number(~0ULL, 8) + number(~0ULL, 8)));
    EXPECT_FALSE(modelHeaderIn(number(~0ULL, 8) + "{"));
}

TEST(OllamaStore, RefersToBlobsAloneAndNamesModelsAsOllamaDoes) {
    EXPECT_THAT(blobsOfManifest(manifest(blob('a'), blob('b'))).value(),
                ElementsAre(blob('a'), blob('b'), blob('c')));
    for (std::string digest : {"sha256:../../x", "sha256:", "md5:00", ""}) {
        EXPECT_FALSE(blobsOfManifest(R"({"layers": [{"mediaType": "x", "digest": ")" + digest + "\"}]}"));
    }
    EXPECT_FALSE(blobsOfManifest("[]"));
    EXPECT_EQ(ollamaNameOf("registry.ollama.ai/library/llama3/8b"), "llama3:8b");
    EXPECT_EQ(ollamaNameOf("registry.ollama.ai/me/llama3/8b"), "me/llama3:8b");
    EXPECT_EQ(ollamaNameOf("hf.co/library/x/latest"), "hf.co/library/x:latest");
    EXPECT_FALSE(ollamaNameOf("library/x/latest"));
}

TEST(Models, CountABlobOnceAndTakeItWithItsLastModel) {
    const TempHome home;
    const std::string store = ".ollama/models/";
    home.fileWith(store + "manifests/registry.ollama.ai/library/one/latest", manifest(blob('1'), blob('a')));
    home.fileWith(store + "manifests/registry.ollama.ai/library/two/8b", manifest(blob('2'), blob('a')));
    home.fileWith(store + "blobs/" + blob('1'), ggufHeader() + std::string(300000, 'x'));
    home.fileWith(store + "blobs/" + blob('c'), R"({"model_type": "8.0B", "file_type": "Q4_0"})");
    for (const std::string& name : {blob('2'), blob('a'), blob('9') + "-partial-0"}) {
        home.file(store + "blobs/" + name, 200000);
    }
    const auto items = itemsOf(home);
    ASSERT_THAT(items, SizeIs(3));
    EXPECT_THAT(pathsOf(items.at("one:latest")),
                ElementsAre(home.path(store + "manifests/registry.ollama.ai/library/one/latest"),
                            home.path(store + "blobs/" + blob('1'))));
    EXPECT_THAT(items.at("one:latest").detail, StartsWith("8.0B, Q4_0, 8B, Q4_K_M, last used "));
    EXPECT_THAT(pathsOf(items.at("Ollama: unfinished downloads and parts of no model")),
                ElementsAre(home.path(store + "blobs/" + blob('9') + "-partial-0")));
    std::int64_t sum = 0;
    for (const auto& [name, item] : items) {
        sum += item.bytes;
    }
    EXPECT_LE(sum, allocatedBytes(home.path(store + "blobs/" + blob('1'))) + 2 * 200704 + 8192);

    // What a model needs that nobody can read may be any of the blobs.
    home.fileWith(store + "manifests/registry.ollama.ai/library/three/latest", "{");
    const Inventory unsure = Models::find(queryOf(home));
    EXPECT_THAT(unsure.items, IsEmpty());
    EXPECT_EQ(unsure.unreadableCount, 1);
    // Which it is was told nowhere, so that nobody could mend it.
    EXPECT_THAT(unsure.unread, Optional(ElementsAre(UnreadPlace{
                                   home.path(store + "manifests/registry.ollama.ai/library/three/latest"),
                                   "it does not tell which parts it needs"})));
}

TEST(Models, StayWholeWhileAFolderOfTheirManifestsIsShut) {
    // What the models in it need was offered as parts of no model.
    const TempHome home;
    const std::string store = ".ollama/models/";
    home.file(store + "blobs/sha256-" + std::string(64, 'a'), 200000);
    home.fileWith(store + "manifests/registry.ollama.ai/library/one/latest", "{}");
    const std::string shut = store + "manifests/registry.ollama.ai/library";
    home.setMode(shut, 0);
    expectHeld(asOrdinaryUser(home.path(), [&] {
        const Inventory found = Models::find(queryOf(home));
        return found.items.empty() &&
               found.unread == std::vector<UnreadPlace>{{home.path(shut), "it cannot be opened"}};
    }));
    home.setMode(shut, 0755);
}

TEST(Models, AreFoundWhereProgramsKeepThem) {
    const TempHome home;
    home.fileWith(".cache/huggingface/hub/models--org--net/blobs/b1", ggufHeader() + std::string(90000, 'x'));
    home.file(".cache/huggingface/hub/models--org--net/blobs/b2.incomplete", 50000);
    home.link(".cache/huggingface/hub/models--org--net/snapshots/r/net.gguf", "../../blobs/b1");
    home.file(".cache/huggingface/hub/datasets--squad/blobs/x", 20000);
    home.file(".lmstudio/models/pub/repo/model.gguf", 20000);
    home.files({".cache/llama.cpp/m-00001-of-00002.gguf", ".cache/llama.cpp/m-00002-of-00002.gguf",
                ".cache/llama.cpp/m-00001-of-00002.gguf.json", ".cache/whisper/base.pt",
                ".local/share/nomic.ai/GPT4All/g.gguf", ".local/share/nomic.ai/GPT4All/localdocs_v2.db",
                ".cache/torch/hub/checkpoints/resnet.pth"},
               20000);
    const Inventory found = Models::find(queryOf(home));
    std::map<std::string, DetailItem> byID;
    for (const DetailItem& item : found.items) {
        byID[item.id] = item;
    }
    EXPECT_THAT(byID, UnorderedElementsAre(Key("modelo:huggingface:models--org--net"),
                                           Key("modelo:huggingface:models--org--net?"),
                                           Key("modelo:huggingface:datasets--squad"),
                                           Key("modelo:lmstudio:.lmstudio/models/pub/repo"),
                                           Key("modelo:llama.cpp:m.gguf"), Key("modelo:whisper:base.pt"),
                                           Key("modelo:gpt4all:g.gguf"), Key("modelo:torch:resnet.pth")));
    const DetailItem& net = byID["modelo:huggingface:models--org--net"];
    EXPECT_EQ(net.name, "org/net");
    EXPECT_THAT(net.detail, StartsWith("Hugging Face, 8B, Q4_K_M, last used "));
    EXPECT_THAT(pathsOf(byID["modelo:llama.cpp:m.gguf"]), SizeIs(3));
}

TEST(Models, WhoseFilesAreSharedCountThemOnceAndStayWhileOneNeedsThem) {
    // A repository whose files another one had links into was offered by itself, and broke that one.
    const TempHome home;
    const std::string hub = ".cache/huggingface/hub/";
    home.file(hub + "models--a--base/blobs/w", 90000);
    home.link(hub + "models--a--base/snapshots/r/m.bin", "../../blobs/w");
    home.file(hub + "models--b--tuned/blobs/own", 20000);
    home.link(hub + "models--b--tuned/snapshots/r/m.bin", "../../../models--a--base/blobs/w");
    home.file(hub + "models--c--one/blobs/w", 300000);
    home.hardLink(hub + "models--d--two/blobs/w", hub + "models--c--one/blobs/w");
    const std::string base = "modelo:huggingface:models--a--base";
    const std::string tuned = "modelo:huggingface:models--b--tuned";
    const auto alone = itemsOf(home);
    EXPECT_EQ(alone.at("a/base").blockedBecause, "b/tuned uses a part of it: remove that first");
    EXPECT_FALSE(alone.at("b/tuned").blockedBecause);
    EXPECT_LT(alone.at("c/one").bytes + alone.at("d/two").bytes, 300000);

    const auto both = Models::itemsWith({base, tuned}, queryOf(home));
    ASSERT_THAT(
        both, ElementsAre(::testing::Field(&DetailItem::id, tuned), ::testing::Field(&DetailItem::id, base)));
    EXPECT_FALSE(both[1].blockedBecause);
    EXPECT_EQ(Models::refusal(both[1].action, queryOf(home)), "b/tuned uses a part of it: remove that first");
    const auto linked = Models::itemsWith(
        {"modelo:huggingface:models--d--two", "modelo:huggingface:models--c--one"}, queryOf(home));
    ASSERT_THAT(linked, SizeIs(2));
    EXPECT_LT(linked[0].bytes, 100000);
    EXPECT_GE(linked[1].bytes, 300000);
}
