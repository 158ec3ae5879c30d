#include "TarvoApp/App/HistoryDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/HeldState.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <algorithm>
#include <utility>

namespace tarvo {

using lumo::ByteFormat::string;

HistoryDesk::HistoryDesk(const Ground& ground, const HoldingDesk& holding, std::string home, QObject* parent)
    : QObject(parent), ground_(ground), home_(std::move(home)) {
    connect(&holding, &HoldingDesk::changed, this, [this] {
        if (isShown_) {
            refresh();
        }
    });
}

void HistoryDesk::show() {
    isShown_ = true;
    beginsAnew_ = true;
    refresh();
}

HistoryDesk::Read HistoryDesk::readFrom(const Desk& desk) {
    const auto outcomes = history(desk);
    if (!outcomes) {
        return {.cleanups = {}, .total = {}, .problem = outcomes.error().message};
    }
    // What happened can be shown when what is held cannot.
    const auto held = heldState(desk);
    Read read{.cleanups = historyRows(*outcomes, {.held = held ? held->items : std::vector<HeldItem>(),
                                                  .notes = lumo::HeldNotes::of(desk.home)}),
              .total = {},
              .problem = held ? std::string() : held.error().message};
    read.total = historyTotalText(read.cleanups);
    return read;
}

HistoryDesk::Read HistoryDesk::readDemo(lumo::Date now) {
    const auto outcomes = DemoDisk::history(DemoDisk::report(now));
    Read read{.cleanups = historyRows(outcomes, {.held = DemoDisk::heldItems(outcomes, now)}),
              .total = {},
              .problem = {}};
    read.total = historyTotalText(read.cleanups);
    return read;
}

void HistoryDesk::refresh() {
    isBusy_ = true;
    emit changed();
    ground_.background.start([this, asked = ++asked_, isDemo = ground_.isDemo(),
                              desk = ground_.services.desk](const std::stop_token&) -> Background::Apply {
        return [this, asked, read = isDemo ? readDemo(desk.now()) : readFrom(desk)] {
            if (asked == asked_) {
                take(read);
            }
        };
    });
}

void HistoryDesk::take(Read read) {
    const HistoryCleanup* const before = std::exchange(beginsAnew_, false) ? nullptr : opened();
    const auto same = std::ranges::find_if(read.cleanups, [&](const HistoryCleanup& cleanup) {
        return before != nullptr && cleanup.number == before->number;
    });
    chosen_ = same != read.cleanups.end() ? static_cast<int>(same - read.cleanups.begin())
                                          : std::min(0, static_cast<int>(read.cleanups.size()) - 1);
    read_ = std::move(read);
    isBusy_ = false;
    emit changed();
    emit chosenChanged();
}

void HistoryDesk::choose(int index) {
    if (index >= 0 && index < static_cast<int>(read_.cleanups.size()) && index != chosen_) {
        chosen_ = index;
        emit chosenChanged();
    }
}

const HistoryCleanup* HistoryDesk::opened() const {
    return chosen_ >= 0 ? &read_.cleanups[static_cast<std::size_t>(chosen_)] : nullptr;
}

QString HistoryDesk::total() const {
    return read_.cleanups.empty() ? QString() : shown(read_.total);
}

QString HistoryDesk::emptyText() const {
    if (!read_.problem.empty()) {
        return shown(read_.problem);
    }
    return read_.cleanups.empty() && !isBusy_ ? shown(noHistoryText()) : QString();
}

QVariantList HistoryDesk::cleanups() const {
    QVariantList list;
    for (const HistoryCleanup& cleanup : read_.cleanups) {
        list.push_back(QVariantMap{{"date", shown(lumo::momentText(cleanup.date))},
                                   {"facts", shown(factsText(cleanup))},
                                   {"canGoBack", cleanup.held > 0}});
    }
    return list;
}

QString HistoryDesk::title() const {
    return opened() != nullptr ? shown(lumo::momentText(opened()->date)) : QString();
}

QString HistoryDesk::facts() const {
    return opened() != nullptr ? shown(factsText(*opened())) : QString();
}

QVariantList HistoryDesk::lines() const {
    QVariantList list;
    if (opened() == nullptr) {
        return list;
    }
    for (const HistoryItem& item : opened()->items) {
        list.push_back(QVariantMap{{"title", shown(item.title)},
                                   {"bytes", shown(string(item.bytes))},
                                   {"text", shown(item.text)},
                                   {"failed", item.hasFailed},
                                   {"isPiece", false}});
        for (const HistoryPiece& piece : item.pieces) {
            list.push_back(QVariantMap{{"place", shown(lumo::abbreviated(piece.original, home_))},
                                       {"text", shown(pieceText(piece))},
                                       {"key", keyOf(piece.heldID)},
                                       {"isPiece", true}});
        }
    }
    return list;
}

} // namespace tarvo
