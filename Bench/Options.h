#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <variant>

namespace tarvo::bench {

/// A word on the command line and where its value goes: a folder, which has to be given and to be there, a
/// number, which may be left out, or nothing but that it was said.
struct Option {
    std::string_view name;
    std::variant<std::string*, int*, bool*> value;
    int fewest = 1; ///< Of a number.
};

/// Reads the command line. Folders become absolute, without a final slash, so that all contestants are handed
/// the same words. Anything else ends the program with `usage`.
void readOptions(int count, char** values, const char* usage, std::initializer_list<Option> options);

} // namespace tarvo::bench
