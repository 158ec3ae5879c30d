#pragma once

#include "LumoCore/Cleanup/Archiver.h"
#include "LumoCore/Scanning/Scanner.h"
#include "TarvoApp/App/Kinds.h"
#include "TarvoModel/Showing/ProgressTexts.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <atomic>
#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// One piece of long work: what its thread is told, and what it tells. Shared by both.
struct Task {
    std::stop_source stop;       ///< Ends it; a cleanup after the action in hand.
    std::stop_source cancelTool; ///< Ends a tool that a cleanup has started, too.
    lumo::ScanProgress scan;
    lumo::ScanMemory measured; ///< By a scan's first pass, for its second.
    lumo::Archiver::ArchiveProgress archive;
    std::atomic<std::size_t> action = 0; ///< The one in hand of a cleanup.

    std::vector<CleanupStep> steps; ///< Of the main thread: what a cleanup does, once that is planned.
    std::int64_t expectedBytes = 0; ///< About as many a scan will measure; 0 for no idea.
};

/// What goes on, one thing at a time, and what is said of it. All parts of the application begin their work
/// here, so that two of them never work at once. Lives on the main thread.
class Activity final : public QObject {
    Q_OBJECT
    Q_PROPERTY(tarvo::Kinds::Phase phase READ kind NOTIFY phaseChanged)
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY phaseChanged)
    /// How far the work is: what is in hand and how much is done; empty while that is not known.
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressed)
    /// The same from 0 to 1; less than 0 while it is not known.
    Q_PROPERTY(double progress READ progress NOTIFY progressed)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    /// True when there is more to be told than the notice has room for.
    Q_PROPERTY(bool noticeHasDetails READ hasNoticeDetails NOTIFY noticeChanged)

  public:
    explicit Activity(QObject* parent);

    /// Begins work, whose phase is not idle. `doing` is said of it instead of the phase's own words.
    std::shared_ptr<Task> begin(Phase phase, const std::string& doing = {});
    /// The next step of the work in hand, or how far it has come.
    void become(Phase phase);
    /// Nothing goes on any more. Whoever waited for that may begin before this returns.
    void rest();
    /// Asks what goes on to stop: a cleanup after the action in hand, a second time also a tool that runs.
    Q_INVOKABLE void stop();
    Q_INVOKABLE void dismissNotice() { say({}); }
    void say(const std::string& notice, bool hasDetails = false);

    [[nodiscard]] const Phase& phase() const { return phase_; }
    [[nodiscard]] Kinds::Phase kind() const { return Kinds::of(phase_); }
    [[nodiscard]] bool isBusy() const { return !isIdle(phase_); }
    /// None while nothing goes on.
    [[nodiscard]] const std::shared_ptr<Task>& task() const { return task_; }
    /// What is said of the work in hand; empty while nothing goes on.
    [[nodiscard]] std::string busyText() const;
    [[nodiscard]] QString progressText() const;
    [[nodiscard]] double progress() const { return progress_.share.value_or(-1); }
    [[nodiscard]] QString notice() const;
    [[nodiscard]] bool hasNoticeDetails() const { return noticeHasDetails_; }

  signals:
    void phaseChanged();
    void progressed();
    void noticeChanged();
    void rested();
    /// The user wants an end to what goes on, and to what waits for it.
    void stopWanted();

  private:
    void readProgress();

    Phase phase_;
    std::shared_ptr<Task> task_;
    std::string doing_;
    Progress progress_;
    std::string notice_;
    bool noticeHasDetails_ = false;
    QTimer ticker_; ///< While something goes on, its progress is read a few times a second.
};

} // namespace tarvo
