#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// Telling one's own words from forged ones.
namespace lumo::platform {

/// Bytes that nobody can guess, from the system. Ends the process when the system has none to give.
std::array<std::uint8_t, 32> randomKey();

/// The SHA-256 of the bytes, in lower-case hexadecimal digits (FIPS 180-4).
std::string digestOf(std::string_view bytes);

/// The HMAC-SHA-256 of the bytes under the key, in the same form (RFC 2104).
std::string signatureOf(std::string_view bytes, const std::array<std::uint8_t, 32>& key);

/// True when the texts are equal; takes as long whether they are or not.
bool isSameSecret(std::string_view left, std::string_view right);

} // namespace lumo::platform
