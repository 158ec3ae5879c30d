#pragma once

#include "TarvoCLI/Console.h"

#include <string>
#include <vector>

namespace tarvo {

enum class Align { left, right };

/// Rows of cells under each other. Cells may hold any text; what a terminal cannot show is escaped by the
/// caller.
class Table final {
  public:
    struct Column {
        Align align = Align::left;
        Tint tint = Tint::plain;
        bool mayShrink = false; ///< Shortened in the middle when the rows are wider than the terminal.
    };

    explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

    void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
    [[nodiscard]] bool isEmpty() const { return rows_.empty(); }

    /// The rows as lines, each after `indent` blanks, within `mostColumns` columns where that is not 0.
    [[nodiscard]] std::string lines(std::size_t indent, std::size_t mostColumns,
                                    const Invocation& invocation) const;

  private:
    [[nodiscard]] std::vector<std::size_t> widths(std::size_t available) const;

    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

/// Columns that standard output offers; 0 for no limit, as in a pipe.
std::size_t outputColumns();

} // namespace tarvo
