#include "LumoCore/Basics/System.h"

#include "Platform/Environment.h"

namespace lumo {

System currentSystem() {
    return platform::bundlesApplications() ? System::macos : System::linux;
}

} // namespace lumo
