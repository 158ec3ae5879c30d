#pragma once

#include "LumoCore/Basics/Codec.h"

#include <vector>

/// Laying out a picture of sizes (M. Bruls, K. Huizing, J. J. van Wijk: Squarified Treemaps, 2000).
namespace tarvo {

/// A rectangle; y grows downwards.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    static constexpr auto fields =
        std::tuple{lumo::field("x", &Rect::x), lumo::field("y", &Rect::y), lumo::field("width", &Rect::width),
                   lumo::field("height", &Rect::height)};
    friend bool operator==(const Rect&, const Rect&) = default;
};

namespace Squarify {

/// One rectangle a value, in the order of the values, which is largest first; their areas are in proportion
/// and fill the given one. All are empty when there is nothing to divide or to fill.
std::vector<Rect> layout(const std::vector<double>& values, const Rect& rect);

/// Lays the areas of one row along the shorter side of the rectangle, appends their rectangles, and returns
/// what remains.
Rect place(const std::vector<double>& row, const Rect& free, std::vector<Rect>& placed);

} // namespace Squarify

} // namespace tarvo
