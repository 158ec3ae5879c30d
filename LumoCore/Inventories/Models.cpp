#include "LumoCore/Inventories/Models.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Inventories/ModelHeader.h"
#include "LumoCore/Inventories/ModelStore.h"
#include "LumoCore/Rules/HomePlaces.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "Platform/QuietFile.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>

namespace lumo::Models {

namespace {

using platform::EntryKind;

constexpr InventoryKind kind = InventoryKind::models;

bool hasEnding(std::string_view name, std::span<const std::string_view> endings) {
    return std::ranges::any_of(endings, [&](std::string_view ending) { return name.ends_with(ending); });
}

/// LM Studio keeps publisher/repository folders.
void findInLMStudio(const std::string& folder, const Look& look) {
    for (const std::string& publisher : platform::namesIn(folder)) {
        const std::string ofPublisher = joined(folder, publisher);
        if (platform::kindOf(ofPublisher) != EntryKind::folder) {
            continue;
        }
        for (const std::string& repository : platform::namesIn(ofPublisher)) {
            const std::string path = joined(ofPublisher, repository);
            if (platform::kindOf(path) == EntryKind::folder) {
                add({.program = "lmstudio",
                     .name = pathInID(path, look.query.home),
                     .shown = publisher + "/" + repository,
                     .detail = "LM Studio",
                     .paths = {path},
                     .mainFile = mainFileIn(path)},
                    look);
            }
        }
    }
}

/// "x-00002-of-00003.gguf" is a part of "x.gguf".
std::string wholeName(std::string_view name) {
    constexpr std::size_t partLength = std::string_view("-00002-of-00003").size();
    const std::size_t middle = name.rfind("-of-");
    if (middle == std::string_view::npos || middle < 6 || name.substr(middle + 9) != ".gguf" ||
        name[middle - 6] != '-') {
        return std::string(name);
    }
    return std::string(name.substr(0, middle - 6)) + std::string(name.substr(middle - 6 + partLength));
}

/// Folders in which each file, or what belongs to it by its name, is a model.
struct FileStore {
    std::string_view program;
    std::string_view shown;
    std::string_view folder;
    std::array<std::string_view, 4> endings;
};

constexpr std::array<FileStore, 4> fileStores{
    {{"llama.cpp",
      "llama.cpp",
      "~/.cache/llama.cpp",
      {".gguf", ".gguf.downloadInProgress", ".ggml", ".gguf"}},
     {"gpt4all",
      "GPT4All",
      "~/.local/share/nomic.ai/GPT4All",
      {".gguf", ".ggmlv3.q4_0.bin", ".part", ".gguf"}},
     {"whisper", "Whisper", "~/.cache/whisper", {".pt", ".pt", ".pt", ".pt"}},
     {"torch", "PyTorch", "~/.cache/torch/hub/checkpoints", {".pt", ".pth", ".bin", ".safetensors"}}}};

void findInFiles(const FileStore& store, const HomePlaces& places, const Look& look) {
    const std::string folder = places.path(store.folder);
    std::map<std::string, StoredModel> models;
    const std::vector<std::string> names = platform::namesIn(folder);
    for (const std::string& name : names) {
        const std::string path = joined(folder, name);
        if (!hasEnding(name, store.endings) || platform::kindOf(path) != EntryKind::file) {
            continue;
        }
        const std::string whole = wholeName(name);
        StoredModel& model = models[whole];
        model.paths.push_back(path);
        if (model.mainFile.empty()) {
            model.mainFile = path;
        }
        // What the program notes of a file beside it.
        for (const std::string_view note : {".json", ".etag"}) {
            if (std::ranges::binary_search(names, name + std::string(note))) {
                model.paths.push_back(path + std::string(note));
            }
        }
    }
    for (auto& [name, model] : models) {
        model.program = store.program;
        model.name = name;
        model.shown = name;
        model.detail = store.shown;
        add(std::move(model), look);
    }
}

/// What the paths take together, shared files once.
std::int64_t bytesOf(const std::vector<std::string>& paths, const InventoryQuery& query) {
    HardLinkRegistry registry;
    std::int64_t bytes = 0;
    for (const Usage& usage : FileTree::measureAll({paths.begin(), paths.end()}, registry,
                                                   {.progress = query.progress, .stop = query.stop})) {
        bytes += usage.allocatedBytes;
    }
    return bytes;
}

/// When the model was opened last, or else changed; absent when neither is known.
std::optional<Date> lastUseOf(const std::string& mainFile) {
    const auto status = mainFile.empty() ? platform::failed(ENOENT) : platform::statusOfFile(mainFile);
    return status ? std::optional(std::max(status->modified, status->opened.value_or(status->modified)))
                  : std::nullopt;
}

DetailItem itemOf(StoredModel model, std::int64_t bytes, const InventoryQuery& query) {
    const auto header = model.mainFile.empty() ? std::nullopt : modelHeaderOf(model.mainFile);
    std::string detail = std::move(model.detail);
    const auto append = [&](const std::string& text) {
        // A name in the header often says it already.
        if (!text.empty() && detail.find(text) == std::string::npos) {
            detail += (detail.empty() ? "" : ", ") + text;
        }
    };
    if (header) {
        append(header->parameters);
        append(header->quantisation);
    }
    if (const auto used = lastUseOf(model.mainFile)) {
        append(Words{"usado por última vez el {}", "last used {}"}.in(query.language,
                                                                      dayText(*used, query.language)));
    }
    return itemToSetAside(idOf(model.program, model.name), std::move(model.shown), std::move(model.paths),
                          bytes, std::move(detail));
}

void findAll(const Look& look) {
    const InventoryQuery& query = look.query;
    const HomePlaces places = HomePlaces::ofThisMachine(query.home);
    findInOllama(look);
    findInHuggingFace(places.path("~/.cache/huggingface") + "/hub", look);
    findInLMStudio(query.home + "/.lmstudio/models", look);
    findInLMStudio(query.home + "/.cache/lm-studio/models", look);
    for (const FileStore& store : fileStores) {
        findInFiles(store, places, look);
    }
}

} // namespace

std::string mainFileIn(const std::string& folder, int depth) {
    constexpr int deepest = 3;
    constexpr std::array<std::string_view, 5> endings{".gguf", ".safetensors", ".bin", ".pt", ".onnx"};
    std::string largest;
    std::int64_t mostBytes = -1;
    const auto take = [&](std::string path) {
        if (const auto status = platform::statusOfFile(path); status && status->bytes > mostBytes) {
            mostBytes = status->bytes;
            largest = std::move(path);
        }
    };
    for (const std::string& name : platform::namesIn(folder)) {
        const std::string path = joined(folder, name);
        const auto standing = platform::kindOf(path);
        if (standing == EntryKind::folder && depth < deepest) {
            take(mainFileIn(path, depth + 1));
        } else if (hasEnding(name, endings)) {
            // In Hugging Face's cache names are links to what has no telling name itself.
            take(standing == EntryKind::link ? platform::withoutLinks(path).value_or("") : path);
        }
    }
    return largest;
}

std::string idOf(std::string_view program, std::string_view name) {
    return std::string(idPrefixOf(kind)) + std::string(program) + ":" + std::string(name);
}

DetailItem* add(StoredModel model, const Look& look) {
    const bool isMeant = look.together == nullptr || look.goes(idOf(model.program, model.name));
    if (!isMeant || model.paths.empty() || look.query.stop.stop_requested()) {
        return nullptr;
    }
    std::int64_t bytes = bytesOf(model.paths, look.query) - model.bytesThatStay;
    bytes = std::max<std::int64_t>(bytes - (model.apart.empty() ? 0 : bytesOf(model.apart, look.query)), 0);
    // What goes with others counts, however little of it is left to itself.
    const bool isWorthwhile =
        look.together != nullptr || (bytes > 0 && look.query.asksFor(bytes, lastUseOf(model.mainFile)));
    if (!isWorthwhile) {
        return nullptr;
    }
    look.inventory.items.push_back(itemOf(std::move(model), bytes, look.query));
    return &look.inventory.items.back();
}

Inventory find(const InventoryQuery& query) {
    Inventory inventory{.kind = kind};
    findAll({.query = query, .inventory = inventory});
    sortLargestFirst(inventory.items);
    return inventory;
}

std::vector<DetailItem> itemsWith(const std::vector<std::string>& ids, const InventoryQuery& query) {
    const std::set<std::string> together(ids.begin(), ids.end());
    Inventory inventory{.kind = kind};
    findAll({.query = query, .inventory = inventory, .together = &together});
    return std::move(inventory.items);
}

std::optional<std::string> refusal(const CleanupAction& action, const InventoryQuery& query) {
    const auto* taken = std::get_if<method::TrashItems>(&action.method);
    if (taken == nullptr) {
        return std::nullopt; // Its own program knows what it needs.
    }
    const std::vector<DetailItem> now = itemsWith({action.id}, query);
    if (!now.empty() && now.front().blockedBecause) {
        return now.front().blockedBecause;
    }
    const auto* own = now.empty() ? nullptr : std::get_if<method::TrashItems>(&now.front().action.method);
    if (!now.empty() && own == nullptr) {
        return Words{"Ollama está en marcha ahora", "Ollama is running now"}.in(query.language);
    }
    const bool mayGo = std::ranges::all_of(taken->paths, [&](const std::string& path) {
        return platform::isMissing(path) ||
               (own != nullptr && std::ranges::find(own->paths, path) != own->paths.end());
    });
    return mayGo ? std::nullopt
                 : std::optional(Words{"un modelo que se queda necesita una parte",
                                       "a model that stays needs a part of it"}
                                     .in(query.language));
}

} // namespace lumo::Models
