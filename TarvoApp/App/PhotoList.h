#pragma once

#include "TarvoApp/App/KeyedList.h"
#include "TarvoModel/Photos/PhotoReview.h"

#include <set>
#include <string>
#include <vector>

namespace tarvo {

/// A photo where it stands in its chapter.
struct PhotoEntry {
    std::string id; ///< Its path.
    Photo photo;
    std::string name; ///< With the folders between it and the one that is looked through.
    int group = 0;
    bool isFirst = false;
    bool isProposed = false;

    friend bool operator==(const PhotoEntry&, const PhotoEntry&) = default;
};

/// The photos of one chapter, group by group.
class PhotoList final : public KeyedList<PhotoEntry> {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

  public:
    enum Role {
        sourceRole = Qt::UserRole, ///< The address of its small picture.
        keyRole,                   ///< Its path; see `keyOf`.
        nameRole,
        factsRole, ///< Size, day and measures.
        filmRole,
        groupRole,    ///< Counted from 0 within the chapter.
        firstRole,    ///< Whether it is the first of its group.
        proposedRole, ///< Whether it is proposed to stay.
        chosenRole,   ///< Whether it will be set aside.
        lastRole = chosenRole
    };

    /// What was chosen must outlive the list: paths.
    explicit PhotoList(const std::set<std::string>& chosen, QObject* parent = nullptr);

    void show(std::vector<PhotoEntry> entries);
    /// Others were chosen.
    void refresh() { tellChanged({chosenRole}); }
    [[nodiscard]] const std::vector<PhotoEntry>& entries() const { return items(); }

    /// What stands in that row; of a photo without anything where there is none.
    [[nodiscard]] QVariant read(int row, int role) const;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

  signals:
    void countChanged();

  private:
    const std::set<std::string>& chosen_;
};

/// How a window asks for the small picture of the file: an address for `image://`, and back.
QString pictureAddress(const std::string& path);
std::string pathOfPicture(const QString& id);

} // namespace tarvo
