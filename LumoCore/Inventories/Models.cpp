#include "LumoCore/Inventories/Models.h"

#include "LumoCore/Basics/LargestFirst.h"
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

namespace lumo::Models {

namespace {

using platform::EntryKind;

constexpr InventoryKind kind = InventoryKind::models;

bool hasEnding(std::string_view name, std::span<const std::string_view> endings) {
    return std::ranges::any_of(endings, [&](std::string_view ending) { return name.ends_with(ending); });
}

/// The largest file of a folder's tree that may have a header; empty when there is none.
std::string mainFileIn(const std::string& folder, int depth = 0) {
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

/// "models--org--name" is the model org/name; absent for what is no repository.
std::optional<std::string> repositoryName(std::string_view folder) {
    for (const std::string_view kindOfRepository : {"models--", "datasets--", "spaces--"}) {
        if (folder.starts_with(kindOfRepository)) {
            std::string name(folder.substr(kindOfRepository.size()));
            if (const std::size_t middle = name.find("--"); middle != std::string::npos) {
                name.replace(middle, 2, "/");
            }
            return name;
        }
    }
    return std::nullopt;
}

std::string kindOfRepository(std::string_view folder, Language language) {
    if (folder.starts_with("datasets--")) {
        return Words{"Datos de Hugging Face", "Data set of Hugging Face"}.in(language);
    }
    return "Hugging Face";
}

void findInHuggingFace(const InventoryQuery& query, const HomePlaces& places, Inventory& inventory) {
    const std::string hub = places.path("~/.cache/huggingface") + "/hub";
    for (const std::string& folder : platform::namesIn(hub)) {
        const auto name = repositoryName(folder);
        const std::string path = joined(hub, folder);
        if (!name || platform::kindOf(path) != EntryKind::folder || query.stop.stop_requested()) {
            continue;
        }
        StoredModel unfinished{.program = "huggingface",
                               .name = folder + "?",
                               .shown = *name,
                               .detail =
                                   Words{"descarga sin acabar", "unfinished download"}.in(query.language)};
        for (const std::string& blob : platform::namesIn(path + "/blobs")) {
            if (blob.ends_with(".incomplete")) {
                unfinished.paths.push_back(path + "/blobs/" + blob);
            }
        }
        const std::int64_t unfinishedBytes = unfinished.paths.empty() ? 0 : bytesOf(unfinished.paths, query);
        add(std::move(unfinished), unfinishedBytes, query, inventory);
        add({.program = "huggingface",
             .name = folder,
             .shown = *name,
             .detail = kindOfRepository(folder, query.language),
             .paths = {path},
             .mainFile = mainFileIn(path + "/snapshots")},
            bytesOf({path}, query) - unfinishedBytes, query, inventory);
    }
}

/// LM Studio keeps publisher/repository folders.
void findInLMStudio(const InventoryQuery& query, const std::string& folder, Inventory& inventory) {
    for (const std::string& publisher : platform::namesIn(folder)) {
        const std::string ofPublisher = joined(folder, publisher);
        if (platform::kindOf(ofPublisher) != EntryKind::folder) {
            continue;
        }
        for (const std::string& repository : platform::namesIn(ofPublisher)) {
            const std::string path = joined(ofPublisher, repository);
            if (platform::kindOf(path) == EntryKind::folder) {
                add({.program = "lmstudio",
                     .name = pathInID(path, query.home),
                     .shown = publisher + "/" + repository,
                     .detail = "LM Studio",
                     .paths = {path},
                     .mainFile = mainFileIn(path)},
                    bytesOf({path}, query), query, inventory);
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

void findInFiles(const FileStore& store, const InventoryQuery& query, const HomePlaces& places,
                 Inventory& inventory) {
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
        const std::int64_t bytes = bytesOf(model.paths, query);
        add(std::move(model), bytes, query, inventory);
    }
}

} // namespace

std::int64_t bytesOf(const std::vector<std::string>& paths, const InventoryQuery& query) {
    HardLinkRegistry registry;
    std::int64_t bytes = 0;
    for (const Usage& usage : FileTree::measureAll({paths.begin(), paths.end()}, registry,
                                                   {.progress = query.progress, .stop = query.stop})) {
        bytes += usage.allocatedBytes;
    }
    return bytes;
}

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
    return itemToSetAside(std::string(idPrefixOf(kind)) + model.program + ":" + model.name,
                          std::move(model.shown), std::move(model.paths), bytes, std::move(detail));
}

void add(StoredModel model, std::int64_t bytes, const InventoryQuery& query, Inventory& inventory) {
    if (bytes > 0 && query.asksFor(bytes, lastUseOf(model.mainFile))) {
        inventory.items.push_back(itemOf(std::move(model), bytes, query));
    }
}

Inventory find(const InventoryQuery& query) {
    const HomePlaces places = HomePlaces::ofThisMachine(query.home);
    Inventory inventory{.kind = kind};
    findInOllama(query, inventory);
    findInHuggingFace(query, places, inventory);
    findInLMStudio(query, query.home + "/.lmstudio/models", inventory);
    findInLMStudio(query, query.home + "/.cache/lm-studio/models", inventory);
    for (const FileStore& store : fileStores) {
        findInFiles(store, query, places, inventory);
    }
    sortLargestFirst(inventory.items, &DetailItem::bytes);
    return inventory;
}

} // namespace lumo::Models
