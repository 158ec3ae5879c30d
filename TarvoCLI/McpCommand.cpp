#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "Platform/LineInput.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Commands.h"
#include "TarvoMCP/Message.h"
#include "TarvoMCP/Outbox.h"
#include "TarvoMCP/Server.h"
#include "TarvoMCP/Tools.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

namespace tarvo {

using lumo::Words;
namespace platform = lumo::platform;

namespace {

ExitCode serve(bool isReadOnly, const Invocation& invocation) {
    platform::noteInterrupts();
    platform::ignoreBrokenPipes();
    const auto workspace = std::make_shared<mcp::Workspace>(invocation.home);
    // Root on somebody else's home may look, as on the command line.
    const bool mayChange = !isReadOnly && !lumo::HomeLock::isForeign(invocation.home);
    const mcp::Offer offer = mayChange ? mcp::Offer::everything : mcp::Offer::looking;
    mcp::Outbox outbox([](std::string_view bytes) {
        constexpr std::chrono::seconds patience{1};
        return platform::writeWhatFits(platform::Stream::output, bytes, patience);
    });
    mcp::Server server({.version = TARVO_VERSION, .instructions = mcp::instructions(offer)},
                       mcp::offeringsOf(workspace, offer),
                       [&](const std::string& line, mcp::Line kind) { return outbox.put(line, kind); });
    using State = platform::LineInput::State;
    platform::LineInput input(mcp::mostMessageBytes);
    std::string line;
    // A client that asks and does not read what it is answered is not asked for more.
    for (State state = input.next(line); state != State::end && !server.isEnded() && outbox.waitForRoom();
         state = input.next(line)) {
        if (state == State::line) {
            server.receive(line);
        } else {
            server.receiveTooLong();
        }
    }
    server.end();
    outbox.close();
    return platform::wasInterrupted() ? ExitCode::interrupted : ExitCode::done;
}

} // namespace

void addMcpCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(
        app, "mcp", "mcp", "el servidor de herramientas para agentes, por la entrada y salida estándar",
        "the tool server for agents, on standard input and output");
    const auto isReadOnly = std::make_shared<bool>(false);
    command->add_flag(
        "--read-only", *isReadOnly,
        Words{"solo mirar y proponer; nada se limpia", "only look and propose; nothing is cleaned"}.in());
    command->callback([isReadOnly, &chosen] {
        chosen = [isReadOnly](const Invocation& invocation) { return serve(*isReadOnly, invocation); };
    });
}

} // namespace tarvo
