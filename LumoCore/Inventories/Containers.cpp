#include "LumoCore/Inventories/Containers.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Inventories/AskedTool.h"
#include "LumoCore/Inventories/ContainerLists.h"
#include "LumoCore/Scanning/FileTree.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace lumo::Containers {

namespace {

using Answer = std::expected<std::string, NoAnswer>;
using Lists = std::expected<ContainerLists, NoAnswer>;

constexpr InventoryKind kind = InventoryKind::docker;

NoAnswer unreadable(std::string_view tool, const Failure& why, Language language) {
    return {.reason = Words{"no entiendo lo que dice {} ({})", "what {} says cannot be read ({})"}.in(
                language, tool, why.message)};
}

Lists askDocker(const InventoryQuery& query) {
    const Answer answer = askTool({"docker", "system", "df", "-v", "--format", "{{json .}}"}, query);
    if (!answer) {
        return std::unexpected(answer.error());
    }
    auto lists = dockerLists(jsonIn(*answer));
    return lists ? Lists(std::move(*lists))
                 : std::unexpected(unreadable("docker", lists.error(), query.language));
}

/// Podman makes its storage when it is asked for the first time: where it has none it is not asked.
bool hasPodmanStorage(const InventoryQuery& query) {
    return platform::isFolderThroughLinks(query.home + "/.local/share/containers/storage") ||
           platform::isFolderThroughLinks(query.systemRoot + "/var/lib/containers/storage");
}

/// The list of layers in the user's own storage, since no command of the tool's tells their sizes; empty
/// where it stands elsewhere.
std::string layersOfPodman(const InventoryQuery& query) {
    constexpr std::size_t mostBytes = std::size_t{16} * 1024 * 1024;
    return platform::readWhole(query.home + "/.local/share/containers/storage/overlay-layers/layers.json",
                               mostBytes)
        .value_or("");
}

Lists askPodman(const InventoryQuery& query) {
    if (!hasPodmanStorage(query)) {
        return std::unexpected(
            NoAnswer{.isMissing = true,
                     .reason = Words{"podman no guarda nada", "podman keeps nothing"}.in(query.language)});
    }
    const Answer images = askTool({"podman", "images", "--all", "--format", "json"}, query);
    if (!images) {
        return std::unexpected(images.error());
    }
    std::vector<std::string> inspect{"podman", "image", "inspect"};
    const std::vector<std::string> ids = podmanImageIDs(jsonIn(*images));
    inspect.insert(inspect.end(), ids.begin(), ids.end());
    const Answer inspected = ids.empty() ? Answer("[]") : askTool(inspect, query);
    const Answer containers = askTool({"podman", "ps", "--all", "--size", "--format", "json"}, query);
    const Answer volumes =
        askTool({"podman", "volume", "ls", "--filter", "dangling=true", "--format", "json"}, query);
    for (const Answer* answer : {&inspected, &containers, &volumes}) {
        if (!*answer) {
            return std::unexpected(answer->error());
        }
    }
    auto lists = podmanLists(jsonIn(*images), jsonIn(*containers), jsonIn(*volumes), jsonIn(*inspected),
                             layersOfPodman(query));
    if (!lists) {
        return std::unexpected(unreadable("podman", lists.error(), query.language));
    }
    for (UnusedVolume& volume : lists->volumes) {
        HardLinkRegistry registry;
        volume.bytes = volume.folder.starts_with('/')
                           ? FileTree::measure(volume.folder, registry, {.stop = query.stop}).allocatedBytes
                           : 0;
    }
    return std::move(*lists);
}

/// Makes the items of one tool.
struct Shelf {
    std::string tool;
    const InventoryQuery& query;
    std::vector<DetailItem>& items;

    [[nodiscard]] std::string id(std::string_view what, std::string_view own) const {
        return fmt::format("{}{}:{}:{}", idPrefixOf(kind), tool, what, own);
    }
    [[nodiscard]] std::string say(const Words& words) const { return words.in(query.language); }

    void add(DetailItem item) const {
        if (query.asksFor(item.bytes)) {
            items.push_back(std::move(item));
        }
    }

    void add(const ContainerImage& image) const {
        // The tools refuse an id with several names; with all its names the same image goes.
        std::vector<std::string> words{tool, "image", "rm"};
        if (image.names.size() > 1) {
            words.insert(words.end(), image.names.begin(), image.names.end());
        } else {
            words.push_back(image.id);
        }
        std::string name = image.names.empty() ? say({"imagen sin nombre", "image without a name"})
                                               : printable(fmt::format("{}", fmt::join(image.names, ", ")));
        std::string detail = tool + ": " +
                             say({"imagen; se puede descargar otra vez si es de un registro",
                                  "image; can be downloaded again if it is from a registry"});
        if (image.names.empty()) {
            detail = tool + ": " +
                     say({"imagen que ya no se llama de ninguna manera", "image that has no name any more"});
        }
        DetailItem item = itemForTool(id("image", image.id), std::move(name), std::move(words),
                                      image.uniqueBytes, std::move(detail));
        if (image.containers > 0) {
            item.blockedBecause =
                Words{"la usan {} contenedores: quítalos antes", "{} containers use it: remove them first"}
                    .in(query.language, image.containers);
        }
        add(std::move(item));
    }

    void add(const StoppedContainer& container) const {
        add(itemForTool(id("container", container.id), printable(container.name),
                        {tool, "container", "rm", container.id}, container.bytes,
                        tool + ": " + say({"contenedor parado de ", "stopped container of "}) +
                            printable(container.image) + ", " + printable(container.status)));
    }

    void add(const UnusedVolume& volume) const {
        add(itemForTool(id("volume", volume.name), printable(volume.name),
                        {tool, "volume", "rm", volume.name}, volume.bytes,
                        tool + ": " +
                            say({"volumen que no usa ningún contenedor; puede guardar una base de datos",
                                 "volume that no container uses; it may hold a database"})));
    }

    void addAll(const ContainerLists& lists) const {
        std::ranges::for_each(lists.images, [this](const auto& image) { add(image); });
        std::ranges::for_each(lists.containers, [this](const auto& container) { add(container); });
        std::ranges::for_each(lists.volumes, [this](const auto& volume) { add(volume); });
        if (lists.buildCacheBytes > 0) {
            add(itemForTool(
                id("cache", "all"), say({"Restos de construir imágenes", "What building images left"}),
                {tool, "builder", "prune", "--all", "--force"}, lists.buildCacheBytes,
                tool + ": " + say({"se vuelve a hacer al construir", "made again by the next build"})));
        }
    }
};

struct Tool {
    const char* name;
    Lists (*ask)(const InventoryQuery& query);
    Words whenSilent; ///< What a person can do about it.
};

const Tool tools[] = {{"docker",
                       askDocker,
                       {"Docker no responde: ponlo en marcha y vuelve a mirar",
                        "Docker does not answer: start it and look again"}},
                      {"podman",
                       askPodman,
                       {"Podman no responde: cuando funcione, vuelve a mirar",
                        "Podman does not answer: look again once it works"}}};

/// Why a tool that is there told nothing. Its own words are in no language that was chosen.
std::string reasonOf(const Tool& tool, const NoAnswer& answer, Language language) {
    if (answer.said.empty()) {
        return answer.reason;
    }
    const bool isForbidden = folded(answer.said).find("permission denied") != std::string::npos;
    const std::string reason =
        isForbidden ? Words{"te falta permiso para usar {}", "you have no permission to use {}"}.in(language,
                                                                                                    tool.name)
                    : tool.whenSilent.in(language);
    return reason + Words{". Dice: «{}»", ". It says: “{}”"}.in(language, answer.said);
}

} // namespace

bool isVolume(std::string_view id) {
    const std::string_view prefix = idPrefixOf(kind);
    const std::size_t tool = prefix.size();
    const std::size_t what = id.find(':', tool);
    return id.starts_with(prefix) && what != std::string_view::npos &&
           id.substr(what + 1).starts_with("volume:");
}

Inventory find(const InventoryQuery& query) {
    Inventory inventory{.kind = kind};
    std::vector<NoAnswer> silent;
    for (const Tool& tool : tools) {
        if (const Lists lists = tool.ask(query)) {
            Shelf{tool.name, query, inventory.items}.addAll(*lists);
        } else {
            silent.push_back(lists.error());
            silent.back().reason = reasonOf(tool, silent.back(), query.language);
        }
    }
    // A tool that is there and does not answer says more than one that is not there.
    std::ranges::sort(silent, {}, &NoAnswer::isMissing);
    const bool hasAnswer = silent.size() < 2;
    if (!hasAnswer && silent.front().isMissing) {
        inventory.unavailable =
            Words{"ni docker ni podman guardan nada aquí", "neither docker nor podman keeps anything here"}
                .in(query.language);
    } else if (inventory.items.empty() && !silent.empty() && !silent.front().isMissing) {
        inventory.unavailable = silent.front().reason;
    }
    sortLargestFirst(inventory.items);
    return inventory;
}

} // namespace lumo::Containers
