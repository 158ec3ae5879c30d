#include "Platform/Clock.h"

namespace lumo::platform {

Timestamp now() {
    return std::chrono::time_point_cast<std::chrono::microseconds>(std::chrono::system_clock::now());
}

double monotonicSeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace lumo::platform
