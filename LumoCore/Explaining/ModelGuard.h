#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What a text that a language model wrote may say when it is shown. A model makes up figures and repeats
/// what file names tell it, so both are looked for in whatever way they are written.
namespace lumo::ModelGuard {

/// The sizes and shares that the text names, in digits, in words or without any number ("16,0 GB", "1 200
/// MB", "two gigabytes", "12 %", "gigas"), in lower case and otherwise as they are written.
std::vector<std::string> figures(std::string_view text);

/// True when each figure of the text is one of the allowed text, written in the same way.
bool namesOnlyFiguresOf(std::string_view allowedText, std::string_view text);

/// The commands, paths through menus and addresses of the web in the text, in lower case.
std::vector<std::string> instructions(std::string_view text);

/// True when the text has letters and says nothing that was not measured or that a reader could type, press
/// or open.
bool isFitToShow(std::string_view text, std::string_view allowedText);

} // namespace lumo::ModelGuard
