#include "TarvoModel/Showing/Squarify.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace tarvo::Squarify {

namespace {

double sumOf(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0);
}

/// A row of areas, with all that tells how far its rectangles would be from squares.
class Row final {
  public:
    /// The largest ratio of two sides that the row has along that side, with one more area when it is given.
    [[nodiscard]] double worst(double side, double more = -1) const {
        const bool hasMore = more >= 0;
        const double sum = sum_ + (hasMore ? more : 0);
        const double largest = hasMore ? std::max(largest_, more) : largest_;
        const double smallest = hasMore ? std::min(smallest_, more) : smallest_;
        if (sum <= 0 || smallest <= 0) {
            return std::numeric_limits<double>::infinity();
        }
        const double square = side * side;
        return std::max(square * largest / (sum * sum), sum * sum / (square * smallest));
    }

    void add(double area) {
        areas_.push_back(area);
        sum_ += area;
        largest_ = std::max(largest_, area);
        smallest_ = std::min(smallest_, area);
    }

    [[nodiscard]] const std::vector<double>& areas() const { return areas_; }

  private:
    std::vector<double> areas_;
    double sum_ = 0;
    double largest_ = 0;
    double smallest_ = std::numeric_limits<double>::infinity();
};

} // namespace

std::vector<Rect> layout(const std::vector<double>& values, const Rect& rect) {
    const double sum = sumOf(values);
    if (sum <= 0 || rect.width <= 0 || rect.height <= 0) {
        return std::vector<Rect>(values.size());
    }
    std::vector<Rect> placed;
    placed.reserve(values.size());
    Rect free = rect;
    Row row;
    for (const double value : values) {
        const double area = value * (rect.width * rect.height) / sum;
        const double side = std::min(free.width, free.height);
        // Rows grow while that makes them no worse, ties included.
        if (!row.areas().empty() && row.worst(side, area) > row.worst(side)) {
            free = place(row.areas(), free, placed);
            row = {};
        }
        row.add(area);
    }
    place(row.areas(), free, placed);
    return placed;
}

Rect place(const std::vector<double>& row, const Rect& free, std::vector<Rect>& placed) {
    const double sum = sumOf(row);
    if (free.height <= free.width) {
        const double width = free.height > 0 ? sum / free.height : 0;
        double y = free.y;
        for (const double area : row) {
            const double height = width > 0 ? area / width : 0;
            placed.push_back({free.x, y, width, height});
            y += height;
        }
        return {free.x + width, free.y, free.width - width, free.height};
    }
    const double height = free.width > 0 ? sum / free.width : 0;
    double x = free.x;
    for (const double area : row) {
        const double width = height > 0 ? area / height : 0;
        placed.push_back({x, free.y, width, height});
        x += width;
    }
    return {free.x, free.y + height, free.width, free.height - height};
}

} // namespace tarvo::Squarify
