#include "Fuzz/Check.h"
#include "LumoCore/Inventories/AskedTool.h"
#include "LumoCore/Inventories/ContainerLists.h"

#include <algorithm>

namespace {

/// Nothing that a tool would take for an option, and no size below nothing.
void checkLists(const lumo::ContainerLists& lists) {
    for (const lumo::ContainerImage& image : lists.images) {
        check(!image.id.empty() && !image.id.starts_with('-') && image.uniqueBytes >= 0 &&
              image.containers >= 0);
        check(std::ranges::count(lists.images, image.id, &lumo::ContainerImage::id) == 1);
    }
    for (const lumo::StoppedContainer& container : lists.containers) {
        check(!container.id.empty() && !container.id.starts_with('-') && container.bytes >= 0);
    }
    for (const lumo::UnusedVolume& volume : lists.volumes) {
        check(!volume.name.empty() && !volume.name.starts_with('-') && volume.bytes >= 0);
    }
    check(lists.buildCacheBytes >= 0);
}

} // namespace

// Whatever a container tool prints is read or refused.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view json = lumo::jsonIn(text(data, size));
    check(lumo::shownBytes(text(data, size)) >= 0);
    if (const auto lists = lumo::dockerLists(json)) {
        checkLists(*lists);
    }
    if (const auto lists = lumo::podmanLists(json, json, json, json, json)) {
        checkLists(*lists);
    }
    (void)lumo::podmanImageIDs(json);
    return 0;
}
