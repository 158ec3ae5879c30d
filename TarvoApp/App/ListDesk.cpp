#include "TarvoApp/App/ListDesk.h"

#include "TarvoApp/App/Kinds.h"
#include "TarvoApp/App/QtText.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace tarvo {

ListDesk::ListDesk(const Ground& ground, TickedDesk& ticked, const ExplainingDesk& explaining,
                   QObject* parent)
    : QObject(parent), ticked_(ticked), explaining_(explaining),
      rows_(ticked.plan(), explaining.explanations(), explaining.evidence(), ground.services.desk.home) {
    connect(&ticked, &TickedDesk::planChanged, this, &ListDesk::showRows);
    connect(&ticked, &TickedDesk::changed, &rows_, &RowList::refresh);
    connect(&ticked, &TickedDesk::changed, this, &ListDesk::chosenChanged);
    connect(&explaining, &ExplainingDesk::evidenceChanged, &rows_, &RowList::refresh);
    connect(&explaining, &ExplainingDesk::explanationsChanged, this, [this] {
        showRows();
        rows_.refresh();
    });
}

// What is shown.

void ListDesk::showRows() {
    // Only what can be shown is copied, and told what is known of it: there may be thousands of other kinds.
    rows_.show(rowsIn(view_, withWhatIsKnown(rowsFor(view_, ticked_.rows()), explaining_.explanations())));
    chosenHaveChanged();
}

void ListDesk::viewHasChanged() {
    chooseNone();
    showRows();
    emit viewChanged();
}

void ListDesk::setSearchText(const QString& text) {
    if (searchText_ != text) {
        searchText_ = text;
        // A blank before or after what is searched for is no part of it.
        view_.searched = bytesOf(text.trimmed());
        viewHasChanged();
        emit searchChanged();
    }
}

void ListDesk::widenFor(const QString& key) {
    if (rows_.indexOf(key) < 0) {
        const auto row = std::ranges::find(ticked_.rows(), idOf(key), &Row::id);
        view_.kind = row != ticked_.rows().end() ? row->kind : std::nullopt;
        view_.group.reset();
        view_.searched.clear();
        searchText_.clear();
        viewHasChanged();
        emit searchChanged();
    }
}

int ListDesk::onlyGroup() const {
    return view_.group ? static_cast<int>(Kinds::of(*view_.group)) : -1;
}

void ListDesk::toggleGroup(int group) {
    const auto wanted = Kinds::groupOf(static_cast<Kinds::Group>(group));
    view_.group = view_.group == wanted ? std::nullopt : std::optional(wanted);
    view_.kind.reset();
    viewHasChanged();
}

void ListDesk::showAllGroups() {
    if (view_.group || view_.kind) {
        view_.group.reset();
        view_.kind.reset();
        viewHasChanged();
    }
}

bool ListDesk::hasGroup(int group) const {
    const Row any{.group = Kinds::groupOf(static_cast<Kinds::Group>(group))};
    return std::ranges::any_of(ticked_.rows(), [&](const Row& row) { return haveOneHead(row, any); });
}

int ListDesk::onlyKind() const {
    return view_.kind ? static_cast<int>(*view_.kind) : -1;
}

void ListDesk::showKind(int kind) {
    if (kind != onlyKind()) {
        view_.kind = kind < 0 ? std::nullopt : std::optional(static_cast<lumo::InventoryKind>(kind));
        view_.group.reset();
        viewHasChanged();
    }
}

int ListDesk::order() const {
    return static_cast<int>(view_.order);
}

void ListDesk::setOrder(int order) {
    if (order != this->order()) {
        view_.order = Kinds::orderOf(static_cast<Kinds::Order>(order));
        viewHasChanged();
    }
}

// Rows that are chosen together.

std::vector<std::string> ListDesk::chosen() const {
    return idsBetween(chosenFrom_, chosenTo_, rows_.rows());
}

void ListDesk::chosenHaveChanged() {
    rows_.choose(chosen());
    emit chosenChanged();
}

void ListDesk::chooseTo(const QString& from, const QString& to) {
    if (chosen().empty()) {
        chosenFrom_ = idOf(from);
    }
    chosenTo_ = idOf(to);
    chosenHaveChanged();
}

void ListDesk::chooseNone() {
    chosenFrom_.clear();
    chosenTo_.clear();
    chosenHaveChanged();
}

QStringList ListDesk::chosenWith(const QString& key) const {
    const std::vector<std::string> ids = chosen();
    if (std::ranges::find(ids, idOf(key)) == ids.end()) {
        return {key};
    }
    QStringList keys;
    std::ranges::transform(ids, std::back_inserter(keys), keyOf);
    return keys;
}

void ListDesk::toggle(const QString& key) {
    const std::vector<std::string> ids = chosen();
    if (std::ranges::find(ids, idOf(key)) != ids.end()) {
        ticked_.toggleAll(ids);
    } else {
        chooseNone();
        ticked_.toggle(key);
    }
}

QString ListDesk::chosenText() const {
    const std::vector<std::string> ids = chosen();
    const TickedPlan::Count count = ticked_.plan().count(ids);
    return shown(tarvo::chosenText(ids.size(), count.tickable, count.ticked));
}

} // namespace tarvo
