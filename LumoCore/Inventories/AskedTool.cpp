#include "LumoCore/Inventories/AskedTool.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/ToolOutput.h"
#include "Platform/ToolCommand.h"

namespace lumo {

namespace {

constexpr int notStarted = 127;

} // namespace

std::expected<std::string, NoAnswer> askTool(const std::vector<std::string>& words,
                                             const InventoryQuery& query,
                                             std::chrono::milliseconds patience) {
    platform::ToolRun ran = platform::runToolInTime(words, query.home, patience, query.stop);
    if (ran.wasEndedByUs) {
        return std::unexpected(
            NoAnswer{.reason = Words{"{} no ha respondido a tiempo", "{} did not answer in time"}.in(
                         query.language, words.front())});
    }
    if (ran.status == notStarted) {
        return std::unexpected(NoAnswer{.isMissing = true,
                                        .reason = Words{"{} no está instalado", "{} is not installed"}.in(
                                            query.language, words.front())});
    }
    if (ran.status != 0) {
        std::string said = printable(failureDetail(ran.output, ran.status, query.language));
        return std::unexpected(NoAnswer{.reason = words.front() + ": " + said, .said = said});
    }
    return std::move(ran.output);
}

std::string_view jsonIn(std::string_view answer) {
    const auto isOpening = [](char c) { return c == '{' || c == '['; };
    std::size_t first = 0;
    while (first < answer.size() && !isOpening(answer[first])) {
        const std::size_t end = answer.find('\n', first);
        first = end == std::string_view::npos ? answer.size() : end + 1;
    }
    const std::size_t last = answer.find_last_of("]}");
    return last == std::string_view::npos || last < first ? std::string_view()
                                                          : answer.substr(first, last + 1 - first);
}

} // namespace lumo
