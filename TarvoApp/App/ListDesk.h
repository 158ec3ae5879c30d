#pragma once

#include "TarvoApp/App/ExplainingDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/RowList.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoModel/Showing/RowView.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <string>
#include <vector>

namespace tarvo {

/// The list of rows: what it is narrowed to, how it is sorted, and which of its rows are chosen together.
class ListDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchChanged)
    /// Counts how often somebody wanted to search.
    Q_PROPERTY(int focusSearch READ focusSearch NOTIFY searchChanged)
    /// See `Kinds::Group` and `Kinds::Order`; -1 while the list shows all groups.
    Q_PROPERTY(int onlyGroup READ onlyGroup NOTIFY viewChanged)
    /// The kind of items that the list shows; -1 while it shows what the scan found.
    Q_PROPERTY(int onlyKind READ onlyKind NOTIFY viewChanged)
    Q_PROPERTY(int order READ order WRITE setOrder NOTIFY viewChanged)
    /// What is said of the rows that are chosen together; empty for none.
    Q_PROPERTY(QString chosenText READ chosenText NOTIFY chosenChanged)

  public:
    ListDesk(const Ground& ground, TickedDesk& ticked, const ExplainingDesk& explaining,
             QObject* parent = nullptr);

    Q_INVOKABLE void search() { ++focusSearch_, emit searchChanged(); }
    /// Shows the rows and tiles of that group alone, or all again.
    Q_INVOKABLE void toggleGroup(int group);
    /// Shows the items of that kind alone, or again what the scan found with -1.
    Q_INVOKABLE void showKind(int kind);
    /// Shows all groups of what the scan found.
    Q_INVOKABLE void showAllGroups();
    /// Whether there are rows of the group.
    Q_INVOKABLE [[nodiscard]] bool hasGroup(int group) const;
    /// Widens a list that was narrowed without the row.
    void widenFor(const QString& key);

    /// Chooses the rows from where that began, or from `from`, to `to`.
    Q_INVOKABLE void chooseTo(const QString& from, const QString& to);
    Q_INVOKABLE void chooseNone();
    /// The keys of the rows that are chosen together with that one; itself alone where it is none of several.
    Q_INVOKABLE [[nodiscard]] QStringList chosenWith(const QString& key) const;
    /// Ticks or unticks the row, and all that are chosen with it.
    Q_INVOKABLE void toggle(const QString& key);

    [[nodiscard]] RowList* rows() { return &rows_; }
    [[nodiscard]] const RowView& view() const { return view_; }
    [[nodiscard]] QString searchText() const { return searchText_; }
    void setSearchText(const QString& text);
    [[nodiscard]] int focusSearch() const { return focusSearch_; }
    [[nodiscard]] int onlyGroup() const;
    [[nodiscard]] int onlyKind() const;
    [[nodiscard]] int order() const;
    void setOrder(int order);
    [[nodiscard]] QString chosenText() const;

  signals:
    void searchChanged();
    void viewChanged();
    void chosenChanged();

  private:
    void showRows();
    void viewHasChanged();
    void chosenHaveChanged();
    [[nodiscard]] std::vector<std::string> chosen() const;

    TickedDesk& ticked_;
    const ExplainingDesk& explaining_;
    RowList rows_;
    RowView view_;
    QString searchText_;
    std::string chosenFrom_; ///< Ids; empty while no rows are chosen together.
    std::string chosenTo_;
    int focusSearch_ = 0;
};

} // namespace tarvo
