#include "Fuzz/Check.h"
#include "TarvoMCP/Message.h"
#include "TarvoMCP/Protocol.h"

// Whatever a client sends, it is read as one kind of message, and what is answered can be read again.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tarvo::mcp;
    const Message message = readMessage(text(data, size));
    if (const auto* malformed = std::get_if<Malformed>(&message)) {
        check(lumo::parseJson(errorLine(malformed->id, malformed->code, malformed->reason)).has_value());
    }
    if (const auto* request = std::get_if<Request>(&message)) {
        const std::string line = resultLine(request->id, request->params);
        check(line.find('\n') == std::string::npos && lumo::parseJson(line).has_value());
        const Peer peer = peerOfHandshake(request->params);
        check(peer.name.find('\x1B') == std::string::npos);
        versionInRequest(request->params);
        peerOfRequest(request->params);
    }
    return 0;
}
