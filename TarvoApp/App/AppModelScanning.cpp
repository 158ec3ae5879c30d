#include "LumoAI/ExplanationService.h"
#include "LumoAI/ModelWriters.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Explaining/KnownPlaces.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/CleanupPlanning.h"
#include "TarvoModel/Flows/WeeklyCleanup.h"
#include "TarvoModel/Showing/DemoDisk.h"
#include "TarvoModel/Showing/LowSpaceAlert.h"

#include <utility>

// The application's model from the start of a scan to what is remembered of it, and its look at the disk
// every minute.
namespace tarvo {

// The life of a scan.

void AppModel::start() {
    if (std::exchange(started_, true) || !services_.mode.startsWithScan(showWelcome_)) {
        return;
    }
    scan();
    startMonitoring();
}

void AppModel::finishWelcome() {
    showWelcome_ = false;
    settings_.setWelcomeSeen(true);
    emit welcomeChanged();
    scan();
    startMonitoring();
}

void AppModel::scan() {
    if (isBusy()) {
        return;
    }
    lastCleanup_.reset();
    settings_.reload();
    beginScan();
}

void AppModel::beginScan() {
    map_.forget();
    forgetEvidence();
    if (isDemo()) {
        loadDemo();
        return;
    }
    beginWork();
    doing_.clear();
    setPhase(phase::Scanning{});
    setNotice({});
    purge();
    runPass(ScanPass::quick);
}

void AppModel::purge() {
    purged_ = 0;
    // How far the wall clock was set ahead since the last time: nothing may expire by that.
    const lumo::Date now = services_.desk.now();
    const double steady = services_.steadySeconds();
    const auto drift = std::chrono::duration_cast<std::chrono::seconds>(
        (now - std::exchange(wallAnchor_, now)) -
        std::chrono::duration<double>(steady - std::exchange(steadyAnchor_, steady)));
    background_.start([this, desk = services_.desk, drift](const std::stop_token&) -> Background::Apply {
        const std::int64_t bytes = purgeExpired(desk, drift);
        return [this, bytes] { purged_ = bytes; };
    });
}

void AppModel::runPass(ScanPass pass) {
    const PassRequest request{.pass = pass,
                              .desk = services_.desk,
                              .plan = planRequest(),
                              .snapshot = services_.mode.isForReal() ? Snapshot::stored : Snapshot::dropped,
                              .full = fullReport_,
                              .cleaned = cleanedSince_,
                              .progress = &work_->scan,
                              .stop = work_->stop.get_token()};
    background_.start([this, request, work = work_](const std::stop_token& end) -> Background::Apply {
        const std::stop_callback forward(end, [&] { work->stop.request_stop(); });
        // Shared, since what is done with it must be copyable.
        const auto result = std::make_shared<std::optional<ScanResult>>(scanResult(request));
        return [this, pass = request.pass, result] { passEnded(pass, std::move(*result)); };
    });
}

void AppModel::passEnded(ScanPass pass, std::optional<ScanResult> result) {
    // A result that came in just before the stop would be a surprise after it.
    if (!result || work_->stop.stop_requested()) {
        setPhase(phase::Idle{});
        return;
    }
    apply(std::move(*result));
    if (pass == ScanPass::full) {
        fullReport_ = report_;
        cleanedSince_.clear();
    }
    if (pass == ScanPass::quick) {
        setPhase(phase::ScanningFolders{});
        runPass(ScanPass::full);
        return;
    }
    background_.start([this, items = report_->unclassified,
                       desk = services_.desk](const std::stop_token&) -> Background::Apply {
        const lumo::Installed installed = lumo::Installed::ofThisMachine(desk.home);
        const lumo::KnownPlaces known(lumo::HomePlaces::ofThisMachine(desk.home), installed);
        return
            [this, space = lumo::SystemSpace::measure("/"), certain = known.explainAll(items, desk.now())] {
                systemSpace_ = space;
                emit freeChanged();
                takeCertain(certain);
                finishScan();
            };
    });
}

void AppModel::takeCertain(const std::map<std::string, lumo::Explanation>& certain) {
    for (const auto& [path, explanation] : certain) {
        explanations_.insert_or_assign(path, explanation);
    }
    rows_.refresh();
    showMap();
}

void AppModel::finishScan() {
    if (purged_ > 0) {
        setNotice(purgedText(std::exchange(purged_, 0)));
    }
    setPhase(phase::Idle{});
    if (isBusy()) {
        return; // What waited for the scan has begun.
    }
    if (!folderWanted_.empty()) {
        openFolder(std::exchange(folderWanted_, {}));
    } else if (allRows_.empty()) {
        openHome(shown(DiskMap::homeTitle())); // What fills the disk is then nothing that a rule is about.
    }
    map_.prefetch();
    refreshVolumes();
    if (monitoring_) {
        look();
    }
    if (!isCapturing()) {
        refreshSummary();
        if (settings_.autoExplain() && !isAsking()) {
            explain();
        }
    }
}

void AppModel::apply(ScanResult result) {
    report_ = std::move(result.report);
    setFree(report_->volume);
    lastScanDate_ = services_.desk.now();
    if (result.growth) {
        growth_ = std::move(*result.growth);
    }
    shown_ = std::move(result.shown);
    emptied_.leaveOut(result.entries, result.defaults, result.rows);
    plan_.take(std::move(result.entries), std::move(result.defaults));
    allRows_ = std::move(result.rows);
    recoverable_ = result.recoverable;
    summary_ = {.text = std::move(result.summary), .byAI = false};
    takeHeld(std::move(result.held));
    if (result.problem) {
        setNotice(*result.problem);
    }
    showRows();
    showMap();
    selectionHasChanged();
    emit reportChanged();
    emit summaryChanged();
    emit statusChanged();
}

void AppModel::loadDemo() {
    const lumo::Date now = services_.desk.now();
    lumo::ScanReport report = DemoDisk::report(now);
    std::vector<lumo::PlanEntry> entries = DemoDisk::entries(report);
    const lumo::DiskSnapshot yesterday = DemoDisk::yesterday(report);
    lumo::Growth growth{.since = yesterday.date,
                        .items = lumo::GrowthTracker::compare(lumo::DiskSnapshot::from(report), yesterday,
                                                              lumo::GrowthTracker::smallestGrowth)};
    explanations_.clear();
    for (lumo::Explanation& explanation : DemoDisk::explanations(now)) {
        const std::string path = explanation.path;
        explanations_.insert_or_assign(path, std::move(explanation));
    }
    ScanResult result =
        resultFrom(std::make_shared<const lumo::ScanReport>(std::move(report)), std::move(entries), now);
    result.growth = std::move(growth);
    result.held = {.batches = DemoDisk::held(now), .canUndo = true};
    apply(std::move(result));
    setPhase(phase::Idle{});
}

PlanRequest AppModel::planRequest() const {
    PlanRequest request{
        .report = report_, .reviews = Reviews::all, .activeDays = settings_.activeProjectDays()};
    for (const QString& folder : settings_.protectedFolders()) {
        request.protectedBesides.push_back(bytesOf(folder));
    }
    return request;
}

void AppModel::replan() {
    if (!report_ || isDemo()) {
        return;
    }
    background_.start([this, report = report_, request = planRequest(), desk = services_.desk,
                       number = ++replans_](const std::stop_token&) -> Background::Apply {
        const auto made = std::make_shared<Plan>(planned(request, desk));
        return [this, report, made, number] {
            if (report != report_ || number != replans_) {
                return;
            }
            allRows_ = rowsOf(*report_, made->entries);
            recoverable_ = lumo::CleanupPlanner::safeRecoverableBytes(made->entries);
            Selection defaults = tarvo::defaultSelection(made->entries);
            shown_ = std::move(made->shown);
            emptied_.leaveOut(made->entries, defaults, allRows_);
            plan_.take(std::move(made->entries), std::move(defaults));
            showRows();
            showMap();
            selectionHasChanged();
            emit reportChanged();
        };
    });
}

// What a language model adds.

void AppModel::askModel() {
    background_.start([this, make = services_.model,
                       preferences = settings_.preferences()](const std::stop_token&) -> Background::Apply {
        return [this, reason = make(preferences)->unavailableReason()] {
            aiUnavailableReason_ = reason;
            emit summaryChanged();
        };
    });
}

HelpSources AppModel::helpSources() const {
    if (isDemo()) {
        return {};
    }
    return {.facts =
                [report = report_, recoverable = recoverable_, now = services_.desk.now()] {
                    return report ? lumo::DiskSummary::facts(*report, recoverable, now)
                                  : std::vector<std::string>();
                },
            .model = [make = services_.model,
                      preferences = settings_.preferences()] { return make(preferences); }};
}

void AppModel::refreshSummary() {
    if (!report_ || isDemo() || !settings_.aiSummaryEnabled()) {
        return;
    }
    background_.start([this, make = services_.model, preferences = settings_.preferences(), report = report_,
                       recoverable = recoverable_,
                       now = services_.desk.now()](const std::stop_token& end) -> Background::Apply {
        const std::unique_ptr<lumo::LanguageModel> model = make(preferences);
        const std::optional<std::string> reason = model->unavailableReason();
        const lumo::AISummaryWriter::Write write =
            reason ? lumo::AISummaryWriter::Write() : lumo::summaryWriter(*model, end);
        return [this, report, reason,
                summary = lumo::SummaryService::summary(*report, recoverable, now, write)] {
            aiUnavailableReason_ = reason;
            if (report == report_) {
                summary_ = summary;
            }
            emit summaryChanged();
        };
    });
}

void AppModel::explain() {
    if (isBusy() || !canExplain()) {
        return;
    }
    if (isDemo()) {
        setNotice(DemoDisk::notice());
        return;
    }
    std::vector<std::string> folders;
    for (const lumo::UnclassifiedItem& item : report_->unclassified) {
        folders.push_back(item.path);
    }
    const auto work = beginWork();
    setPhase(phase::Explaining{.done = 0, .total = static_cast<std::int64_t>(folders.size())});
    background_.start([this, work, folders, make = services_.model, preferences = settings_.preferences(),
                       desk = services_.desk](const std::stop_token& end) -> Background::Apply {
        const std::stop_callback forward(end, [&] { work->stop.request_stop(); });
        lumo::ExplanationSettings settings{.home = desk.home,
                                           .cacheHome = desk.home,
                                           .installed = lumo::Installed::ofThisMachine(desk.home),
                                           .now = desk.now()};
        settings.watch = {.progress = &work->scan.walked, .stop = work->stop.get_token()};
        settings.progress = [this](std::size_t done, std::size_t total) {
            // The last one is told by the result.
            if (done < total) {
                background_.post([this, done, total] {
                    setPhase(phase::Explaining{.done = static_cast<std::int64_t>(done),
                                               .total = static_cast<std::int64_t>(total)});
                });
            }
        };
        const std::unique_ptr<lumo::LanguageModel> model = make(preferences);
        return
            [this, told = lumo::ExplanationService::explain(folders, *model, settings)] { explained(told); };
    });
}

void AppModel::explained(std::map<std::string, lumo::Explanation> explanations) {
    explanations_.merge(explanations);
    for (auto& [path, explanation] : explanations) {
        explanations_.insert_or_assign(path, std::move(explanation));
    }
    setPhase(phase::Idle{});
    rows_.refresh();
    showMap();
}

// The look at the disk every minute.

void AppModel::startMonitoring() {
    if (!services_.mode.isForReal() || std::exchange(monitoring_, true)) {
        return;
    }
    monitor_.start();
    emit phaseChanged();
    look();
}

void AppModel::look() {
    if (isDemo() || std::exchange(isLooking_, true)) {
        return;
    }
    background_.start([this, volumeInfo = services_.volumeInfo,
                       home = services_.desk.home](const std::stop_token&) -> Background::Apply {
        return [this, volume = volumeInfo(home)] { lookAt(volume); };
    });
}

void AppModel::lookAt(const lumo::VolumeInfo& volume) {
    isLooking_ = false;
    setFree(volume);
    settings_.reload();
    if (!isAsking() && isRescanDue(lastScanDate_, phase_, services_.desk.now())) {
        scan();
    }
    checkLowSpace();
    autoCleanIfDue();
    emit autoCleanStatusChanged();
}

void AppModel::checkLowSpace() {
    // Without a report nobody could say how much of the space can be had back.
    const bool isFirstScan = isBusy() && !fullReport_;
    if (!settings_.notifyLowSpace() || volume_.totalBytes == 0 || isFirstScan) {
        return;
    }
    const lumo::Date now = services_.desk.now();
    const LowSpaceAlert::Decision decision =
        LowSpaceAlert::decide({.freeBytes = freeNow_,
                               .thresholdGB = settings_.lowSpaceGB(),
                               .sent = settings_.value(preference::lastLowSpaceWarning),
                               .recoverable = recoverable_,
                               .now = now});
    if (decision.forgetsDate) {
        settings_.note(preference::lastLowSpaceWarning, std::nullopt);
    }
    if (decision.notification) {
        settings_.note(preference::lastLowSpaceWarning, now);
        services_.notify(*decision.notification);
    }
}

void AppModel::autoCleanIfDue() {
    const lumo::Date now = services_.desk.now();
    if (isAsking() || !WeeklyCleanup::isDue({.isOn = settings_.autoCleanWeekly(),
                                             .mode = services_.mode,
                                             .phase = phase_,
                                             .hasReport = hasReport(),
                                             .last = settings_.value(preference::lastWeeklyCleanup),
                                             .now = now})) {
        return;
    }
    runCleanup(WeeklyCleanup::run, [this](const lumo::Result<Cleaned>& result, const lumo::VolumeInfo&) {
        cleanedByItself(result);
    });
}

// Other disks.

void AppModel::refreshVolumes() {
    if (isDemo()) {
        return;
    }
    background_.start(
        [this, mounted = services_.mountedVolumes](const std::stop_token&) -> Background::Apply {
            return [this, volumes = otherVolumes(mounted())] {
                otherVolumes_ = volumes;
                emit volumesChanged();
            };
        });
}

void AppModel::openHome(const QString& title) {
    const Volume all{.path = services_.desk.home, .name = bytesOf(title)};
    map_.open(all.name, {all.path}, [this, all] { setNotice(unreadableVolumeText(all)); });
}

void AppModel::openFolder(const std::string& path) {
    if (!report_ || isBusy()) {
        folderWanted_ = path;
        return;
    }
    const Volume folder{.path = path, .name = std::string(lumo::fileName(path))};
    map_.open(folder.name, {path}, [this, folder] { setNotice(unreadableVolumeText(folder)); });
}

void AppModel::openVolume(int index) {
    if (index < 0 || index >= static_cast<int>(otherVolumes_.size())) {
        return;
    }
    const Volume& volume = otherVolumes_[static_cast<std::size_t>(index)];
    map_.open(volume.name, {volume.path}, [this, volume] { setNotice(unreadableVolumeText(volume)); });
}

} // namespace tarvo
