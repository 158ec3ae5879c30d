#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvo {

/// The text as lines of at most that many columns, each after `indent` blanks and with its line feed; all in
/// one line where `mostColumns` is 0. Runs of blanks and line feeds count as one blank, and what a terminal
/// cannot show is escaped.
std::string paragraph(std::string_view text, std::size_t mostColumns, std::size_t indent = 0);

/// Columns that running text takes on standard output: no more than the eye follows; 0 for no limit.
std::size_t readingColumns();

} // namespace tarvo
