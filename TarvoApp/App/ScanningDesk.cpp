#include "TarvoApp/App/ScanningDesk.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <QTimer>

#include <chrono>
#include <utility>

namespace tarvo {

ScanningDesk::ScanningDesk(const Ground& ground, const VolumesDesk& volumes, const TickedDesk& ticked,
                           QObject* parent)
    : QObject(parent), ground_(ground), volumes_(volumes), ticked_(ticked),
      wallAnchor_(ground.services.desk.now()), steadyAnchor_(ground.services.steadySeconds()),
      plannedDays_(ground.settings.activeProjectDays()),
      plannedFolders_(ground.settings.value(preference::protectedFolders)) {
    connect(&ground.settings, &Settings::changed, this, &ScanningDesk::settingsHaveChanged);
    connect(&ground.settings, &Settings::stored, this, [this] {
        if (std::exchange(replansWhenStored_, false)) {
            replan();
        }
    });
    connect(&ground.activity, &Activity::phaseChanged, this, &ScanningDesk::statusChanged);
    connect(&volumes, &VolumesDesk::changed, this, &ScanningDesk::statusChanged);
}

// The passes.

void ScanningDesk::scan() {
    if (!ground_.activity.isBusy()) {
        ground_.settings.reload();
        emit wanted();
        rescan();
    }
}

void ScanningDesk::rescan(const std::optional<CleanupSums>& lastCleanup) {
    lastCleanup_ = lastCleanup;
    emit beginning();
    if (ground_.isDemo()) {
        loadDemo();
        return;
    }
    const std::shared_ptr<Task> task = ground_.activity.begin(phase::Scanning{});
    const lumo::VolumeInfo volume = volumes_.volume();
    task->expectedBytes = walkedBytes_ > 0 ? walkedBytes_ : volume.totalBytes - volume.availableBytes;
    ground_.activity.say({});
    purge();
    runPass(ScanPass::quick);
}

void ScanningDesk::purge() {
    purged_ = 0;
    // How far the wall clock was set ahead since the last time: nothing may expire by that.
    const lumo::Date now = ground_.services.desk.now();
    const double steady = ground_.services.steadySeconds();
    const auto drift = std::chrono::duration_cast<std::chrono::seconds>(
        (now - std::exchange(wallAnchor_, now)) -
        std::chrono::duration<double>(steady - std::exchange(steadyAnchor_, steady)));
    ground_.background.start(
        [this, desk = ground_.services.desk, drift](const std::stop_token&) -> Background::Apply {
            const std::int64_t bytes = purgeExpired(desk, drift);
            return [this, bytes] { purged_ = bytes; };
        });
}

void ScanningDesk::runPass(ScanPass pass) {
    const std::shared_ptr<Task> task = ground_.activity.task();
    PassRequest request{.pass = pass,
                        .desk = ground_.services.desk,
                        .plan = preferredPlan(),
                        .snapshot = ground_.services.mode.isForReal() ? Snapshot::stored : Snapshot::dropped,
                        .items = ticked_.plan().whole()->items(),
                        .full = fullReport_,
                        .cleaned = cleanedSince_,
                        .progress = &task->scan,
                        .stop = {},
                        .memory = &task->measured};
    ground_.background.start(task->stop, [this, task, request](const std::stop_token& stop) mutable {
        request.stop = stop;
        std::shared_ptr<ScanResult> result;
        if (auto made = scanResult(request)) {
            result = std::make_shared<ScanResult>(std::move(*made));
        }
        return Background::Apply([this, task, pass = request.pass, result] { passEnded(pass, result); });
    });
}

void ScanningDesk::passEnded(ScanPass pass, const std::shared_ptr<ScanResult>& result) {
    const std::shared_ptr<Task> task = ground_.activity.task();
    // A result that came in just before the stop would be a surprise after it.
    if (!result || task->stop.stop_requested()) {
        ground_.activity.rest();
        return;
    }
    opened_.reset();
    takeOver(result);
    lastScanDate_ = ground_.services.desk.now();
    if (pass == ScanPass::full) {
        walkedBytes_ = task->scan.walked.bytes;
        fullReport_ = report_;
        cleanedSince_.clear();
        // In a turn of its own: what was found has taken its time of this one, and the map that of the next.
        QTimer::singleShot(nextTurn, this, &ScanningDesk::finish);
        return;
    }
    ground_.activity.become(phase::ScanningFolders{});
    runPass(ScanPass::full);
}

void ScanningDesk::takeOver(const std::shared_ptr<ScanResult>& result) {
    report_ = result->report;
    hasSeenHome_ = result->hasSeenHome;
    emit found(result);
    if (result->problem) {
        ground_.activity.say(*result->problem);
    }
    emit reportChanged();
    emit statusChanged();
}

void ScanningDesk::show(const OpenedReport& opened, const std::string& fileName) {
    lastCleanup_.reset();
    emit beginning();
    opened_ = Opened{.fileName = fileName, .text = opened.text, .isOfOtherHome = opened.isOfOtherHome};
    ground_.activity.say({});
    takeOver(std::make_shared<ScanResult>(opened.result));
}

void ScanningDesk::finish() {
    if (purged_ > 0) {
        ground_.activity.say(purgedText(std::exchange(purged_, 0)));
    }
    ground_.activity.rest();
    if (!ground_.activity.isBusy()) { // What waited for the scan may have begun.
        emit ended();
    }
}

void ScanningDesk::loadDemo() {
    takeOver(std::make_shared<ScanResult>(demoResult(ground_.services.desk.now())));
    lastScanDate_ = ground_.services.desk.now();
    ground_.activity.rest();
}

// The plan of the report.

PlanRequest ScanningDesk::planRequest() const {
    PlanRequest request = preferredPlan();
    request.report = report_;
    request.isReportFromFile = isFromFile();
    return request;
}

PlanRequest ScanningDesk::preferredPlan() const {
    PlanRequest request{
        .report = nullptr, .reviews = Reviews::all, .activeDays = ground_.settings.activeProjectDays()};
    request.protectedBesides = ground_.settings.value(preference::protectedFolders);
    return request;
}

void ScanningDesk::settingsHaveChanged() {
    const bool hasSamePlan = plannedDays_ == ground_.settings.activeProjectDays() &&
                             plannedFolders_ == ground_.settings.value(preference::protectedFolders);
    plannedDays_ = ground_.settings.activeProjectDays();
    plannedFolders_ = ground_.settings.value(preference::protectedFolders);
    if (!hasSamePlan) {
        // Once now with what is protected here, and once more when what is stored no longer says otherwise.
        replansWhenStored_ = true;
        replan();
    }
}

void ScanningDesk::replan() {
    if (!report_ || ground_.isDemo() || isOnlyToLookAt()) {
        return;
    }
    ground_.background.start([this, request = planRequest(), desk = ground_.services.desk,
                              items = ticked_.plan().whole()->items(), home = ground_.shownHome(),
                              number = ++replans_](const std::stop_token&) -> Background::Apply {
        const auto made = std::make_shared<const WholePlan>(
            std::make_shared<const ShownPlan>(shownPlan(request, desk)), items, home);
        return [this, report = request.report, made, number] {
            if (report == report_ && number == replans_) {
                emit planned(made);
            }
        };
    });
}

// What is said.

QString ScanningDesk::unreadableText() const {
    return report_ ? shown(tarvo::unreadableText(report_->unreadableCount())) : QString();
}

QString ScanningDesk::openedText() const {
    return opened_ ? shown(opened_->text) : QString();
}

QString ScanningDesk::statusText() const {
    if (ground_.activity.isBusy()) {
        return shown(ground_.activity.busyText());
    }
    if (!report_) {
        return {};
    }
    if (opened_) {
        return shown(lumo::Words{"Se enseña el informe de {}", "The report in {} is shown"}.with(
            lumo::printable(opened_->fileName)));
    }
    lumo::VolumeInfo volume = volumes_.volume();
    volume.availableBytes = volumes_.freeNow().value_or(volume.availableBytes);
    return shown(idleText(volume, report_->durationSeconds, lastCleanup_));
}

} // namespace tarvo
