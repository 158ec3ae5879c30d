#pragma once

#include <string>
#include <string_view>

namespace lumo {

/// A fresh random UUID in its canonical form, in upper case (RFC 9562, version 4).
std::string uniqueID();

/// True for a text of that form, of any version.
bool isUniqueID(std::string_view text);

} // namespace lumo
