#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumo {

/// What a file with a model says of itself; what it does not say is empty. The texts are foreign.
struct ModelHeader {
    std::string name = {};
    std::string parameters = {};   ///< "8B".
    std::string quantisation = {}; ///< "Q4_K_M", "BF16".

    friend bool operator==(const ModelHeader&, const ModelHeader&) = default;
};

/// How much of the beginning of a file is worth reading for its header.
inline constexpr std::size_t mostHeaderBytes = std::size_t{8} * 1024 * 1024;

/// The header in the first bytes of a file: GGUF of version 2 or 3 (ggml's docs/gguf.md), or safetensors (a
/// length of 8 bytes and a JSON object). Bytes that break off, or are neither, give what was said before
/// that; absent where that is nothing.
std::optional<ModelHeader> modelHeaderIn(std::string_view beginning);

/// The header of the file, with the file left looking untouched; absent when it cannot be read.
std::optional<ModelHeader> modelHeaderOf(const std::string& path);

/// "8 B" as models are named: 7241732096 parameters are "7.2B".
std::string parametersText(double count);

} // namespace lumo
