#include "LumoCore/Inventories/OllamaStore.h"

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Inventories/ModelStore.h"
#include "Platform/Folder.h"
#include "Platform/QuietFile.h"
#include "Platform/RunningProcesses.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

namespace lumo {

namespace {

struct Layer {
    std::string mediaType;
    std::string digest;
    static constexpr auto fields =
        std::tuple{field("mediaType", &Layer::mediaType), field("digest", &Layer::digest)};
};

struct Manifest {
    std::optional<Layer> config;
    std::vector<Layer> layers;
    static constexpr auto fields =
        std::tuple{field("config", &Manifest::config), field("layers", &Manifest::layers)};
};

/// The blob's file name; absent for a digest of any other form, which could lead anywhere.
std::optional<std::string> blobName(std::string_view digest) {
    constexpr std::string_view prefix = "sha256:";
    constexpr std::size_t hexDigits = 64;
    const bool isDigest = digest.starts_with(prefix) && digest.size() == prefix.size() + hexDigits &&
                          std::ranges::all_of(digest.substr(prefix.size()),
                                              [](unsigned char c) { return std::isxdigit(c) != 0; });
    return isDigest ? std::optional("sha256-" + std::string(digest.substr(prefix.size()))) : std::nullopt;
}

} // namespace

std::optional<std::vector<std::string>> blobsOfManifest(std::string_view json) {
    const auto manifest = decodeJson<Manifest>(json);
    if (!manifest) {
        return std::nullopt;
    }
    std::vector<std::string> blobs;
    for (const Layer& layer : manifest->layers) {
        const auto blob = blobName(layer.digest);
        if (!blob) {
            return std::nullopt;
        }
        const bool isWeights = layer.mediaType == "application/vnd.ollama.image.model";
        blobs.insert(isWeights ? blobs.begin() : blobs.end(), *blob);
    }
    if (const auto blob = manifest->config ? blobName(manifest->config->digest) : std::nullopt) {
        blobs.push_back(*blob);
    }
    return blobs;
}

std::optional<std::string> ollamaNameOf(std::string_view path) {
    const std::vector<std::string_view> parts = components(path);
    if (parts.size() != 4 || !isSpeltOut(path)) {
        return std::nullopt;
    }
    std::string name;
    if (parts[0] != "registry.ollama.ai") {
        name += std::string(parts[0]) + "/";
    }
    if (!name.empty() || parts[1] != "library") {
        name += std::string(parts[1]) + "/";
    }
    return name + std::string(parts[2]) + ":" + std::string(parts[3]);
}

namespace Models {

namespace {

using platform::EntryKind;

constexpr std::string_view program = "ollama";

/// One of Ollama's stores, read whole.
struct Store {
    std::string folder;
    std::map<std::string, std::vector<std::string>> blobsOf; ///< By the manifest's path.
    std::map<std::string, std::set<std::string>> users;      ///< The manifests that need a blob.
    std::vector<UnreadPlace> unread; ///< Manifests that do not tell what they need, and what may hold some.
};

void readManifests(const std::string& folder, int depth, Language language, Store& store) {
    constexpr int tags = 4;
    constexpr std::size_t mostBytes = std::size_t{1024} * 1024;
    if (!platform::canList(folder) && !platform::isMissing(folder)) {
        store.unread.push_back({folder, Words{"no se puede abrir", "it cannot be opened"}.in(language)});
        return;
    }
    for (const std::string& name : platform::namesIn(folder)) {
        const std::string path = joined(folder, name);
        const auto kind = platform::kindOf(path);
        if (depth < tags && kind == EntryKind::folder) {
            readManifests(path, depth + 1, language, store);
        } else if (depth == tags && kind == EntryKind::file) {
            const auto json = platform::quietBeginning(path, mostBytes);
            auto blobs = json ? blobsOfManifest(*json) : std::nullopt;
            if (!blobs) {
                store.unread.push_back(
                    {path,
                     json ? Words{"no dice qué partes necesita", "it does not tell which parts it needs"}.in(
                                language)
                          : reasonText(json.error(), language)});
                continue;
            }
            for (const std::string& blob : *blobs) {
                store.users[blob].insert(path);
            }
            store.blobsOf.emplace(path, std::move(*blobs));
        }
    }
}

bool isOllamaRunning() {
    const auto processes = platform::runningProcesses();
    return std::ranges::any_of(processes, [](const platform::RunningProcess& process) {
        return process.executable == program || process.argumentZero == program;
    });
}

/// What the model's own description says: "8.0B", "Q4_0".
std::string described(const Store& store, const std::vector<std::string>& blobs) {
    constexpr std::size_t mostBytes = std::size_t{1024} * 1024;
    const auto json = blobs.empty()
                          ? platform::failed(ENOENT)
                          : platform::quietBeginning(store.folder + "/blobs/" + blobs.back(), mostBytes);
    const auto document = json ? parseJson(*json) : failure("");
    std::string text;
    for (const char* key : {"model_type", "file_type"}) {
        const JsonValue* value = document ? document->find(key) : nullptr;
        if (const auto* said = value != nullptr ? std::get_if<std::string>(&value->value) : nullptr) {
            text += (text.empty() ? "" : ", ") + *said;
        }
    }
    return text;
}

std::string idOfModel(const std::string& manifest, const InventoryQuery& query) {
    return idOf(program, pathInID(manifest, query.home));
}

/// A blob goes with the last model that needs it: with the only one, or with the last of those that go
/// together when none that stays needs it.
bool goesWith(const std::string& manifest, const std::set<std::string>& users, const Look& look) {
    return users.size() == 1 ||
           (*users.rbegin() == manifest && std::ranges::all_of(users, [&](const std::string& user) {
               return look.goes(idOfModel(user, look.query));
           }));
}

void addModel(const Store& store, const std::string& manifest, bool isRunning, const Look& look) {
    const std::vector<std::string>& blobs = store.blobsOf.at(manifest);
    const std::string inStore = manifest.substr(store.folder.size() + 1);
    const std::string name = ollamaNameOf(inStore.substr(inStore.find('/') + 1)).value_or(inStore);
    StoredModel model{.program = std::string(program),
                      .name = pathInID(manifest, look.query.home),
                      .shown = name,
                      .detail = described(store, blobs),
                      .paths = {manifest}};
    for (const std::string& blob : std::set<std::string>(blobs.begin(), blobs.end())) {
        std::string path = store.folder + "/blobs/" + blob;
        if (goesWith(manifest, store.users.at(blob), look) && platform::kindOf(path) == EntryKind::file) {
            model.paths.push_back(std::move(path));
        }
    }
    if (!blobs.empty()) {
        model.mainFile = store.folder + "/blobs/" + blobs.front();
    }
    DetailItem* item = add(std::move(model), look);
    if (isRunning && item != nullptr) {
        item->action.method = method::Command{{std::string(program), "rm", name}};
    }
}

/// Downloads that were never finished, and what no model needs any more.
void findUnused(const Store& store, bool isRunning, const Look& look) {
    StoredModel rest{.program = std::string(program),
                     .name = "?" + pathInID(store.folder, look.query.home),
                     .shown = Words{"Ollama: descargas sin acabar y partes sin modelo",
                                    "Ollama: unfinished downloads and parts of no model"}
                                  .in(look.query.language)};
    for (const std::string& name : platform::namesIn(store.folder + "/blobs")) {
        if (name.starts_with("sha256-") && !store.users.contains(name)) {
            rest.paths.push_back(store.folder + "/blobs/" + name);
        }
    }
    DetailItem* item = add(std::move(rest), look);
    if (isRunning && item != nullptr) {
        item->blockedBecause = Words{"Ollama está en marcha y puede estar descargándolo: ciérralo antes",
                                     "Ollama is running and may be downloading it: quit it first"}
                                   .in(look.query.language);
    }
}

} // namespace

void findInOllama(const Look& look) {
    const bool isRunning = isOllamaRunning();
    for (const std::string& folder :
         {look.query.home + "/.ollama/models", look.query.systemRoot + "/usr/share/ollama/.ollama/models"}) {
        Store store{.folder = folder};
        readManifests(folder + "/manifests", 1, look.query.language, store);
        for (UnreadPlace& manifest : store.unread) {
            look.inventory.miss(std::move(manifest.path), std::move(manifest.reason));
        }
        for (const auto& [manifest, blobs] : store.blobsOf) {
            // What one needs that nobody can read may be any of the blobs: only Ollama itself may take some.
            if (store.unread.empty() || isRunning) {
                addModel(store, manifest, isRunning, look);
            }
        }
        if (store.unread.empty()) {
            findUnused(store, isRunning, look);
        }
    }
}

} // namespace Models

} // namespace lumo
