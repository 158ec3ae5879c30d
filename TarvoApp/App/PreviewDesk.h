#pragma once

#include "TarvoApp/App/Background.h"
#include "TarvoModel/Showing/Preview.h"

#include <QImage>
#include <QObject>
#include <QSizeF>
#include <QString>
#include <QVariantList>

#include <functional>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// The preview of one thing at a time as its window shows it. A later one ends the one before.
class PreviewDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString key READ key NOTIFY changed)
    Q_PROPERTY(QString title READ title NOTIFY changed)
    Q_PROPERTY(QString place READ place NOTIFY changed)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(Kind kind READ kind NOTIFY changed)
    Q_PROPERTY(QString bytes READ bytes NOTIFY changed)
    Q_PROPERTY(QString facts READ facts NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)
    Q_PROPERTY(bool isCut READ isCut NOTIFY changed)
    /// Each with its name, bytes for a person, share of the largest one, and whether it is a folder.
    Q_PROPERTY(QVariantList largest READ largest NOTIFY changed)
    Q_PROPERTY(QImage picture READ picture NOTIFY changed)
    Q_PROPERTY(QSizeF pictureSize READ pictureSize NOTIFY changed)

  public:
    /// What is shown; unknown while it is being made. Windows only know names that begin with a capital.
    enum class Kind { Unknown, Folder, Text, Picture, File, Other, Missing };
    Q_ENUM(Kind)

    /// Called in the background.
    using Make = std::function<Preview(const std::vector<std::string>& paths, const std::stop_token& end)>;

    /// What is shown of paths has "~" for the home.
    PreviewDesk(Make make, std::string home, QObject* parent = nullptr);

    /// Looks at the paths, which the key stands for; nothing happens when there are none.
    void show(const QString& key, const std::string& title, const std::vector<std::string>& paths);
    /// Stops looking.
    Q_INVOKABLE void forget();

    [[nodiscard]] const QString& key() const { return key_; }
    /// What is looked at; empty for several paths.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString place() const;
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] Kind kind() const;
    [[nodiscard]] QString bytes() const;
    [[nodiscard]] QString facts() const;
    [[nodiscard]] QString text() const;
    [[nodiscard]] bool isCut() const { return preview_.isCut; }
    [[nodiscard]] QVariantList largest() const;
    [[nodiscard]] const QImage& picture() const { return picture_; }
    [[nodiscard]] QSizeF pictureSize() const { return picture_.size(); }

  signals:
    void changed();
    /// Something else is to be shown from now on.
    void wanted();

  private:
    Make make_;
    std::string home_;
    QString key_;
    std::string title_;
    std::string path_;
    Preview preview_;
    QImage picture_;
    bool isBusy_ = false;
    std::stop_source looking_;
    Background background_; ///< Goes first, since its work uses the rest.
};

} // namespace tarvo
