#include "TarvoApp/App/Activity.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "TarvoApp/App/QtText.h"

#include <chrono>
#include <utility>

namespace tarvo {

namespace {

/// How often progress is read while something goes on.
constexpr std::chrono::milliseconds tickInterval{200};

Progress progressOf(const Phase& phase, const Task& task) {
    if (std::holds_alternative<phase::Cleaning>(phase)) {
        return cleaningProgress(task.steps, task.action);
    }
    if (std::holds_alternative<phase::Archiving>(phase)) {
        const bool isChecking = task.archive.phase == lumo::Archiver::ArchivePhase::checking;
        return {.text = lumo::ByteFormat::string(isChecking ? task.archive.checkedBytes
                                                            : task.archive.writtenBytes),
                .share = std::nullopt};
    }
    return scanningProgress(task.scan.walked.entries, task.scan.walked.bytes, task.expectedBytes);
}

} // namespace

Activity::Activity(QObject* parent) : QObject(parent) {
    ticker_.setInterval(tickInterval);
    connect(&ticker_, &QTimer::timeout, this, &Activity::readProgress);
}

std::shared_ptr<Task> Activity::begin(Phase phase, const std::string& doing) {
    task_ = std::make_shared<Task>();
    doing_ = doing;
    ticker_.start();
    become(std::move(phase));
    return task_;
}

void Activity::become(Phase phase) {
    phase_ = std::move(phase);
    emit phaseChanged();
    readProgress();
}

void Activity::rest() {
    ticker_.stop();
    task_.reset();
    doing_.clear();
    become(phase::Idle{});
    emit rested();
}

void Activity::stop() {
    emit stopWanted();
    if (task_ && !task_->stop.request_stop()) {
        task_->cancelTool.request_stop();
    }
}

void Activity::say(const std::string& notice, bool hasDetails) {
    notice_ = notice;
    noticeHasDetails_ = hasDetails;
    emit noticeChanged();
}

void Activity::readProgress() {
    progress_ = task_ && doing_.empty() ? progressOf(phase_, *task_) : Progress{};
    emit progressed();
}

std::string Activity::busyText() const {
    return doing_.empty() ? tarvo::busyText(phase_).value_or("") : doing_;
}

QString Activity::progressText() const {
    return shown(progress_.text);
}

QString Activity::notice() const {
    return shown(notice_);
}

} // namespace tarvo
