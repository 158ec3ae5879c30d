#include "TarvoCLI/CommandDesk.h"

namespace tarvo {

Desk deskOf(const Invocation& invocation, std::string_view command) {
    Desk desk = Desk::ofThisMachine(invocation.home, "tarvo " + std::string(command));
    desk.installed = invocation.installed;
    return desk;
}

std::optional<ExitCode> refuseForeign(const Invocation& invocation) {
    if (!lumo::HomeLock::isForeign(invocation.home)) {
        return std::nullopt;
    }
    return complain(lumo::HomeLock::foreignText(), ExitCode::failed);
}

} // namespace tarvo
