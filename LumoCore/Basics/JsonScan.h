#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Where the parts of a JSON document stand in its text.
namespace lumo::JsonScan {

/// The offsets of a text's first byte and of the one after its last.
struct Extent {
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// One member of an object: its name with the quotes, and its value.
struct Member {
    std::string key; ///< What the name means, escapes read.
    Extent name;
    Extent value;
};

struct Object {
    Extent whole; ///< With the braces.
    std::vector<Member> members;
};

/// The object that the document is, a byte order mark and blanks around it left aside. Absent when it is
/// anything else, or not JSON to the letter: unlike for `parseJson`, numbers may have any size.
std::optional<Object> documentIn(std::string_view text);

/// The object that begins at the offset in a document that `documentIn` found to be one; absent when
/// something else does.
std::optional<Object> objectAt(std::string_view text, std::size_t offset);

} // namespace lumo::JsonScan
