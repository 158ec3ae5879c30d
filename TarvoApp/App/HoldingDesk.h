#pragma once

#include "TarvoApp/App/CelebrationDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoModel/Flows/PuttingBack.h"

#include <QObject>
#include <QString>

#include <functional>
#include <string>
#include <vector>

namespace tarvo {

/// What is set aside: how much and until when, putting it back, and ending it for good.
class HoldingDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(qint64 holdingBytes READ holdingBytes NOTIFY changed)
    Q_PROPERTY(QString holdingTitle READ holdingTitle NOTIFY changed)
    Q_PROPERTY(QString holdingText READ holdingText NOTIFY changed)
    Q_PROPERTY(bool canUndo READ canUndo NOTIFY changed)

  public:
    HoldingDesk(const Ground& ground, ScanningDesk& scanning, TickedDesk& ticked,
                CelebrationDesk& celebration, QObject* parent = nullptr);

    void take(HeldState held);
    /// Looks at it again, in the background.
    Q_INVOKABLE void refreshHolding();
    Q_INVOKABLE void undoLastCleanup();
    /// Puts one held item back where it was, by its id.
    Q_INVOKABLE void putBack(const QString& key);
    /// Asks whether all of it goes for good, in the main window or in the settings.
    Q_INVOKABLE void requestEmpty(bool isFromSettings);

    [[nodiscard]] qint64 holdingBytes() const { return totals_.bytes; }
    [[nodiscard]] QString holdingTitle() const;
    [[nodiscard]] QString holdingText() const;
    [[nodiscard]] bool canUndo() const { return held_.canUndo; }

  signals:
    void changed();

  private:
    /// What a change of the home came to.
    struct Changed {
        std::string notice;
        std::int64_t freed = 0;
        bool putsBack = false;                 ///< Something that was set aside is where it was.
        std::vector<std::string> touched = {}; ///< The absolute paths where that may be.
    };
    /// Runs the change in the background, says what came of it, and scans again; false when it cannot begin.
    bool change(const std::string& doing, const std::function<lumo::Result<Changed>(const Desk&)>& change);
    /// The same for what puts something back, which the request means.
    void putBackBy(const PutBackRequest& request,
                   const std::function<lumo::Result<lumo::TrashOperationResult>(const Desk&)>& restore);
    void empty(const std::vector<lumo::Holding::Batch>& agreed);
    void say(const lumo::Result<Changed>& changed);

    Ground ground_;
    ScanningDesk& scanning_;
    TickedDesk& ticked_;
    CelebrationDesk& celebration_;
    HeldState held_;
    HeldTotals totals_;
};

} // namespace tarvo
