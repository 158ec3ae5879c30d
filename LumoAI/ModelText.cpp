#include "LumoAI/ModelText.h"

#include "LumoCore/Basics/Text.h"

#include <algorithm>

namespace lumo {

namespace {

constexpr std::string_view blanks = " \t\r\n";

/// The text with each run of blanks that breaks the line made one blank, and none around it.
std::string onOneLine(std::string_view written) {
    std::string text;
    while (!written.empty()) {
        const std::size_t word = std::min(written.find_first_not_of(blanks), written.size());
        const std::string_view gap = written.substr(0, word);
        const std::string_view rest = written.substr(word);
        if (!text.empty() && !rest.empty()) {
            text += gap.find_first_of("\t\r\n") == std::string_view::npos ? gap : " ";
        }
        const std::size_t end = std::min(rest.find_first_of(blanks), rest.size());
        text += rest.substr(0, end);
        written = rest.substr(end);
    }
    return text;
}

} // namespace

Result<std::string> modelText(std::string_view written, std::size_t mostCharacters) {
    std::string text = onOneLine(written);
    if (printable(text) != text) {
        return failure("the text holds what cannot be shown");
    }
    if (characterCount(text) > mostCharacters) {
        return failure("the text is too long");
    }
    return text;
}

std::string_view withoutThoughts(std::string_view written) {
    constexpr std::string_view begin = "<think>";
    constexpr std::string_view end = "</think>";
    const std::size_t start = std::min(written.find_first_not_of(blanks), written.size());
    const std::size_t stop = written.find(end);
    return written.substr(start).starts_with(begin) && stop != std::string_view::npos
               ? written.substr(stop + end.size())
               : written;
}

} // namespace lumo
