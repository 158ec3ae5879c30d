#pragma once

#include "LumoCore/Basics/Codec.h"

#include <cstdint>
#include <string>

namespace lumo {

/// What an entry of a folder, or a kind of file in it, takes on disk.
struct NamedSize {
    std::string name;
    std::int64_t bytes = 0; ///< Allocated.
    bool isDirectory = false;

    static constexpr auto fields =
        std::tuple{field("name", &NamedSize::name), field("bytes", &NamedSize::bytes),
                   field("isDirectory", &NamedSize::isDirectory)};
    friend bool operator==(const NamedSize&, const NamedSize&) = default;
};

} // namespace lumo
