#pragma once

#include "TarvoApp/App/CleaningDesk.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoApp/App/VolumesDesk.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <optional>
#include <string>

namespace tarvo {

/// Looks at the disk every minute, and scans, warns or cleans when it is time.
class MonitorDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool monitoring READ isMonitoring NOTIFY changed)
    /// When the weekly cleanup runs next, and what the last one did; empty while it is off.
    Q_PROPERTY(QString autoCleanStatus READ autoCleanStatusText NOTIFY autoCleanStatusChanged)
    /// Why it runs only while the application is open; empty when nothing is wrong.
    Q_PROPERTY(QString autoCleanProblem READ autoCleanProblem NOTIFY autoCleanStatusChanged)

  public:
    MonitorDesk(const Ground& ground, VolumesDesk& volumes, ScanningDesk& scanning, const TickedDesk& ticked,
                CleaningDesk& cleaning, QObject* parent = nullptr);

    /// Begins to look; once, and only where it is for real.
    void startMonitoring();
    /// Switches the weekly cleanup, with the timer that does it while the application is closed.
    Q_INVOKABLE void setAutoCleanWeekly(bool isOn);
    /// Looks whether that timer is still there: another program may have taken it away, or moved what it
    /// starts.
    Q_INVOKABLE void refreshTimer();
    /// One look at the disk, which may begin a scan, warn, or clean.
    Q_INVOKABLE void look();

    [[nodiscard]] bool isMonitoring() const { return timer_.isActive(); }
    [[nodiscard]] bool isLooking() const { return isLooking_; }
    [[nodiscard]] QString autoCleanStatusText() const;
    [[nodiscard]] QString autoCleanProblem() const;

  signals:
    void changed();
    void autoCleanStatusChanged();

  private:
    void lookAt(const lumo::VolumeInfo& volume);
    void checkLowSpace();
    void autoCleanIfDue();
    [[nodiscard]] bool isAsking() const { return ground_.question.isAsking() || cleaning_.isWaiting(); }

    Ground ground_;
    VolumesDesk& volumes_;
    ScanningDesk& scanning_;
    const TickedDesk& ticked_;
    CleaningDesk& cleaning_;
    std::string timerProblem_;                 ///< Why there is none although one was wanted.
    std::string timerState_;                   ///< What is wrong with it by the last look; empty for nothing.
    int switches_ = 0;                         ///< Of several only the last one's problem is told.
    std::optional<lumo::Date> scannedToClean_; ///< When a scan last began for the weekly cleanup.
    bool isLooking_ = false;
    QTimer timer_;
};

} // namespace tarvo
