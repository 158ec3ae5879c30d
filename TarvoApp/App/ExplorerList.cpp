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
#include <utility>

namespace tarvo {

using lumo::NamedEntry;
using lumo::Words;
namespace EntryTraits = lumo::EntryTraits;

namespace {

QString factsOf(const Explorer& explorer, const NamedEntry& entry) {
    std::string facts = Words{"{} %", "{}%"}.with(std::lround(explorer.share(entry) * 100));
    const std::string link = entry.is(EntryTraits::link) ? Words{"enlace", "link"}.in() : std::string();
    const std::string items = entry.is(EntryTraits::folder) ? itemsText(entry.sums.items) : std::string();
    for (const std::string& fact : {link, items, entryDay(entry), entryNote(entry)}) {
        facts += fact.empty() ? "" : " · " + fact;
    }
    return shown(facts);
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
    case wordRole: {
        const auto safety = safetyOf_(entry);
        return safety ? shown(groupTitle(groupOf(*safety))) : QString();
    }
    case factsRole:
        return factsOf(*explorer_, entry);
    case unreadRole: {
        const auto unread = unreadLine(entry);
        return unread ? shown(unread->text) : QString();
    }
    case partRole:
        return explorer_->holdsNewer(entry.index);
    case markedRole:
        return explorer_->isMarked(entry.index);
    default:
        return {};
    }
}

QHash<int, QByteArray> ExplorerList::roleNames() const {
    return {{keyRole, "key"},       {nameRole, "name"},   {folderRole, "isFolder"}, {bytesRole, "bytes"},
            {shareRole, "share"},   {groupRole, "group"}, {wordRole, "word"},       {factsRole, "facts"},
            {unreadRole, "unread"}, {partRole, "isPart"}, {markedRole, "isMarked"}};
}

} // namespace tarvo
