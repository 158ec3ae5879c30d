#include "TarvoCLI/Question.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Terminal.h"

#include <algorithm>
#include <array>

namespace tarvo {

namespace platform = lumo::platform;

namespace {

bool isYes(std::string answer) {
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\r'; };
    answer.erase(answer.begin(), std::ranges::find_if_not(answer, isBlank));
    while (!answer.empty() && isBlank(answer.back())) {
        answer.pop_back();
    }
    // Folding takes the accent and the case away, so "Sí" is among them.
    constexpr std::array<std::string_view, 4> accepted{"y", "yes", "s", "si"};
    return std::ranges::find(accepted, lumo::folded(answer)) != accepted.end();
}

} // namespace

std::optional<ExitCode> cannotAsk(bool isConfirmed) {
    if (isConfirmed ||
        (platform::isTerminal(platform::Stream::input) && platform::isTerminal(platform::Stream::error))) {
        return std::nullopt;
    }
    return complain(lumo::Words{"no hay terminal donde preguntar: confírmalo con --yes",
                                "there is no terminal to ask on: confirm with --yes"}
                        .in(),
                    ExitCode::usage);
}

std::optional<ExitCode> declined(std::string_view question) {
    platform::noteInterrupts();
    platform::writeAll(platform::Stream::error,
                       std::string(question) + lumo::Words{" [s/N] ", " [y/N] "}.in());
    const std::optional<std::string> answer = platform::readLine();
    if (platform::wasInterrupted()) {
        platform::writeAll(platform::Stream::error, "\n");
        return ExitCode::interrupted;
    }
    if (answer && isYes(*answer)) {
        return std::nullopt;
    }
    return complain(lumo::Words{"no se ha tocado nada", "nothing was touched"}.in(), ExitCode::failed);
}

} // namespace tarvo
