#include "LumoCore/Inventories/ContainerLists.h"

#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Codec.h"

#include <algorithm>
#include <charconv>
#include <map>

namespace lumo {

namespace {

const JsonValue::Array& listIn(const JsonValue& document, std::string_view name = {}) {
    static const JsonValue::Array none;
    const JsonValue* value = name.empty() ? &document : document.find(name);
    const auto* list = value != nullptr ? std::get_if<JsonValue::Array>(&value->value) : nullptr;
    return list != nullptr ? *list : none;
}

std::string textIn(const JsonValue& object, std::string_view name) {
    const JsonValue* value = object.find(name);
    const auto* text = value != nullptr ? std::get_if<std::string>(&value->value) : nullptr;
    return text != nullptr ? *text : std::string();
}

std::vector<std::string> textsIn(const JsonValue& object, std::string_view name) {
    std::vector<std::string> texts;
    for (const JsonValue& value : listIn(object, name)) {
        if (const auto* text = std::get_if<std::string>(&value.value)) {
            texts.push_back(*text);
        }
    }
    return texts;
}

/// A count or a size, which Docker writes as a text; never negative.
std::int64_t numberIn(const JsonValue& object, std::string_view name) {
    const JsonValue* value = object.find(name);
    if (value == nullptr) {
        return 0;
    }
    if (const auto* number = std::get_if<std::int64_t>(&value->value)) {
        return std::max<std::int64_t>(*number, 0);
    }
    const auto* text = std::get_if<std::string>(&value->value);
    std::int64_t number = 0;
    if (text != nullptr) {
        std::from_chars(text->data(), text->data() + text->size(), number);
    }
    return std::max<std::int64_t>(number, 0);
}

bool isSaid(const JsonValue& object, std::string_view name) {
    const JsonValue* value = object.find(name);
    const auto* said = value != nullptr ? std::get_if<bool>(&value->value) : nullptr;
    return (said != nullptr && *said) || textIn(object, name) == "true";
}

bool isStopped(std::string_view state) {
    return state == "exited" || state == "created" || state == "dead" || state == "stopped" ||
           state == "configured";
}

/// What no tool takes for an option.
bool isName(std::string_view name) {
    return !name.empty() && !name.starts_with('-');
}

/// One row an image and name; one image may have several.
std::vector<ContainerImage> dockerImages(const JsonValue& document) {
    std::vector<ContainerImage> images;
    for (const JsonValue& row : listIn(document, "Images")) {
        const std::string id = textIn(row, "ID");
        if (!isName(id)) {
            continue;
        }
        auto image = std::ranges::find(images, id, &ContainerImage::id);
        if (image == images.end()) {
            images.push_back({.id = id,
                              .uniqueBytes = shownBytes(textIn(row, "UniqueSize")),
                              .containers = numberIn(row, "Containers")});
            image = std::prev(images.end());
        }
        const std::string repository = textIn(row, "Repository");
        const std::string tag = textIn(row, "Tag");
        if (isName(repository) && repository != "<none>" && isName(tag) && tag != "<none>") {
            image->names.push_back(repository + ":" + tag);
        }
    }
    return images;
}

/// Layers of an image, the lowest first, and what all of them take.
struct Layers {
    std::vector<std::string> digests;
    std::int64_t bytes = 0;
};

std::size_t sharedLayers(const Layers& left, const Layers& right) {
    return static_cast<std::size_t>(std::ranges::mismatch(left.digests, right.digests).in1 -
                                    left.digests.begin());
}

using LayerSizes = std::map<std::string, std::int64_t>; ///< By what is in a layer.

LayerSizes sizesIn(const JsonValue& layers) {
    LayerSizes sizes;
    for (const JsonValue& layer : listIn(layers)) {
        if (std::string digest = textIn(layer, "diff-digest"); !digest.empty()) {
            sizes[std::move(digest)] = numberIn(layer, "diff-size");
        }
    }
    return sizes;
}

/// What the layers take from that one on; absent when nobody tells of one of them.
std::optional<std::int64_t> bytesFrom(std::size_t first, const Layers& layers, const LayerSizes& sizes) {
    std::int64_t bytes = 0;
    for (; first < layers.digests.size(); ++first) {
        const auto size = sizes.find(layers.digests[first]);
        if (size == sizes.end()) {
            return std::nullopt;
        }
        bytes = saturatedSum(bytes, size->second);
    }
    return std::min(bytes, layers.bytes);
}

/// What goes with the image: all but the layers that another image has as well.
std::int64_t uniqueBytes(const std::string& id, const std::map<std::string, Layers>& all,
                         const LayerSizes& sizes) {
    const Layers& own = all.at(id);
    std::size_t shared = 0;
    for (const auto& [other, layers] : all) {
        if (other != id) {
            shared = std::max(shared, sharedLayers(own, layers));
        }
    }
    if (shared == 0) {
        return own.bytes;
    }
    if (shared == own.digests.size()) {
        return 0;
    }
    for (const auto& [other, layers] : all) {
        if (layers.digests.size() == shared && sharedLayers(own, layers) == shared) {
            return std::max<std::int64_t>(own.bytes - layers.bytes, 0);
        }
    }
    return bytesFrom(shared, own, sizes).value_or(0);
}

std::map<std::string, Layers> layersIn(const JsonValue& inspected) {
    std::map<std::string, Layers> layers;
    for (const JsonValue& image : listIn(inspected)) {
        const JsonValue* files = image.find("RootFS");
        if (files != nullptr) {
            layers[textIn(image, "Id")] = {.digests = textsIn(*files, "Layers"),
                                           .bytes = numberIn(image, "Size")};
        }
    }
    return layers;
}

} // namespace

std::int64_t shownBytes(std::string_view text) {
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    std::string_view unit = text.substr(static_cast<std::size_t>(read.ptr - text.data()));
    unit = unit.substr(0, unit.find(' ', unit.starts_with(' ') ? 1 : 0));
    unit.remove_prefix(unit.starts_with(' ') ? 1 : 0);
    constexpr std::array<std::pair<std::string_view, double>, 7> units{
        {{"B", 1}, {"kB", 1e3}, {"KB", 1e3}, {"MB", 1e6}, {"GB", 1e9}, {"TB", 1e12}, {"PB", 1e15}}};
    const auto known = std::ranges::find(units, unit, [](const auto& each) { return each.first; });
    constexpr double most = 1e18;
    const double bytes = known != units.end() ? number * known->second : 0;
    return read.ec == std::errc() && bytes > 0 && bytes < most ? static_cast<std::int64_t>(bytes) : 0;
}

Result<ContainerLists> dockerLists(std::string_view json) {
    const auto document = parseJson(json);
    if (!document) {
        return std::unexpected(document.error());
    }
    ContainerLists lists{.images = dockerImages(*document)};
    for (const JsonValue& row : listIn(*document, "Containers")) {
        if (isStopped(textIn(row, "State")) && isName(textIn(row, "ID"))) {
            lists.containers.push_back({.id = textIn(row, "ID"),
                                        .name = textIn(row, "Names"),
                                        .image = textIn(row, "Image"),
                                        .status = textIn(row, "Status"),
                                        .bytes = shownBytes(textIn(row, "Size"))});
        }
    }
    for (const JsonValue& row : listIn(*document, "Volumes")) {
        if (textIn(row, "Links") == "0" && isName(textIn(row, "Name"))) {
            lists.volumes.push_back({.name = textIn(row, "Name"), .bytes = shownBytes(textIn(row, "Size"))});
        }
    }
    for (const JsonValue& row : listIn(*document, "BuildCache")) {
        if (!isSaid(row, "InUse") && !isSaid(row, "Shared")) {
            lists.buildCacheBytes = saturatedSum(lists.buildCacheBytes, shownBytes(textIn(row, "Size")));
        }
    }
    return lists;
}

std::vector<std::string> podmanImageIDs(std::string_view images) {
    std::vector<std::string> ids;
    const auto document = parseJson(images);
    for (const JsonValue& image : document ? listIn(*document) : JsonValue::Array()) {
        if (std::string id = textIn(image, "Id"); isName(id) && std::ranges::find(ids, id) == ids.end()) {
            ids.push_back(std::move(id));
        }
    }
    return ids;
}

Result<ContainerLists> podmanLists(std::string_view images, std::string_view containers,
                                   std::string_view volumes, std::string_view inspected,
                                   std::string_view layerList) {
    const auto imageList = parseJson(images);
    const auto containerList = parseJson(containers);
    const auto volumeList = parseJson(volumes);
    const auto inspectedList = parseJson(inspected);
    for (const auto* list : {&imageList, &containerList, &volumeList, &inspectedList}) {
        if (!*list) {
            return std::unexpected(list->error());
        }
    }
    ContainerLists lists;
    const std::map<std::string, Layers> layers = layersIn(*inspectedList);
    const auto storedLayers = parseJson(layerList);
    const LayerSizes sizes = storedLayers ? sizesIn(*storedLayers) : LayerSizes();
    for (const JsonValue& row : listIn(*imageList)) {
        const std::string id = textIn(row, "Id");
        if (isName(id) && layers.contains(id) &&
            std::ranges::find(lists.images, id, &ContainerImage::id) == lists.images.end()) {
            lists.images.push_back({.id = id,
                                    .names = textsIn(row, "Names"),
                                    .uniqueBytes = uniqueBytes(id, layers, sizes),
                                    .containers = numberIn(row, "Containers")});
        }
    }
    for (const JsonValue& row : listIn(*containerList)) {
        const std::vector<std::string> names = textsIn(row, "Names");
        const JsonValue* size = row.find("Size");
        if (isStopped(textIn(row, "State")) && isName(textIn(row, "Id"))) {
            lists.containers.push_back({.id = textIn(row, "Id"),
                                        .name = names.empty() ? textIn(row, "Id") : names.front(),
                                        .image = textIn(row, "Image"),
                                        .status = textIn(row, "Status"),
                                        .bytes = size != nullptr ? numberIn(*size, "rwSize") : 0});
        }
    }
    for (const JsonValue& row : listIn(*volumeList)) {
        if (isName(textIn(row, "Name"))) {
            lists.volumes.push_back({.name = textIn(row, "Name"), .folder = textIn(row, "Mountpoint")});
        }
    }
    return lists;
}

} // namespace lumo
