#include "TarvoApp/App/GrowthDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/History/SnapshotStore.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "TarvoModel/Showing/GrowthTexts.h"

#include <QPointF>

#include <algorithm>
#include <utility>

namespace tarvo {

using lumo::ByteFormat::string;

namespace {

/// More lines than that cannot be told apart in one picture.
constexpr std::size_t mostLines = 12;

/// What the picture has room for: the free space changes by all of it together, so it is drawn only when it
/// is looked at.
GrowthFrame frameOf(const std::vector<GrowthLine>& lines, int chosen) {
    return chosen == 0 || lines.empty() ? GrowthFrame::around(lines)
                                        : GrowthFrame::around({lines.begin() + 1, lines.end()});
}

QVariantList pointsIn(const GrowthFrame& frame, const GrowthLine& line) {
    QVariantList points;
    for (const GrowthPoint& point : line.points) {
        const std::int64_t change = lumo::GrowthTracker::difference(point.bytes, line.points.front().bytes);
        points.push_back(QPointF(frame.across(point.date), 1 - frame.up(change)));
    }
    return points;
}

} // namespace

GrowthDesk::GrowthDesk(const Ground& ground, QObject* parent) : QObject(parent), ground_(ground) {}

void GrowthDesk::take(lumo::Growth growth) {
    growth_ = std::move(growth);
    emit changed();
    if (isShown_) {
        refresh();
    }
}

QVariantList GrowthDesk::growth() const {
    QVariantList items;
    for (const lumo::GrowthItem& item : growth_.items) {
        items.push_back(QVariantMap{{"key", keyOf(item.id)},
                                    {"name", shown(growthName(item.id, item.name))},
                                    {"delta", shown("+" + string(item.delta))},
                                    {"now", shown(string(item.now))}});
    }
    return items;
}

QString GrowthDesk::growthSince() const {
    return growth_.since ? shown(lumo::dayText(*growth_.since)) : QString();
}

void GrowthDesk::show() {
    isShown_ = true;
    refresh();
}

GrowthDesk::Read GrowthDesk::readFrom(const std::string& home) {
    const lumo::SnapshotStore store(home);
    const auto stored = store.read();
    if (!stored) {
        return {.lines = {}, .problem = unreadableSnapshotsText(store.path(), stored.error())};
    }
    if (stored->size() < 2) {
        return {.lines = {}, .problem = noBaselineText(*stored)};
    }
    return {.lines = growthSeries(*stored, mostLines), .problem = {}};
}

GrowthDesk::Read GrowthDesk::readDemo(lumo::Date now) {
    return {.lines = growthSeries(DemoDisk::snapshots(DemoDisk::report(now)), mostLines), .problem = {}};
}

void GrowthDesk::refresh() {
    isBusy_ = true;
    emit linesChanged();
    ground_.background.start([this, asked = ++asked_, isDemo = ground_.isDemo(),
                              desk = ground_.services.desk](const std::stop_token&) -> Background::Apply {
        return [this, asked, read = isDemo ? readDemo(desk.now()) : readFrom(desk.home)] {
            if (asked == asked_) {
                takeLines(read);
            }
        };
    });
}

void GrowthDesk::takeLines(Read read) {
    // The free space alone was shown to nobody.
    const GrowthLine* const before = read_.lines.size() > 1 ? opened() : nullptr;
    const auto same = std::ranges::find_if(
        read.lines, [&](const GrowthLine& line) { return before != nullptr && line.id == before->id; });
    // What changed most is wanted rather than the free space before it.
    chosen_ = same != read.lines.end() ? static_cast<int>(same - read.lines.begin())
                                       : std::min(1, static_cast<int>(read.lines.size()) - 1);
    read_ = std::move(read);
    frame_ = frameOf(read_.lines, chosen_);
    isBusy_ = false;
    emit linesChanged();
    emit chosenChanged();
}

void GrowthDesk::choose(int index) {
    if (index >= 0 && index < static_cast<int>(read_.lines.size()) && index != chosen_) {
        chosen_ = index;
        frame_ = frameOf(read_.lines, chosen_);
        emit linesChanged();
        emit chosenChanged();
    }
}

const GrowthLine* GrowthDesk::opened() const {
    return chosen_ >= 0 ? &read_.lines[static_cast<std::size_t>(chosen_)] : nullptr;
}

QString GrowthDesk::emptyText() const {
    if (!read_.problem.empty()) {
        return shown(read_.problem);
    }
    // The free space alone tells nothing of what changed.
    return read_.lines.size() == 1 ? shown(nothingChangedText()) : QString();
}

QVariantList GrowthDesk::lines() const {
    QVariantList list;
    for (const GrowthLine& line : read_.lines) {
        list.push_back(QVariantMap{
            {"key", keyOf(line.id)},
            {"name", shown(line.name)},
            {"word", shown(changeWord(line))},
            {"delta", shown(changeText(line.delta))},
            {"now", shown(string(line.now()))},
            {"values", shown(valuesText(line))},
            {"points", line.id.empty() && chosen_ != 0 ? QVariantList() : pointsIn(frame_, line)}});
    }
    return list;
}

QString GrowthDesk::highest() const {
    return frame_.highest > 0 ? shown(changeText(frame_.highest)) : QString();
}

QString GrowthDesk::lowest() const {
    return frame_.lowest < 0 ? shown(changeText(frame_.lowest)) : QString();
}

QString GrowthDesk::from() const {
    return read_.lines.empty() ? QString() : shown(lumo::momentText(frame_.from));
}

QString GrowthDesk::to() const {
    return read_.lines.empty() ? QString() : shown(lumo::momentText(frame_.to));
}

QString GrowthDesk::title() const {
    return opened() != nullptr ? shown(opened()->name) : QString();
}

QString GrowthDesk::facts() const {
    return opened() != nullptr ? shown(lineText(*opened())) : QString();
}

} // namespace tarvo
