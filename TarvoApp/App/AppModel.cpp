#include "TarvoApp/App/AppModel.h"

#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <utility>

namespace tarvo {

namespace {

/// Of the pool: the work in hand, what a look at the disk needs, listings, the explorer's measuring, and a
/// model that takes its time.
constexpr std::size_t threads = 5;

Settings::Keeping keepingIn(const RunMode& mode) {
    return mode.isDemo ? Settings::Keeping::inMemory : Settings::Keeping::stored;
}

} // namespace

AppModel::AppModel(AppServices services, QObject* parent)
    : QObject(parent), services_(std::move(services)),
      settings_(services_.desk.home, keepingIn(services_.mode)), background_(threads), activity_(this),
      question_(services_.shownHome(), this),
      ground_{services_, settings_, background_, activity_, question_}, volumes_(ground_), ticked_(ground_),
      scanning_(ground_, volumes_, ticked_), items_(ground_, ticked_), explaining_(ground_),
      preview_(services_.preview, ground_.shownHome()), list_(ground_, ticked_, explaining_),
      celebrating_(ground_), cleaning_(ground_, scanning_, ticked_, volumes_, celebrating_),
      places_(ground_, ticked_, explaining_, list_, scanning_, volumes_, preview_, cleaning_),
      growth_(ground_), holding_(ground_, scanning_, ticked_, celebrating_),
      history_(ground_, holding_, ground_.shownHome()),
      explorer_(ground_, ticked_, scanning_, *places_.map(), cleaning_),
      photos_(ground_, cleaning_, holding_, preview_, ground_.shownHome()),
      archiving_(ground_, places_, scanning_), files_(ground_, scanning_, ticked_),
      picking_(ground_, ground_.shownHome()), monitor_(ground_, volumes_, scanning_, ticked_, cleaning_),
      login_(ground_), help_([this] { return explaining_.helpSources(); }),
      agents_(services_.desk.home, isDemo() ? AgentDesk::Access::none : AgentDesk::Access::full),
      showWelcome_(services_.mode.showsWelcome(settings_.isWelcomeSeen())) {
    connect(&settings_, &Settings::failed, this, [this](const QString& why) { activity_.say(bytesOf(why)); });
    connect(&scanning_, &ScanningDesk::beginning, &explaining_, &ExplainingDesk::forgetEvidence);
    connect(&scanning_, &ScanningDesk::found, this, &AppModel::take);
    connect(&scanning_, &ScanningDesk::planned, this, [this](const std::shared_ptr<const WholePlan>& plan) {
        explaining_.takeRecoverable(plan->plan()->recoverable);
        ticked_.takePlan(plan);
    });
    connect(&scanning_, &ScanningDesk::ended, this, &AppModel::scanEnded);
    explaining_.askModel();
}

AppModel::~AppModel() {
    if (activity_.task()) {
        activity_.task()->stop.request_stop();
    }
    background_.end(); // Before the parts that its work uses.
}

QString AppModel::home() const {
    return shown(ground_.shownHome());
}

QString AppModel::demoNotice() const {
    return isDemo() ? shown(DemoDisk::notice()) : QString();
}

void AppModel::start() {
    if (!std::exchange(started_, true)) {
        emit startedChanged();
        if (services_.mode.startsWithScan(showWelcome_)) {
            begin();
        }
    }
}

void AppModel::finishWelcome() {
    showWelcome_ = false;
    settings_.setWelcomeSeen(true);
    emit welcomeChanged();
    begin();
}

void AppModel::begin() {
    scanning_.scan();
    monitor_.startMonitoring();
}

void AppModel::take(const std::shared_ptr<ScanResult>& result) {
    if (!result->isFromFile) {
        volumes_.take(result->report->volume);
    }
    if (result->growth) {
        growth_.take(std::move(*result->growth));
    }
    // Nothing is said of a home that was not seen.
    explaining_.take(result->hasSeenHome ? result->report : nullptr, result->plan->plan()->recoverable,
                     result->summary, result->certain);
    holding_.take(std::move(result->held));
    ticked_.takePlan(result->plan);
    if (isDemo()) {
        items_.lookAgain(); // There no scan ends.
    }
}

void AppModel::scanEnded() {
    places_.settle();
    explorer_.settle();
    items_.lookAgain();
    volumes_.refreshVolumes();
    if (monitor_.isMonitoring()) {
        monitor_.look();
    }
    if (!isCapturing()) {
        explaining_.refreshSummary();
        if (settings_.autoExplain() && !question_.isAsking()) {
            explaining_.explain();
        }
    }
}

} // namespace tarvo
