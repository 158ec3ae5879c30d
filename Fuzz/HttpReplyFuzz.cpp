#include "Fuzz/Check.h"
#include "Platform/HttpReply.h"

// A reply stays within its limits and means the same however its bytes are cut; the first byte says how.
namespace {

using lumo::platform::HttpReplyReader;
using State = HttpReplyReader::State;

constexpr std::size_t mostBodyBytes = 1000;

State read(HttpReplyReader& reader, std::string_view bytes, std::size_t piece) {
    State state = State::unfinished;
    for (std::size_t start = 0; start < bytes.size() && state == State::unfinished; start += piece) {
        state = reader.add(bytes.substr(start, piece));
    }
    return state == State::unfinished ? reader.end() : state;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes = text(data + 1, size - 1);
    HttpReplyReader whole(mostBodyBytes);
    HttpReplyReader cut(mostBodyBytes);
    const State state = read(whole, bytes, bytes.size() + 1);
    check(state != State::unfinished && read(cut, bytes, data[0] + std::size_t{1}) == state);
    if (state == State::finished) {
        const auto reply = whole.take();
        check(reply.body.size() <= mostBodyBytes && reply.status >= 200 && cut.take() == reply);
    }
    return 0;
}
