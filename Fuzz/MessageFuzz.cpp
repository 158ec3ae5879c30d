#include "Fuzz/Check.h"
#include "TarvoMCP/Message.h"
#include "TarvoMCP/Protocol.h"

using namespace tarvo::mcp;

namespace {

void take(const Message& message) {
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
}

} // namespace

// Whatever a client sends, it is read as one kind of message, and what is answered can be read again.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Message message = readMessage(text(data, size));
    take(message);
    if (const auto* batch = std::get_if<Batch>(&message)) {
        for (const JsonValue& member : batch->members) {
            take(messageIn(member));
        }
    }
    return 0;
}
