#pragma once

#include "TarvoApp/App/Ground.h"

#include <QImage>
#include <QObject>
#include <QString>

#include <cstdint>
#include <optional>

namespace tarvo {

/// What may be shown to others of the last cleanup, and the card of a large one.
class CelebrationDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool celebration READ isCelebrating NOTIFY changed)
    Q_PROPERTY(QImage celebrationImage READ celebrationImage NOTIFY changed)
    /// The same card for a dark window.
    Q_PROPERTY(QImage darkImage READ darkImage NOTIFY changed)
    Q_PROPERTY(QString celebrationText READ celebrationText NOTIFY changed)

  public:
    explicit CelebrationDesk(const Ground& ground, QObject* parent = nullptr);

    /// What the last cleanup came to; celebrated when it is worth that.
    void take(const ShareStats& stats);
    /// Draws the card of a cleanup and shows it.
    void celebrate(const ShareStats& stats);
    /// So much more was freed by emptying what it had set aside.
    void addEmptied(std::int64_t freed);
    /// It was undone.
    void forget();
    Q_INVOKABLE void closeCelebration();
    /// The card as it is seen, which may be the dark one.
    Q_INVOKABLE void saveShareImage(bool isDark = false);
    Q_INVOKABLE void copyCelebrationImage(bool isDark = false);

    [[nodiscard]] const std::optional<ShareStats>& lastShare() const { return lastShare_; }
    [[nodiscard]] bool isCelebrating() const { return celebration_.has_value(); }
    [[nodiscard]] QString celebrationText() const;
    [[nodiscard]] const QImage& celebrationImage() const { return image_; }
    [[nodiscard]] const QImage& darkImage() const { return darkImage_; }

  signals:
    void changed();

  private:
    Ground ground_;
    std::optional<ShareStats> lastShare_;
    std::optional<ShareStats> celebration_;
    QImage image_;
    QImage darkImage_;
};

} // namespace tarvo
