#include "TarvoApp/App/MonitorDesk.h"

#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "TarvoModel/Flows/WeeklySwitch.h"
#include "TarvoModel/Showing/LowSpaceAlert.h"

#include <QPointer>

#include <chrono>
#include <utility>

namespace tarvo {

MonitorDesk::MonitorDesk(const Ground& ground, VolumesDesk& volumes, ScanningDesk& scanning,
                         const TickedDesk& ticked, CleaningDesk& cleaning, QObject* parent)
    : QObject(parent), ground_(ground), volumes_(volumes), scanning_(scanning), ticked_(ticked),
      cleaning_(cleaning) {
    timer_.setInterval(monitorInterval);
    connect(&timer_, &QTimer::timeout, this, &MonitorDesk::look);
    connect(&ground.settings, &Settings::changed, this, &MonitorDesk::autoCleanStatusChanged);
}

void MonitorDesk::startMonitoring() {
    if (ground_.services.mode.isForReal() && !isMonitoring()) {
        timer_.start();
        emit changed();
        look();
    }
}

void MonitorDesk::setAutoCleanWeekly(bool isOn) {
    ground_.settings.setAutoCleanWeekly(isOn);
    if (!ground_.services.mode.isForReal()) {
        return;
    }
    ground_.background.start([this, isOn, desk = ground_.services.desk,
                              number = ++switches_](const std::stop_token& end) -> Background::Apply {
        const auto switched = setWeeklyCleanup(desk, isOn, TimerWish::welcome, {.stop = end});
        return [this, number, problem = switched ? switched->timerProblem.value_or("") : std::string()] {
            if (number == switches_) {
                timerProblem_ = problem;
                timerState_.clear();
                emit autoCleanStatusChanged();
            }
        };
    });
}

void MonitorDesk::refreshTimer() {
    if (!ground_.services.mode.isForReal() || !ground_.settings.autoCleanWeekly()) {
        return;
    }
    ground_.background.start([this, home = ground_.services.desk.home,
                              number = switches_](const std::stop_token&) -> Background::Apply {
        return [this, number, state = WeeklyTimer::state(home)] {
            if (number == switches_) {
                timerState_.clear();
                if (state == WeeklyTimer::State::set) {
                    timerProblem_.clear();
                } else {
                    timerState_ = timerStateText(state);
                }
                emit autoCleanStatusChanged();
            }
        };
    });
}

void MonitorDesk::look() {
    if (ground_.isDemo() || std::exchange(isLooking_, true)) {
        return;
    }
    // Another program may have cleaned meanwhile.
    ground_.settings.reload();
    ground_.background.start(
        [this, volumeInfo = ground_.services.volumeInfo,
         home = ground_.services.desk.home](const std::stop_token&) -> Background::Apply {
            return [this, volume = volumeInfo(home)] { lookAt(volume); };
        });
}

void MonitorDesk::lookAt(const lumo::VolumeInfo& volume) {
    isLooking_ = false;
    volumes_.take(volume);
    // Whoever looks at a saved report wants to go on with that.
    if (!isAsking() && !scanning_.isFromFile() &&
        isRescanDue(scanning_.lastScanDate(), ground_.activity.phase(), ground_.services.desk.now())) {
        scanning_.scan();
    }
    checkLowSpace();
    autoCleanIfDue();
    emit autoCleanStatusChanged(); // Its days pass.
}

void MonitorDesk::checkLowSpace() {
    // Without a report nobody could say how much of the space can be had back.
    const bool isFirstScan = ground_.activity.isBusy() && !scanning_.hasFullReport();
    if (!ground_.settings.notifyLowSpace() || volumes_.volume().totalBytes == 0 || isFirstScan) {
        return;
    }
    const lumo::Date now = ground_.services.desk.now();
    const LowSpaceAlert::Decision decision =
        LowSpaceAlert::decide({.freeBytes = volumes_.freeNow(),
                               .thresholdGB = ground_.settings.lowSpaceGB(),
                               .sent = ground_.settings.value(preference::lastLowSpaceWarning),
                               .recoverable = scanning_.isFromFile() ? 0 : ticked_.recoverable(),
                               .now = now});
    if (decision.forgetsDate) {
        ground_.settings.note(preference::lastLowSpaceWarning, std::nullopt);
    }
    if (decision.notification) {
        // At login the desktop may not be ready to show it: then the next look tries again.
        ground_.services.notify(*decision.notification, [self = QPointer(this), now] {
            if (self) {
                self->ground_.settings.note(preference::lastLowSpaceWarning, now);
            }
        });
    }
}

void MonitorDesk::autoCleanIfDue() {
    const lumo::Date now = ground_.services.desk.now();
    if (isAsking() || !WeeklyCleanup::isDue({.isOn = ground_.settings.autoCleanWeekly(),
                                             .mode = ground_.services.mode,
                                             .phase = ground_.activity.phase(),
                                             .hasReport = scanning_.hasReport() && !scanning_.isFromFile(),
                                             .last = ground_.settings.value(preference::lastWeeklyCleanup),
                                             .now = now})) {
        return;
    }
    if (!WeeklyCleanup::needsScan(scanning_.lastScanDate(), now)) {
        cleaning_.cleanWeekly();
        return;
    }
    // Whoever stops that scan is left in peace for a while.
    constexpr std::chrono::hours peace{1};
    if (!scannedToClean_ || now - *scannedToClean_ >= peace || *scannedToClean_ > now) {
        scannedToClean_ = now;
        scanning_.scan();
    }
}

QString MonitorDesk::autoCleanStatusText() const {
    return shown(WeeklyCleanup::autoCleanStatus(ground_.settings.autoCleanWeekly(),
                                                WeeklyCleanup::storedRecord(ground_.settings.preferences()),
                                                ground_.services.desk.now())
                     .value_or(""));
}

QString MonitorDesk::autoCleanProblem() const {
    // While the cleanup is off nobody misses a timer.
    const bool isMissed = timerProblem_.empty() && ground_.settings.autoCleanWeekly();
    return shown(isMissed ? timerState_ : timerProblem_);
}

} // namespace tarvo
