#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Texts and names for comparing and showing. Input that is not UTF-8 is never refused: a stray byte stays,
/// or becomes the replacement character where characters are mapped. None of the results is ever used as a
/// path.
namespace lumo {

/// Canonical composition (Unicode NFC), in which file names and patterns are compared.
std::string composed(std::string_view text);

/// For searching: composed, without case and without diacritics ("Café" and "CAFE" fold alike).
std::string folded(std::string_view text);

/// In lower case, as the characters themselves say; the same in every language.
std::string lowerCased(std::string_view text);

/// The text with its first character in upper case.
std::string capitalized(std::string_view text);

/// The runs of letters and numbers, composed and in lower case: "Visual-Studio Code" gives "visual", "studio"
/// and "code".
std::vector<std::string> words(std::string_view text);

/// For matching names of applications: lower case, letters and numbers only ("Visual Studio Code" gives
/// "visualstudiocode").
std::string lettersAndDigits(std::string_view text);

/// The text with a blank in place of every character that is neither a letter nor a number.
std::string wordsApart(std::string_view text);

/// All that the regular expression matches, from the first to the last, none overlapping another. Classes
/// such as \d and \s mean the digits and blanks of all scripts.
std::vector<std::string> matchesOf(std::string_view pattern, std::string_view text);

/// True when `left` comes before `right` with runs of digits compared as numbers ("2.0.9" before "2.0.10")
/// and everything else byte by byte.
bool comesBeforeNumerically(std::string_view left, std::string_view right);

/// True when the first character has a numeric value ("2", "½").
bool beginsWithNumber(std::string_view text);

/// A name or path as a terminal may show it: one line, control characters and stray bytes as "\n", "\x1B".
std::string printable(std::string_view bytes);

/// The same with all that shows nothing of itself as bytes, too: joiners, tags, fillers. For questions, where
/// no two names may look alike, though emoji and some scripts are written with joiners.
std::string revealed(std::string_view bytes);

/// The same as `printable` with stray bytes left as they are, for texts inside a JSON document, which carries
/// them.
std::string printableWithStrays(std::string_view bytes);

/// The content of a text file whose encoding nobody tells: UTF-8 as it is, anything else read as Latin-1.
std::string decoded(std::string_view bytes);

/// Characters (code points) in the text.
std::size_t characterCount(std::string_view text);

/// Columns that the text takes on a terminal.
std::size_t columns(std::string_view text);

/// The text cut to at most that many columns, the middle replaced by "…".
std::string shortened(std::string_view text, std::size_t mostColumns);

} // namespace lumo
