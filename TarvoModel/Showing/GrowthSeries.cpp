#include "TarvoModel/Showing/GrowthSeries.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/LargestFirst.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/History/GrowthTracker.h"
#include "TarvoModel/Showing/GrowthTexts.h"

#include <algorithm>
#include <limits>
#include <set>

namespace tarvo {

using lumo::DiskSnapshot;
using lumo::Language;
using lumo::Words;
using lumo::ByteFormat::string;

namespace {

using Moments = std::vector<const DiskSnapshot*>;

/// As large as the number is, without its sign.
std::int64_t magnitude(std::int64_t number) {
    constexpr auto most = std::numeric_limits<std::int64_t>::max();
    return number >= 0 ? number : number < -most ? most : -number;
}

/// In the order of time, which a clock that was set back does not keep.
Moments inOrder(const std::vector<DiskSnapshot>& snapshots) {
    Moments moments;
    for (const DiskSnapshot& snapshot : snapshots) {
        moments.push_back(&snapshot);
    }
    std::ranges::sort(moments, [](const DiskSnapshot* left, const DiskSnapshot* right) {
        return left->date != right->date ? left->date < right->date : left < right;
    });
    return moments;
}

/// Why nothing is known of the item in a snapshot is told by what comes after.
std::vector<GrowthPoint> pointsOf(const std::string& id, const Moments& moments) {
    std::vector<GrowthPoint> points;
    bool wasKnown = false;
    for (const DiskSnapshot* moment : moments) {
        const auto size = moment->sizes.find(id);
        wasKnown =
            wasKnown || size != moment->sizes.end() || lumo::GrowthTracker::countsFromZero(id, *moment);
        if (wasKnown) {
            points.push_back({moment->date, size != moment->sizes.end() ? size->second : 0});
        }
    }
    return points;
}

/// What is there neither at first nor at last has changed by nothing, whatever it took meanwhile.
bool isAtAnEnd(const std::string& id, const Moments& moments) {
    return moments.front()->sizes.contains(id) || moments.back()->sizes.contains(id);
}

GrowthChange changeOf(const GrowthLine& line) {
    if (line.points.front().bytes == 0 && line.delta > 0) {
        return GrowthChange::appeared;
    }
    if (line.points.back().bytes == 0 && line.delta < 0) {
        return GrowthChange::vanished;
    }
    return line.delta < 0 ? GrowthChange::shrank : GrowthChange::grew;
}

GrowthLine lineThrough(std::string id, std::string name, std::vector<GrowthPoint> points) {
    GrowthLine line{.id = std::move(id), .name = std::move(name), .points = std::move(points)};
    line.delta = lumo::GrowthTracker::difference(line.points.back().bytes, line.points.front().bytes);
    line.change = changeOf(line);
    return line;
}

/// The name by which the newest snapshot that knows the item calls it.
std::string nameOf(const std::string& id, const Moments& moments) {
    std::string name = id;
    for (const DiskSnapshot* moment : moments) {
        if (const auto found = moment->names.find(id); found != moment->names.end()) {
            name = found->second;
        }
    }
    return name;
}

GrowthLine freeLine(const Moments& moments, Language language) {
    std::vector<GrowthPoint> points;
    for (const DiskSnapshot* moment : moments) {
        points.push_back({moment->date, moment->freeBytes});
    }
    return lineThrough({}, Words{"Espacio libre", "Free space"}.in(language), std::move(points));
}

} // namespace

std::vector<GrowthLine> growthSeries(const std::vector<DiskSnapshot>& snapshots, std::size_t most,
                                     Language language) {
    if (snapshots.size() < 2) {
        return {};
    }
    const Moments moments = inOrder(snapshots);
    std::set<std::string> ids;
    for (const DiskSnapshot& snapshot : snapshots) {
        for (const auto& [id, size] : snapshot.sizes) {
            ids.insert(id);
        }
    }
    std::vector<GrowthLine> lines;
    for (const std::string& id : ids) {
        std::vector<GrowthPoint> points = pointsOf(id, moments);
        if (points.size() < 2 || !isAtAnEnd(id, moments)) {
            continue;
        }
        GrowthLine line = lineThrough(id, growthName(id, nameOf(id, moments)), std::move(points));
        if (magnitude(line.delta) >= lumo::GrowthTracker::smallestGrowth) {
            lines.push_back(std::move(line));
        }
    }
    lumo::sortLargestFirst(lines, [](const GrowthLine& line) { return magnitude(line.delta); });
    lines.resize(std::min(lines.size(), most));
    lines.insert(lines.begin(), freeLine(moments, language));
    return lines;
}

GrowthFrame GrowthFrame::around(const std::vector<GrowthLine>& lines) {
    GrowthFrame frame;
    for (const GrowthLine& line : lines) {
        const bool isFirst = &line == lines.data();
        frame.from = isFirst ? line.points.front().date : std::min(frame.from, line.points.front().date);
        frame.to = isFirst ? line.points.back().date : std::max(frame.to, line.points.back().date);
        for (const GrowthPoint& point : line.points) {
            const std::int64_t change =
                lumo::GrowthTracker::difference(point.bytes, line.points.front().bytes);
            frame.lowest = std::min(frame.lowest, change);
            frame.highest = std::max(frame.highest, change);
        }
    }
    return frame;
}

double GrowthFrame::across(lumo::Date date) const {
    const auto whole = static_cast<double>((to - from).count());
    return whole > 0 ? static_cast<double>((date - from).count()) / whole : 0;
}

double GrowthFrame::up(std::int64_t change) const {
    const double whole = static_cast<double>(highest) - static_cast<double>(lowest);
    return whole > 0 ? (static_cast<double>(change) - static_cast<double>(lowest)) / whole : 0;
}

std::string changeText(std::int64_t delta, Language language) {
    const char* const sign = delta < 0 ? "−" : delta > 0 ? "+" : "";
    return sign + string(magnitude(delta), language);
}

std::string changeWord(const GrowthLine& line, Language language) {
    switch (line.change) {
    case GrowthChange::shrank:
        return Words{"menos", "less"}.in(language);
    case GrowthChange::appeared:
        return Words{"nuevo", "new"}.in(language);
    case GrowthChange::vanished:
        return Words{"ya no está", "gone"}.in(language);
    case GrowthChange::grew:
        break;
    }
    return {};
}

std::string lineText(const GrowthLine& line, Language language) {
    const auto largest = std::ranges::max_element(line.points, {}, &GrowthPoint::bytes);
    std::string changed = Words{"Ahora {}, {} desde el {}", "{} now, {} since {}"}.in(
        language, string(line.now(), language), changeText(line.delta, language),
        lumo::momentText(line.points.front().date, language));
    // At either end there is nothing more to say.
    if (largest->bytes == line.now() || largest->bytes == line.points.front().bytes) {
        return changed;
    }
    return changed +
           Words{"; lo más, {} el {}", "; at most {} on {}"}.in(language, string(largest->bytes, language),
                                                                lumo::momentText(largest->date, language));
}

std::string valuesText(const GrowthLine& line, Language language) {
    std::string text;
    const GrowthPoint* last = nullptr;
    for (const GrowthPoint& point : line.points) {
        if (last == nullptr || last->bytes != point.bytes) {
            text += (text.empty() ? "" : "; ") + lumo::momentText(point.date, language) + ": " +
                    string(point.bytes, language);
        }
        last = &point;
    }
    return text;
}

} // namespace tarvo
