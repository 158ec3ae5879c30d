#include "TarvoApp/App/ExplorerList.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/Kinds.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Exploring/EntryTexts.h"
#include "TarvoModel/Exploring/WhatIsIt.h"
#include "TarvoModel/Showing/Preview.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <utility>

namespace tarvo {

using lumo::NamedEntry;
using lumo::Words;
namespace EntryTraits = lumo::EntryTraits;

namespace {

std::string joined(std::initializer_list<std::string> facts) {
    std::string line;
    for (const std::string& fact : facts) {
        line += fact.empty() ? "" : (line.empty() ? "" : " · ") + fact;
    }
    return line;
}

/// What there is to tell of an entry besides its name and size.
struct Facts {
    std::string part;
    std::string link;
    std::string items;
    std::string day;
    std::string note;

    Facts(const Explorer& explorer, const NamedEntry& entry)
        : part(Words{"{} %", "{}%"}.with(std::lround(explorer.share(entry) * 100))),
          link(entry.is(EntryTraits::link) ? Words{"enlace", "link"}.in() : std::string()),
          items(entry.is(EntryTraits::folder) ? itemsText(entry.sums.items) : std::string()),
          day(entryDay(entry)), note(joined({entryNote(entry), protectionNote(explorer, entry)})) {}

    [[nodiscard]] std::string all() const { return joined({part, link, items, day, note}); }
};

/// From the longest to the shortest, of which a text takes the first that it has room for: the bar shows the
/// part of the folder as well, and what the rows are ordered by stays.
QString lineOf(const Facts& facts, const std::string& word, ExplorerOrder order) {
    const QString orShorter(QChar(0x9C));
    const std::string& first = order == ExplorerOrder::items ? facts.items : word;
    return QStringList{shown(joined({word, facts.all()})),
                       shown(joined({word, facts.link, facts.items, facts.day, facts.note})),
                       shown(joined({first, facts.day, facts.note})), shown(joined({facts.day, facts.note}))}
        .join(orShorter);
}

} // namespace

ExplorerList::ExplorerList(SafetyOf safetyOf, QObject* parent)
    : QAbstractListModel(parent), safetyOf_(std::move(safetyOf)) {}

void ExplorerList::show(const Explorer* explorer) {
    explorer_ = explorer;
    const int wanted = explorer != nullptr ? static_cast<int>(explorer->rows().size()) : 0;
    const int before = count_;
    // Views keep what they have made for each place, since making it is what costs.
    if (wanted < before) {
        beginRemoveRows({}, wanted, before - 1);
        count_ = wanted;
        endRemoveRows();
    }
    tellChanged({});
    if (wanted > before) {
        beginInsertRows({}, before, wanted - 1);
        count_ = wanted;
        endInsertRows();
    }
    if (wanted != before) {
        emit countChanged();
    }
}

void ExplorerList::tellChanged(const QList<int>& roles) {
    if (count_ > 0) {
        emit dataChanged(index(0), index(count_ - 1), roles);
    }
}

int ExplorerList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count_;
}

std::string ExplorerList::wordOf(const NamedEntry& entry) const {
    const auto safety = safetyOf_(entry);
    return safety ? groupTitle(groupOf(*safety)) : std::string();
}

QVariant ExplorerList::data(const QModelIndex& index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || explorer_ == nullptr || row >= explorer_->rows().size()) {
        return {};
    }
    const NamedEntry& entry = explorer_->rows()[row];
    switch (role) {
    case keyRole:
        return keyOf(DiskMap::insideID(explorer_->tree().pathOf(entry.index)));
    case Qt::DisplayRole:
    case nameRole:
        return shown(entry.name);
    case folderRole:
        return entry.is(EntryTraits::folder);
    case bytesRole:
        return shown(lumo::ByteFormat::string(entry.sums.bytes));
    case shareRole:
        return explorer_->barShare(entry);
    case groupRole: {
        const auto safety = safetyOf_(entry);
        return safety ? static_cast<int>(Kinds::of(groupOf(*safety))) : -1;
    }
    case wordRole:
        return shown(wordOf(entry));
    case factsRole:
        return shown(Facts(*explorer_, entry).all());
    case lineRole:
        return lineOf(Facts(*explorer_, entry), wordOf(entry), explorer_->order());
    case unreadRole: {
        const auto unread = unreadLine(entry);
        return unread ? shown(unread->text) : QString();
    }
    case partRole:
        return explorer_->holdsNewer(entry.index);
    case markedRole:
        return explorer_->isMarked(entry.index);
    case protectedRole:
        return explorer_->isProtected(entry.index);
    default:
        return {};
    }
}

QHash<int, QByteArray> ExplorerList::roleNames() const {
    return {{keyRole, "key"},
            {nameRole, "name"},
            {folderRole, "isFolder"},
            {bytesRole, "bytes"},
            {shareRole, "share"},
            {groupRole, "group"},
            {wordRole, "word"},
            {factsRole, "facts"},
            {unreadRole, "unread"},
            {partRole, "isPart"},
            {markedRole, "isMarked"},
            {lineRole, "line"},
            {protectedRole, "isProtected"}};
}

} // namespace tarvo
