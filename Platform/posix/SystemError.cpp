#include "Platform/SystemError.h"

#include <cerrno>
#include <system_error>

namespace lumo::platform {

std::string SystemError::reason() const {
    return std::generic_category().message(code);
}

bool SystemError::isMissing() const {
    return code == ENOENT || code == ENOTDIR;
}

} // namespace lumo::platform
