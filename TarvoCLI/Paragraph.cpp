#include "TarvoCLI/Paragraph.h"

#include "LumoCore/Basics/Text.h"
#include "TarvoCLI/Table.h"

#include <algorithm>

namespace tarvo {

std::string paragraph(std::string_view text, std::size_t mostColumns, std::size_t indent) {
    constexpr std::string_view blanks = " \n\r\t";
    std::string lines;
    std::size_t used = 0; // Columns of the current line; 0 before its first word.
    for (std::size_t start = text.find_first_not_of(blanks); start != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(blanks, start), text.size());
        const std::string word = lumo::printable(text.substr(start, end - start));
        const std::size_t width = lumo::columns(word);
        const bool fits = mostColumns == 0 || used + 1 + width <= mostColumns;
        if (used > 0 && fits) {
            lines += " " + word;
            used += 1 + width;
        } else {
            lines += (used > 0 ? "\n" : "") + std::string(indent, ' ') + word;
            used = indent + width;
        }
        start = text.find_first_not_of(blanks, end);
    }
    return lines + "\n";
}

std::size_t readingColumns() {
    constexpr std::size_t widest = 88;
    return std::min(outputColumns(), widest);
}

} // namespace tarvo
