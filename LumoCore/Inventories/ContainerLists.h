#pragma once

#include "LumoCore/Basics/Result.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What container tools say that they have, in one shape. Their answers are foreign bytes.
namespace lumo {

struct ContainerImage {
    std::string id;
    std::vector<std::string> names; ///< "alpine:latest"; none of one that is dangling.
    std::int64_t uniqueBytes = 0;   ///< What goes when the image goes and all others stay.
    std::int64_t containers = 0;    ///< That were made from it.
};

struct StoppedContainer {
    std::string id;
    std::string name;
    std::string image;
    std::string status; ///< The tool's own words ("Exited (0) 2 weeks ago").
    std::int64_t bytes = 0;
};

struct UnusedVolume {
    std::string name;
    std::int64_t bytes = 0;
    std::string folder = {}; ///< To be measured where the tool does not tell what it takes.
};

struct ContainerLists {
    std::vector<ContainerImage> images;
    std::vector<StoppedContainer> containers;
    std::vector<UnusedVolume> volumes;
    std::int64_t buildCacheBytes = 0;
};

/// The bytes in a size as Docker shows it ("1.23GB", "0B (virtual 4.8MB)"); 0 for anything else.
std::int64_t shownBytes(std::string_view text);

/// What `docker system df -v --format '{{json .}}'` prints.
Result<ContainerLists> dockerLists(std::string_view json);

/// What `podman images --all`, `podman ps --all --size` and `podman volume ls --filter dangling=true` print
/// with `--format json`, and `podman image inspect` for all these images, from which it follows which layers
/// are shared. `layers` is the list in Podman's storage, with the size of each layer; it may be empty. Of an
/// image that shares layers whose size nobody tells nothing is counted.
Result<ContainerLists> podmanLists(std::string_view images, std::string_view containers,
                                   std::string_view volumes, std::string_view inspected,
                                   std::string_view layers = {});

/// The ids of the images in such a list, for inspecting them.
std::vector<std::string> podmanImageIDs(std::string_view images);

} // namespace lumo
