#pragma once

#include "LumoCore/Explaining/Explanation.h"
#include "TarvoApp/App/KeyedList.h"
#include "TarvoModel/Showing/Rows.h"
#include "TarvoModel/Showing/TickedPlan.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tarvo {

/// The rows of the main list that match what is searched for.
class RowList final : public KeyedList<Row> {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role {
        keyRole = Qt::UserRole, ///< See `keyOf`.
        titleRole,
        detailRole,
        bytesRole, ///< For a person.
        shareRole, ///< Of the largest row, from 0 to 1.
        groupRole, ///< See `Kinds::Group`.
        groupTitleRole,
        groupBytesRole,
        firstRole, ///< Whether the row is the first of its group.
        stateRole, ///< See `Kinds::Tick`.
        reasonRole,
        placesRole,      ///< The paths that the row stands for, as they may be shown.
        explanationRole, ///< A map; empty while there is none.
        evidenceRole,    ///< What the explanation rests on, in lines; empty until it was asked for.
        factsRole,       ///< How it is freed, its files, its last change: maps with label and text.
        commandRole,     ///< What an administrator can run instead; empty for most.
        chosenRole       ///< Whether the row is one of several that are chosen together.
    };

    /// The plan must outlive the list and is asked for the rows' states; so must the explanations and the
    /// evidence, which are known by their folders' paths.
    RowList(const TickedPlan& plan, const std::map<std::string, lumo::Explanation>& explanations,
            const std::map<std::string, std::string>& evidence, const std::string& home,
            QObject* parent = nullptr);

    /// Shows these rows.
    void show(std::vector<Row> rows);
    /// The ticks have changed, or the explanations.
    void refresh();
    /// These rows are chosen together.
    void choose(const std::vector<std::string>& ids);

    [[nodiscard]] const std::vector<Row>& rows() const { return items(); }
    /// Where the row with the key is; -1 when it is not shown.
    Q_INVOKABLE [[nodiscard]] int indexOf(const QString& key) const;
    /// The key of the row there; empty when there is none.
    Q_INVOKABLE [[nodiscard]] QString keyAt(int index) const;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void countChanged();

  private:
    void measure(const std::vector<Row>& rows);
    [[nodiscard]] QStringList placesOf(const Row& row) const;
    [[nodiscard]] QVariant explanationOf(const Row& row) const;
    [[nodiscard]] QVariantList factsOfRow(const Row& row) const;
    [[nodiscard]] QString evidenceOf(const Row& row) const;

    const TickedPlan& plan_;
    const std::map<std::string, lumo::Explanation>& explanations_;
    const std::map<std::string, std::string>& evidence_;
    std::string home_;
    std::set<std::string> chosen_;
    std::int64_t largest_ = 1;
    std::map<std::string, std::string> amounts_; ///< By the rows' heads.
};

} // namespace tarvo
