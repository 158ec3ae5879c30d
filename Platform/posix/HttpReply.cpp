#include "Platform/HttpReply.h"

#include <algorithm>
#include <charconv>

namespace lumo::platform {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view headEnd = "\r\n\r\n";

/// Field names are ASCII; letters of either case mean the same.
bool isField(std::string_view name, std::string_view lowerCase) {
    return std::ranges::equal(name, lowerCase, [](char given, char wanted) {
        return (given >= 'A' && given <= 'Z' ? static_cast<char>(given - 'A' + 'a') : given) == wanted;
    });
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The number that the digits are, and nothing else; a number beyond the type is the largest one.
std::optional<std::size_t> lengthFrom(std::string_view digits) {
    std::size_t length = 0;
    const auto [stop, problem] = std::from_chars(digits.data(), digits.data() + digits.size(), length);
    const bool isWhole = stop == digits.data() + digits.size();
    if (!isWhole || problem == std::errc::invalid_argument) {
        return std::nullopt;
    }
    return problem == std::errc() ? length : std::string::npos;
}

/// The code in "HTTP/1.1 200 OK".
std::optional<int> statusFrom(std::string_view line) {
    constexpr std::string_view version = "HTTP/1.";
    constexpr std::size_t codeAt = version.size() + 2;
    constexpr std::size_t digits = 3;
    constexpr int leastFinal = 200; // Codes below announce another reply, which nobody asked for.
    if (!line.starts_with(version) || line.size() < codeAt + digits || line[codeAt - 1] != ' ' ||
        (line.size() > codeAt + digits && line[codeAt + digits] != ' ')) {
        return std::nullopt;
    }
    const auto code = lengthFrom(line.substr(codeAt, digits));
    return code && *code >= leastFinal ? std::optional(static_cast<int>(*code)) : std::nullopt;
}

bool isWithoutBody(int status) {
    constexpr int noContent = 204;
    constexpr int notModified = 304;
    return status == noContent || status == notModified;
}

} // namespace

HttpReplyReader::State HttpReplyReader::add(std::string_view bytes) {
    if (state_ != State::unfinished) {
        return state_;
    }
    if (hasHead_) {
        return state_ = readBody(bytes);
    }
    const std::size_t searched = head_.size() - std::min(head_.size(), headEnd.size() - 1);
    head_ += bytes;
    const std::size_t end = head_.find(headEnd, searched);
    if (std::min(end, head_.size()) > mostHeadBytes) {
        return state_ = State::tooLarge;
    }
    if (end == std::string::npos) {
        return state_;
    }
    const std::string rest = head_.substr(end + headEnd.size());
    head_.resize(end);
    hasHead_ = true;
    state_ = readHead();
    return state_ == State::unfinished ? state_ = readBody(rest) : state_;
}

HttpReplyReader::State HttpReplyReader::end() {
    if (state_ == State::unfinished) {
        state_ = hasHead_ && !bodyBytes_ ? State::finished : State::malformed;
    }
    return state_;
}

HttpReplyReader::State HttpReplyReader::readHead() {
    std::string_view head = head_;
    std::string_view line = head.substr(0, head.find(lineEnd));
    const std::optional<int> status = statusFrom(line);
    if (!status) {
        return State::malformed;
    }
    reply_.status = *status;
    while (line.size() < head.size()) {
        head.remove_prefix(line.size() + lineEnd.size());
        line = head.substr(0, head.find(lineEnd));
        const std::size_t colon = line.find(':');
        if (colon == std::string_view::npos || isField(line.substr(0, colon), "transfer-encoding")) {
            return State::malformed;
        }
        if (!isField(line.substr(0, colon), "content-length")) {
            continue;
        }
        const auto length = lengthFrom(trimmed(line.substr(colon + 1)));
        if (!length || (bodyBytes_ && *bodyBytes_ != *length)) {
            return State::malformed;
        }
        bodyBytes_ = length;
    }
    if (isWithoutBody(*status)) {
        bodyBytes_ = 0;
    }
    return bodyBytes_.value_or(0) > mostBodyBytes_ ? State::tooLarge : State::unfinished;
}

HttpReplyReader::State HttpReplyReader::readBody(std::string_view bytes) {
    const std::size_t missing = bodyBytes_.value_or(std::string::npos) - reply_.body.size();
    reply_.body += bytes.substr(0, missing);
    if (reply_.body.size() > mostBodyBytes_) {
        return State::tooLarge;
    }
    return reply_.body.size() == bodyBytes_ ? State::finished : State::unfinished;
}

} // namespace lumo::platform
