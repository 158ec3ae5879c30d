#include "LumoCore/Basics/Path.h"
#include "LumoCore/Inventories/ModelStore.h"
#include "Platform/Folder.h"
#include "Platform/QuietFile.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace lumo::Models {

namespace {

using platform::EntryKind;

constexpr std::string_view program = "huggingface";

/// "models--org--name" is the model org/name; absent for what is no repository.
std::optional<std::string> repositoryName(std::string_view folder) {
    for (const std::string_view kindOfRepository : {"models--", "datasets--", "spaces--"}) {
        if (folder.starts_with(kindOfRepository)) {
            std::string name(folder.substr(kindOfRepository.size()));
            if (const std::size_t middle = name.find("--"); middle != std::string::npos) {
                name = name.substr(0, middle) + "/" + name.substr(middle + 2);
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

/// Which repositories need files of others: programs that clear up equal files put links in their places.
class Needs final {
  public:
    explicit Needs(const std::string& hub) : hub_(platform::withoutLinks(hub).value_or(hub)) {}

    void lookAt(const std::string& folder) { lookAt(joined(hub_, folder), folder, 0); }

    /// The repositories with links into that one, by their folders' names.
    [[nodiscard]] const std::set<std::string>& usersOf(const std::string& folder) const {
        static const std::set<std::string> none;
        const auto found = users_.find(folder);
        return found != users_.end() ? found->second : none;
    }

  private:
    void lookAt(const std::string& path, const std::string& user, int depth) {
        constexpr int deepest = 8;
        for (const std::string& name : platform::namesIn(path)) {
            const std::string inside = joined(path, name);
            const auto kind = platform::kindOf(inside);
            if (kind == EntryKind::folder && depth < deepest) {
                lookAt(inside, user, depth + 1);
            } else if (kind == EntryKind::link) {
                const auto target = platform::withoutLinks(inside);
                if (target && isInside(*target, hub_) && target->size() > hub_.size()) {
                    const std::string owner(components(target->substr(hub_.size() + 1)).front());
                    if (owner != user) {
                        users_[owner].insert(user);
                    }
                }
            }
        }
    }

    std::string hub_;
    std::map<std::string, std::set<std::string>> users_;
};

/// Counts the names of files that have several, to tell which of them go for good.
class NamesGone final {
  public:
    /// What the files take of which names stay elsewhere once these names are gone, too.
    std::int64_t bytesThatStay(const std::vector<std::string>& files) {
        std::map<File, std::int64_t> staying;
        for (const std::string& path : files) {
            const auto status = platform::statusOfFile(path);
            if (!status || status->links == 1) {
                continue;
            }
            const File file(status->identity.device, status->identity.object);
            staying[file] = ++gone_[file] < status->links ? status->allocatedBytes : 0;
        }
        std::int64_t bytes = 0;
        for (const auto& [file, ofFile] : staying) {
            bytes += ofFile;
        }
        return bytes;
    }

  private:
    using File = std::pair<std::int32_t, std::uint64_t>; ///< Its volume and its number there.
    std::map<File, std::uint64_t> gone_;
};

struct Hub {
    std::string path;
    Needs needs;
    NamesGone gone;
};

/// Why the repository cannot go: one that stays needs it.
std::optional<std::string> neededBy(const std::string& folder, const Hub& hub, const Look& look) {
    for (const std::string& user : hub.needs.usersOf(folder)) {
        if (!look.goes(idOf(program, user))) {
            return Words{"{} usa una parte: quítalo antes", "{} uses a part of it: remove that first"}.in(
                look.query.language, repositoryName(user).value_or(user));
        }
    }
    return std::nullopt;
}

void addRepository(const std::string& folder, Hub& hub, const Look& look) {
    const std::string path = joined(hub.path, folder);
    const std::string name = repositoryName(folder).value_or(folder);
    std::vector<std::string> unfinished;
    std::vector<std::string> blobs;
    const std::string stored = joined(path, "blobs");
    for (const std::string& blob : platform::namesIn(stored)) {
        (blob.ends_with(".incomplete") ? unfinished : blobs).push_back(joined(stored, blob));
    }
    add({.program = std::string(program),
         .name = folder + "?",
         .shown = name,
         .detail = Words{"descarga sin acabar", "unfinished download"}.in(look.query.language),
         .paths = unfinished},
        look);
    // Alone, nothing else has gone before it.
    NamesGone alone;
    NamesGone& gone = look.goes(idOf(program, folder)) ? hub.gone : alone;
    DetailItem* item = add({.program = std::string(program),
                            .name = folder,
                            .shown = name,
                            .detail = kindOfRepository(folder, look.query.language),
                            .paths = {path},
                            .mainFile = mainFileIn(path + "/snapshots"),
                            .apart = std::move(unfinished),
                            .bytesThatStay = gone.bytesThatStay(blobs)},
                           look);
    if (item != nullptr) {
        item->blockedBecause = neededBy(folder, hub, look);
    }
}

} // namespace

void findInHuggingFace(const std::string& path, const Look& look) {
    Hub hub{.path = path, .needs = Needs(path), .gone = {}};
    std::vector<std::string> folders = platform::namesIn(path);
    std::erase_if(folders, [&](const std::string& folder) {
        return !repositoryName(folder) || platform::kindOf(joined(path, folder)) != EntryKind::folder;
    });
    std::ranges::for_each(folders, [&](const std::string& folder) { hub.needs.lookAt(folder); });
    // What others need goes after them.
    for (const bool isNeeded : {false, true}) {
        for (const std::string& folder : folders) {
            if (hub.needs.usersOf(folder).empty() != isNeeded) {
                addRepository(folder, hub, look);
            }
        }
    }
}

} // namespace lumo::Models
