#pragma once

#include <string>
#include <string_view>

/// Texts and names for comparing and showing. Input that is not UTF-8 is never refused: a stray byte stays,
/// or becomes the replacement character where characters are mapped. None of the results is ever used as a
/// path.
namespace lumo {

/// Canonical composition (Unicode NFC), in which file names and patterns are compared.
std::string composed(std::string_view text);

/// For searching: composed, without case and without diacritics ("Café" and "CAFE" fold alike).
std::string folded(std::string_view text);

/// For matching names of applications: lower case, letters and numbers only ("Visual Studio Code" gives
/// "visualstudiocode").
std::string lettersAndDigits(std::string_view text);

/// True when `left` comes before `right` with runs of digits compared as numbers ("2.0.9" before "2.0.10")
/// and everything else byte by byte.
bool comesBeforeNumerically(std::string_view left, std::string_view right);

/// True when the first character has a numeric value ("2", "½").
bool beginsWithNumber(std::string_view text);

/// A name or path as a terminal may show it: one line, control characters and stray bytes as "\n", "\x1B".
std::string printable(std::string_view bytes);

/// Characters (code points) in the text.
std::size_t characterCount(std::string_view text);

/// Columns that the text takes on a terminal.
std::size_t columns(std::string_view text);

/// The text cut to at most that many columns, the middle replaced by "…".
std::string shortened(std::string_view text, std::size_t mostColumns);

} // namespace lumo
