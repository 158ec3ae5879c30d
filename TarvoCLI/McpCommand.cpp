#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/HomeLock.h"
#include "Platform/LineInput.h"
#include "Platform/Terminal.h"
#include "TarvoCLI/Commands.h"
#include "TarvoMCP/Message.h"
#include "TarvoMCP/Server.h"
#include "TarvoMCP/Tools.h"

#include <memory>

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
    std::vector<mcp::Tool> tools = mcp::lookingTools(workspace, offer);
    if (mayChange) {
        for (mcp::Tool& tool : mcp::changingTools(workspace)) {
            tools.push_back(std::move(tool));
        }
    }
    mcp::Server server(
        {.version = TARVO_VERSION, .instructions = mcp::instructions(offer)}, std::move(tools),
        [](const std::string& line) { return platform::writeAll(platform::Stream::output, line + "\n"); });
    using State = platform::LineInput::State;
    platform::LineInput input(mcp::mostMessageBytes);
    std::string line;
    for (State state = input.next(line); state != State::end && !server.isEnded(); state = input.next(line)) {
        if (state == State::line) {
            server.receive(line);
        } else {
            server.receiveTooLong();
        }
    }
    server.end();
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
