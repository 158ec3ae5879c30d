#include "TarvoCLI/Table.h"

#include "LumoCore/Basics/Text.h"
#include "Platform/Terminal.h"

#include <algorithm>

namespace tarvo {

namespace {

constexpr std::size_t gap = 2;

} // namespace

std::vector<std::size_t> Table::widths(std::size_t available) const {
    std::vector<std::size_t> widths(columns_.size(), 0);
    for (const auto& row : rows_) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], lumo::columns(row[column]));
        }
    }
    std::size_t total = gap * (columns_.size() - 1);
    for (const std::size_t width : widths) {
        total += width;
    }
    // The widest shrinking column gives way first, down to a width that still says something.
    constexpr std::size_t narrowest = 12;
    while (available > 0 && total > available) {
        std::size_t* widest = nullptr;
        for (std::size_t column = 0; column < columns_.size(); ++column) {
            if (columns_[column].mayShrink && (widest == nullptr || widths[column] > *widest)) {
                widest = &widths[column];
            }
        }
        if (widest == nullptr || *widest <= narrowest) {
            break;
        }
        --*widest;
        --total;
    }
    return widths;
}

std::string Table::lines(std::size_t indent, std::size_t mostColumns, const Invocation& invocation) const {
    const std::vector<std::size_t> widths =
        this->widths(mostColumns > indent ? mostColumns - indent : mostColumns);
    std::string text;
    for (const auto& row : rows_) {
        std::string line(indent, ' ');
        std::size_t owed = 0; // Blanks that only matter when something follows.
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string cell = lumo::shortened(row[column], widths[column]);
            const std::size_t fill = widths[column] - lumo::columns(cell);
            const bool isRight = columns_[column].align == Align::right;
            if (!cell.empty()) {
                line += std::string(owed + (isRight ? fill : 0), ' ');
                line += tinted(cell, columns_[column].tint, invocation);
                owed = 0;
            }
            owed += gap + (isRight && !cell.empty() ? 0 : fill);
        }
        text += line + "\n";
    }
    return text;
}

std::size_t outputColumns() {
    return lumo::platform::terminalColumns(lumo::platform::Stream::output);
}

} // namespace tarvo
