#include "Platform/QuietFile.h"

#include <linux/fiemap.h>
#include <linux/fs.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <vector>

namespace lumo::platform {

namespace {

/// Where on the volume one piece of a file lies.
struct Piece {
    std::uint64_t logical = 0;
    std::uint64_t physical = 0;
    std::uint64_t length = 0;

    friend bool operator==(const Piece&, const Piece&) = default;
};

/// The first pieces of the file; none when one of them has no place of its own that can be compared, or is
/// shared with nobody.
std::vector<Piece> sharedPiecesOf(const QuietFile& file) {
    constexpr std::size_t mostPieces = 64;
    constexpr std::uint32_t unsure = FIEMAP_EXTENT_UNKNOWN | FIEMAP_EXTENT_DELALLOC |
                                     FIEMAP_EXTENT_DATA_INLINE | FIEMAP_EXTENT_NOT_ALIGNED;
    // The system wants one piece of memory with the extents behind the head, which its header declares as an
    // array of no length.
    std::vector<char> memory(sizeof(fiemap) + mostPieces * sizeof(fiemap_extent));
    auto& head = *reinterpret_cast<fiemap*>(memory.data());
    head.fm_length = std::numeric_limits<std::uint64_t>::max();
    head.fm_extent_count = mostPieces;
    if (ioctl(file.number(), FS_IOC_FIEMAP, memory.data()) != 0) {
        return {};
    }
    std::vector<Piece> pieces;
    for (std::size_t index = 0; index < std::min<std::size_t>(head.fm_mapped_extents, mostPieces); ++index) {
        fiemap_extent extent = {};
        std::memcpy(&extent, memory.data() + sizeof(fiemap) + index * sizeof(extent), sizeof(extent));
        if ((extent.fe_flags & unsure) != 0 || (extent.fe_flags & FIEMAP_EXTENT_SHARED) == 0) {
            return {};
        }
        pieces.push_back({extent.fe_logical, extent.fe_physical, extent.fe_length});
    }
    return pieces;
}

} // namespace

bool shareBlocks(const QuietFile& left, const QuietFile& right) {
    if (left.status().identity.device != right.status().identity.device) {
        return false;
    }
    const std::vector<Piece> pieces = sharedPiecesOf(left);
    return !pieces.empty() && pieces == sharedPiecesOf(right);
}

} // namespace lumo::platform
