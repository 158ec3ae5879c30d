#pragma once

#include "LumoCore/Rules/Rule.h"
#include "TarvoModel/Exploring/Explorer.h"

#include <QAbstractListModel>

#include <functional>
#include <optional>
#include <string>

namespace tarvo {

/// The rows of an explorer, as a window shows them: read when they are shown, since there may be very many.
class ExplorerList final : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role {
        keyRole = Qt::UserRole, ///< Of the place on the disk, as the map and the menus know it.
        nameRole,
        folderRole, ///< Whether one can go into it.
        bytesRole,  ///< For a person.
        shareRole,  ///< Of the largest row, from 0 to 1.
        groupRole,  ///< See `Kinds::Group`; -1 where nothing is certain of it.
        wordRole,   ///< The group's name; empty likewise.
        factsRole,  ///< Its part of the folder, its items, its day, and what else there is to know.
        lineRole,   ///< The word and the facts for a line of any length: see `lineOf`.
        unreadRole, ///< What of it could not be read, for a person; empty for nothing.
        partRole,   ///< Whether it also holds what is newer than is shown.
        markedRole,
        protectedRole ///< Whether it is never touched, and so never marked.
    };

    /// What is certain of an entry's safety.
    using SafetyOf = std::function<std::optional<lumo::Safety>(const lumo::NamedEntry&)>;

    explicit ExplorerList(SafetyOf safetyOf, QObject* parent = nullptr);

    /// Shows the rows of that explorer as they are now; it must outlive this or be replaced before. Null
    /// shows none.
    void show(const Explorer* explorer);
    /// The rows are the same, but there is something else to say of what is certain of them, or of the marks.
    void tellSafeties() { tellChanged({groupRole, wordRole, lineRole}); }
    void tellMarks() { tellChanged({markedRole, protectedRole, factsRole, lineRole}); }

    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void countChanged();

  private:
    /// In these roles; in all of them when empty.
    void tellChanged(const QList<int>& roles);
    /// The group's name; empty where nothing is certain.
    [[nodiscard]] std::string wordOf(const lumo::NamedEntry& entry) const;

    SafetyOf safetyOf_;
    const Explorer* explorer_ = nullptr;
    int count_ = 0; ///< As the views know it.
};

} // namespace tarvo
