#pragma once

#include "LumoCore/Basics/Words.h"

#include <span>
#include <string_view>

/// How the help is written down: one row a topic, both languages side by side. What of an answer tells of the
/// command stands in square brackets, which nobody sees: it is left out where there is no terminal.
namespace lumo::HelpCatalog {

struct Row {
    std::string_view id; ///< The same in both languages, for ever: links lead to it.
    Words question;
    Words answer;   ///< What the window and the command offer, without the words and signs of `HelpGuard`.
    Words keywords; ///< Separated by ", ", in lower case and without accents.
};

/// What differs on Linux: empty where the question or the answer is the same, and keywords besides the
/// others.
struct LinuxRow {
    std::string_view id;
    Words question = {};
    Words answer = {};
    Words keywords = {};
};

std::span<const LinuxRow> linuxRows();
/// Topics that only Linux has, after all others.
std::span<const Row> linuxOnlyRows();

/// In the order of the catalogue: what a cleanup means, what is cleaned where, and everything around it.
std::span<const Row> cleaningRows();
std::span<const Row> placeRows();
std::span<const Row> usingRows();

} // namespace lumo::HelpCatalog
