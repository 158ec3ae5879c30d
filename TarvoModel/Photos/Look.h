#pragma once

#include <cstdint>
#include <optional>
#include <vector>

/// What a picture looks like, in a few numbers by which it can be compared with thousands of others.
namespace tarvo {

/// A picture without color, row by row from the top, 0 black.
struct GrayPicture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> points; ///< width x height.
};

/// How large the two small copies are that a look is made of.
inline constexpr int hashedWidth = 9;
inline constexpr int hashedHeight = 8;
inline constexpr int weighedSide = 128; ///< The longer side of the other.

struct Look {
    /// Bit for bit whether a point is darker than the next one in its row, of a copy of 9 x 8 points. Absent
    /// for a picture of hardly any contrast, since all of those would look alike.
    std::optional<std::uint64_t> hash;
    /// How much neighboring points differ: the variance of the Laplacian. Only to be compared with that of
    /// copies of the same size.
    double sharpness = 0;
    int width = 0; ///< Of the picture itself, in points.
    int height = 0;

    friend bool operator==(const Look&, const Look&) = default;
};

/// Absent for a picture of other measures than 9 x 8, and for one without contrast.
std::optional<std::uint64_t> gradientHash(const GrayPicture& small);

/// 0 for a picture of less than 3 x 3 points.
double sharpnessOf(const GrayPicture& picture);

/// Bits that differ, 0 to 64.
int distance(std::uint64_t left, std::uint64_t right);

} // namespace tarvo
