#include "Platform/HttpReply.h"

#include <gtest/gtest.h>

using lumo::platform::HttpReplyReader;
using State = HttpReplyReader::State;

namespace {

/// The state after the bytes, given piece by piece, and the end of the connection.
State read(HttpReplyReader& reader, std::string_view bytes, std::size_t piece) {
    State state = State::unfinished;
    for (std::size_t start = 0; start < bytes.size(); start += piece) {
        state = reader.add(bytes.substr(start, piece));
    }
    return state == State::unfinished ? reader.end() : state;
}

} // namespace

TEST(HttpReply, IsPutTogetherFromPiecesOfAnySize) {
    for (const std::string_view bytes :
         {"HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nabcd",
          "HTTP/1.0 200\r\ncontent-LENGTH:3 \r\nX:\r\n\r\nabc", "HTTP/1.0 200 \r\nServer: x\r\n\r\nabc"}) {
        for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
            HttpReplyReader reader(3);
            ASSERT_EQ(read(reader, bytes, piece), State::finished) << bytes;
            EXPECT_EQ(reader.take(), (lumo::platform::HttpReply{200, "abc"}));
        }
    }
}

TEST(HttpReply, IsRefusedWhenItIsMalformedCutOffOrTooLarge) {
    const std::string longHead = "HTTP/1.0 200 OK\r\nX: " + std::string(HttpReplyReader::mostHeadBytes, 'x');
    using Case = std::tuple<std::string, State>;
    for (const auto& [bytes, expected] :
         {Case{"", State::malformed}, Case{"SSH-2.0-x\r\n\r\n", State::malformed},
          Case{"HTTP/2 200 OK\r\n\r\n", State::malformed}, Case{"HTTP/1.1 20 OK\r\n\r\n", State::malformed},
          Case{"HTTP/1.1 2000\r\n\r\n", State::malformed}, Case{"HTTP/1.1 100 C\r\n\r\n", State::malformed},
          Case{"HTTP/1.1 200 OK\r\nContent-Length: 3\r\n\r\nab", State::malformed},
          Case{"HTTP/1.1 200 OK\r\nContent-Length: 0x3\r\n\r\n", State::malformed},
          Case{"HTTP/1.1 200 OK\r\nContent-Length: -1\r\n\r\n", State::malformed},
          Case{"HTTP/1.1 200 OK\r\nContent-Length: 2\r\nContent-Length: 3\r\n\r\nabc", State::malformed},
          Case{"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n", State::malformed},
          Case{"HTTP/1.1 200 OK\r\nno colon\r\n\r\n", State::malformed},
          Case{"HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n", State::tooLarge},
          Case{"HTTP/1.1 200 OK\r\nContent-Length: 99999999999999999999\r\n\r\n", State::tooLarge},
          Case{"HTTP/1.1 200 OK\r\n\r\nabcd", State::tooLarge}, Case{longHead, State::tooLarge}}) {
        for (const std::size_t piece : {std::size_t{1}, std::size_t{1000}}) {
            HttpReplyReader reader(3);
            EXPECT_EQ(read(reader, bytes, piece), expected) << bytes.substr(0, 80);
        }
    }
}
