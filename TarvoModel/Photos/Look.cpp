#include "TarvoModel/Photos/Look.h"

#include <algorithm>
#include <bit>
#include <cstddef>

namespace tarvo {

std::optional<std::uint64_t> gradientHash(const GrayPicture& small) {
    if (small.width != hashedWidth || small.height != hashedHeight ||
        small.points.size() != std::size_t{hashedWidth} * hashedHeight) {
        return std::nullopt;
    }
    // What differs by less is as likely the noise of a compression.
    constexpr int leastContrast = 8;
    const auto [darkest, brightest] = std::ranges::minmax(small.points);
    if (brightest - darkest < leastContrast) {
        return std::nullopt;
    }
    std::uint64_t hash = 0;
    for (std::size_t row = 0; row < hashedHeight; ++row) {
        for (std::size_t column = 0; column + 1 < hashedWidth; ++column) {
            const std::size_t at = row * hashedWidth + column;
            hash = (hash << 1U) | static_cast<std::uint64_t>(small.points[at] < small.points[at + 1]);
        }
    }
    return hash;
}

double sharpnessOf(const GrayPicture& picture) {
    if (picture.width < 3 || picture.height < 3) {
        return 0;
    }
    const auto width = static_cast<std::size_t>(picture.width);
    const auto height = static_cast<std::size_t>(picture.height);
    double sum = 0;
    double squares = 0;
    for (std::size_t row = 1; row + 1 < height; ++row) {
        for (std::size_t column = 1; column + 1 < width; ++column) {
            const std::uint8_t* const point = &picture.points[row * width + column];
            const double edge =
                *(point - 1) + *(point + 1) + *(point - width) + *(point + width) - 4 * *point;
            sum += edge;
            squares += edge * edge;
        }
    }
    const auto count = static_cast<double>((width - 2) * (height - 2));
    const double mean = sum / count;
    return squares / count - mean * mean;
}

int distance(std::uint64_t left, std::uint64_t right) {
    return std::popcount(left ^ right);
}

} // namespace tarvo
