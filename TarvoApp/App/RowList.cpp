#include "TarvoApp/App/RowList.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "TarvoApp/App/Kinds.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/ExplanationTexts.h"
#include "TarvoModel/Showing/RowFacts.h"

#include <algorithm>
#include <utility>

namespace tarvo {

namespace {

QVariantList linesFrom(const std::vector<ExplanationLine>& lines) {
    QVariantList list;
    for (const ExplanationLine& line : lines) {
        list.push_back(QVariantMap{{"label", shown(line.label)}, {"text", shown(line.text)}});
    }
    return list;
}

} // namespace

RowList::RowList(const TickedPlan& plan, const std::map<std::string, lumo::Explanation>& explanations,
                 const std::map<std::string, std::string>& evidence, const std::string& home, QObject* parent)
    : KeyedList(parent), plan_(plan), explanations_(explanations), evidence_(evidence), home_(home) {}

void RowList::show(std::vector<Row> rows) {
    measure(rows);
    takeOver(std::move(rows));
    tellChanged({shareRole, groupBytesRole, firstRole}); // Which are about all rows.
    emit countChanged();
}

void RowList::measure(const std::vector<Row>& rows) {
    largest_ = 1;
    for (const Row& row : rows) {
        largest_ = std::max(largest_, row.bytes);
    }
    amounts_.clear();
    for (const Row& row : rows) {
        if (!amounts_.contains(headOf(row))) {
            amounts_[headOf(row)] = amountWith(row, rows);
        }
    }
}

void RowList::refresh() {
    tellChanged({stateRole, reasonRole, explanationRole, evidenceRole});
}

void RowList::choose(const std::vector<std::string>& ids) {
    std::set<std::string> chosen(ids.begin(), ids.end());
    if (chosen_ != chosen) {
        chosen_ = std::move(chosen);
        tellChanged({chosenRole});
    }
}

QVariantList RowList::factsOfRow(const Row& row) const {
    return linesFrom(factsOf(row, plan_.entry(row.id)));
}

int RowList::indexOf(const QString& key) const {
    const auto found = std::ranges::find(rows(), idOf(key), &Row::id);
    return found == rows().end() ? -1 : static_cast<int>(found - rows().begin());
}

QString RowList::keyAt(int index) const {
    return index < 0 || index >= count() ? QString() : keyOf(rows()[static_cast<std::size_t>(index)].id);
}

QVariant RowList::explanationOf(const Row& row) const {
    const auto found = row.paths.empty() ? explanations_.end() : explanations_.find(row.paths.front());
    if (row.group != RowGroup::unclassified || found == explanations_.end()) {
        return QVariantMap();
    }
    return QVariantMap{{"whatItIs", shown(found->second.whatItIs)},
                       {"lines", linesFrom(explanationLines(found->second))},
                       {"byAI", found->second.source == lumo::Explanation::Source::ai},
                       {"isGuess", found->second.source == lumo::Explanation::Source::heuristic}};
}

QString RowList::evidenceOf(const Row& row) const {
    const auto found = row.paths.empty() ? evidence_.end() : evidence_.find(row.paths.front());
    // Made of lines whose names can hold no line feed.
    return found == evidence_.end() ? QString() : QString::fromStdString(found->second);
}

QStringList RowList::placesOf(const Row& row) const {
    QStringList places;
    for (const std::string& path : row.paths) {
        places.push_back(shown(lumo::abbreviated(path, home_)));
    }
    return places;
}

QVariant RowList::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= count()) {
        return {};
    }
    const Row& row = rows()[static_cast<std::size_t>(index.row())];
    switch (role) {
    case keyRole:
        return keyOf(row.id);
    case Qt::DisplayRole:
    case titleRole:
        return shown(row.title);
    case detailRole:
        return shown(row.detail);
    case bytesRole:
        return shown(lumo::ByteFormat::string(row.bytes));
    case shareRole:
        return static_cast<double>(row.bytes) / static_cast<double>(largest_);
    case groupRole:
        return static_cast<int>(Kinds::of(row.group));
    case groupTitleRole:
        return shown(headOf(row));
    case firstRole:
        return index.row() == 0 || !haveOneHead(rows()[static_cast<std::size_t>(index.row()) - 1], row);
    case groupBytesRole:
        return shown(amounts_.at(headOf(row)));
    case stateRole:
        return static_cast<int>(Kinds::of(plan_.stateOf(row.id)));
    case reasonRole:
        return shown(lumo::capitalized(row.skipReason.value_or("")));
    case placesRole:
        return placesOf(row);
    case explanationRole:
        return explanationOf(row);
    case evidenceRole:
        return evidenceOf(row);
    case factsRole:
        return factsOfRow(row);
    case commandRole:
        return shown(row.command.value_or(""));
    case chosenRole:
        return chosen_.contains(row.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> RowList::roleNames() const {
    return {{keyRole, "key"},
            {titleRole, "title"},
            {detailRole, "detail"},
            {bytesRole, "bytes"},
            {shareRole, "share"},
            {groupRole, "group"},
            {groupTitleRole, "groupTitle"},
            {groupBytesRole, "groupBytes"},
            {firstRole, "first"},
            {stateRole, "tickState"},
            {reasonRole, "reason"},
            {placesRole, "places"},
            {explanationRole, "explanation"},
            {evidenceRole, "evidence"},
            {factsRole, "facts"},
            {commandRole, "command"},
            {chosenRole, "chosen"}};
}

} // namespace tarvo
