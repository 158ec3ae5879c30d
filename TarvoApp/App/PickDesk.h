#pragma once

#include "TarvoApp/App/Ground.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <QVariantList>

#include <string>
#include <vector>

namespace tarvo {

/// Lets the user choose a place on this computer in a dialog of the windows' own make: what is in one folder
/// at a time. What is hidden stays so.
class PickDesk final : public QObject {
    Q_OBJECT
    /// As it may be shown, with "~" for the home.
    Q_PROPERTY(QString folder READ folder NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(bool hasFolderAbove READ hasFolderAbove NOTIFY changed)
    /// Folders first, each with its "name", its "key", and whether it "isFolder".
    Q_PROPERTY(QVariantList entries READ entries NOTIFY changed)

  public:
    /// The home is as a path, the made-up computer's where there is one.
    PickDesk(const Ground& ground, std::string home, QObject* parent = nullptr);

    /// Begins in the home; `ending` is how the files are called that are shown besides folders, none when it
    /// is empty.
    Q_INVOKABLE void begin(const QString& ending);
    /// Goes into the folder of that key.
    Q_INVOKABLE void enter(const QString& key);
    Q_INVOKABLE void leave();
    /// Where the folder that is shown lies, and what has that key or name in it.
    Q_INVOKABLE [[nodiscard]] QUrl here() const;
    Q_INVOKABLE [[nodiscard]] QUrl placeOf(const QString& key) const;
    Q_INVOKABLE [[nodiscard]] QUrl placeNamed(const QString& name) const;
    /// Whether there is a file or a folder of that name.
    Q_INVOKABLE [[nodiscard]] bool isTaken(const QString& name) const;

    [[nodiscard]] QString folder() const;
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] bool hasFolderAbove() const { return !folder_.empty(); }
    [[nodiscard]] QVariantList entries() const;

  signals:
    void changed();

  private:
    struct Entry {
        std::string name;
        bool isFolder = false;
    };

    void look(std::string folder);
    [[nodiscard]] std::string pathOf(std::string_view name) const;
    /// What a file that a person calls so is called.
    [[nodiscard]] std::string fileNamed(const QString& name) const;

    Ground ground_;
    std::string home_;
    std::string folder_; ///< Empty for the root.
    std::string ending_;
    std::vector<Entry> entries_;
    bool isBusy_ = false;
    int looks_ = 0; ///< Of several that were begun only the last one counts.
};

} // namespace tarvo
