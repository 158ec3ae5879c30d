#include "Platform/Descriptor.h"

#include <unistd.h>

namespace lumo::platform {

Descriptor::~Descriptor() {
    if (number_ >= 0) {
        ::close(number_);
    }
}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
    if (this != &other) {
        if (number_ >= 0) {
            ::close(number_);
        }
        number_ = std::exchange(other.number_, -1);
    }
    return *this;
}

} // namespace lumo::platform
