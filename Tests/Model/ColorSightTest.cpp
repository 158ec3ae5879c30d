#include "TarvoModel/Showing/DiskMap.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

// Whether the map's colors stay apart for eyes that miss one kind of cone.
namespace {

using tarvo::DiskMap::Color;
using Matrix = std::array<std::array<double, 3>, 3>;

/// In linear light: Machado, Oliveira and Fernandes, "A Physiologically-based Model for Simulation of Color
/// Vision Deficiency", 2009, severity 1.0.
struct Eye {
    std::string name;
    Matrix sees;
};
const std::vector<Eye> eyes{
    {"all cones", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"no red",
     {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}},
    {"no green",
     {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}},
    {"no blue",
     {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}}};

Color times(const Matrix& matrix, const Color& color) {
    Color product{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            product[row] += matrix[row][column] * color[column];
        }
    }
    return product;
}

/// CIE L*a*b* with the white point D65.
Color labOf(const Color& linear) {
    const Matrix xyz{{{0.4124, 0.3576, 0.1805}, {0.2126, 0.7152, 0.0722}, {0.0193, 0.1192, 0.9505}}};
    const Color white{0.95047, 1.0, 1.08883};
    Color bent = times(xyz, linear);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double share = std::max(0.0, bent[axis] / white[axis]);
        bent[axis] = share > 0.008856 ? std::cbrt(share) : 7.787 * share + 16.0 / 116.0;
    }
    return {116 * bent[1] - 16, 500 * (bent[0] - bent[1]), 200 * (bent[1] - bent[2])};
}

double difference(const Color& left, const Color& right, const Eye& eye) {
    const auto seen = [&](const Color& color) {
        Color linear{};
        for (std::size_t part = 0; part < 3; ++part) {
            linear[part] =
                color[part] <= 0.04045 ? color[part] / 12.92 : std::pow((color[part] + 0.055) / 1.055, 2.4);
        }
        return labOf(times(eye.sees, linear));
    };
    const Color a = seen(left);
    const Color b = seen(right);
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

Color tileColor(std::optional<lumo::Safety> safety) {
    tarvo::Tile tile;
    tile.kind = safety ? tarvo::Tile::Kind::item : tarvo::Tile::Kind::inside;
    tile.safety = safety;
    return *tarvo::DiskMap::colorOf(tile);
}

} // namespace

TEST(ColorSight, TheColoursOfTheMapStayApartForEveryEye) {
    // Some five times what can just be told apart side by side. Green and gray come closest, for eyes that
    // miss the green cones; their tiles differ by the ring or tick that only green ones have.
    constexpr double least = 11;
    const std::vector<Color> colors{tileColor(lumo::Safety::safe), tileColor(lumo::Safety::review),
                                    tileColor(lumo::Safety::keep), tileColor(std::nullopt)};
    for (const Eye& eye : eyes) {
        for (std::size_t left = 0; left < colors.size(); ++left) {
            for (std::size_t right = left + 1; right < colors.size(); ++right) {
                EXPECT_GT(difference(colors[left], colors[right], eye), least)
                    << eye.name << ": " << left << " and " << right;
            }
        }
    }
}
