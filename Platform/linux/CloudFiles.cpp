#include "Platform/CloudFiles.h"

namespace lumo::platform {

std::optional<Eviction> evictLocalCopies(const std::vector<std::string>& /*paths*/) {
    return std::nullopt;
}

} // namespace lumo::platform
