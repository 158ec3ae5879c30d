#include "TarvoApp/App/ExplainingDesk.h"

#include "LumoAI/ExplanationService.h"
#include "LumoAI/ModelWriters.h"
#include "TarvoApp/App/QtText.h"

#include <utility>
#include <vector>

namespace tarvo {

ExplainingDesk::ExplainingDesk(const Ground& ground, QObject* parent) : QObject(parent), ground_(ground) {}

void ExplainingDesk::take(const std::shared_ptr<const lumo::ScanReport>& report, std::int64_t recoverable,
                          const std::string& summary, const Explanations& certain) {
    report_ = report;
    recoverable_ = recoverable;
    summary_ = {.text = summary, .byAI = false};
    learn(certain);
    emit reportChanged();
    emit summaryChanged();
}

void ExplainingDesk::takeRecoverable(std::int64_t recoverable) {
    if (!report_ || recoverable == std::exchange(recoverable_, recoverable)) {
        return;
    }
    const lumo::Date now = ground_.services.desk.now();
    summary_ = {.text = lumo::DiskSummary::templateText(*report_, recoverable, now), .byAI = false};
    emit summaryChanged();
    if (!ground_.activity.isBusy()) { // Else it is asked for once the scan has ended.
        refreshSummary();
    }
}

void ExplainingDesk::learn(const Explanations& explanations) {
    bool isNews = false;
    for (const auto& [path, explanation] : explanations) {
        const auto known = explanations_.find(path);
        isNews = isNews || known == explanations_.end() || known->second != explanation;
        explanations_.insert_or_assign(path, explanation);
    }
    if (isNews) {
        emit explanationsChanged();
    }
}

// The summary.

void ExplainingDesk::askModel() {
    if (ground_.isDemo()) {
        return;
    }
    ground_.background.start(
        [this, make = ground_.services.model,
         preferences = ground_.settings.preferences()](const std::stop_token&) -> Background::Apply {
            return [this, reason = make(preferences)->unavailableReason()] {
                aiUnavailableReason_ = reason;
                emit summaryChanged();
            };
        });
}

void ExplainingDesk::refreshSummary() {
    if (!report_ || ground_.isDemo() || !ground_.settings.aiSummaryEnabled()) {
        return;
    }
    ground_.background.start(
        [this, make = ground_.services.model, preferences = ground_.settings.preferences(), report = report_,
         recoverable = recoverable_,
         now = ground_.services.desk.now()](const std::stop_token& end) -> Background::Apply {
            const std::unique_ptr<lumo::LanguageModel> model = make(preferences);
            const std::optional<std::string> reason = model->unavailableReason();
            const lumo::AISummaryWriter::Write write =
                reason ? lumo::AISummaryWriter::Write() : lumo::summaryWriter(*model, end);
            return [this, report, recoverable, reason,
                    summary = lumo::SummaryService::summary(*report, recoverable, now, write)] {
                aiUnavailableReason_ = reason;
                if (report == report_ && recoverable == recoverable_) {
                    summary_ = summary;
                }
                emit summaryChanged();
            };
        });
}

QString ExplainingDesk::summaryText() const {
    return shown(summary_.text);
}

QString ExplainingDesk::aiUnavailableReason() const {
    return shown(aiUnavailableReason_.value_or(""));
}

HelpSources ExplainingDesk::helpSources() const {
    if (ground_.isDemo()) {
        return {};
    }
    return {.facts =
                [report = report_, recoverable = recoverable_, now = ground_.services.desk.now()] {
                    return report ? lumo::DiskSummary::facts(*report, recoverable, now)
                                  : std::vector<std::string>();
                },
            .model = [make = ground_.services.model,
                      preferences = ground_.settings.preferences()] { return make(preferences); }};
}

// The folders that no rule knows.

void ExplainingDesk::explain() {
    if (ground_.activity.isBusy() || !canExplain() || ground_.isOnlyDemo()) {
        return;
    }
    std::vector<std::string> folders;
    for (const lumo::UnclassifiedItem& item : report_->unclassified) {
        folders.push_back(item.path);
    }
    const auto task = ground_.activity.begin(
        phase::Explaining{.done = 0, .total = static_cast<std::int64_t>(folders.size())});
    ground_.background.start(task->stop, [this, task, folders, make = ground_.services.model,
                                          preferences = ground_.settings.preferences(),
                                          desk = ground_.services.desk](const std::stop_token& stop) {
        lumo::ExplanationSettings settings{.home = desk.home,
                                           .cacheHome = desk.home,
                                           .installed = lumo::Installed::ofThisMachine(desk.home),
                                           .now = desk.now()};
        settings.watch = {.progress = &task->scan.walked, .stop = stop};
        settings.progress = [this](std::size_t done, std::size_t total) {
            // The last one is told by the result.
            if (done < total) {
                ground_.background.post([this, done, total] {
                    ground_.activity.become(phase::Explaining{.done = static_cast<std::int64_t>(done),
                                                              .total = static_cast<std::int64_t>(total)});
                });
            }
        };
        const std::unique_ptr<lumo::LanguageModel> model = make(preferences);
        return Background::Apply([this, told = lumo::ExplanationService::explain(folders, *model, settings)] {
            ground_.activity.rest();
            learn(told);
        });
    });
}

void ExplainingDesk::gatherEvidence(const std::string& path) {
    if (path.empty() || !evidence_.emplace(path, std::string()).second) {
        return;
    }
    ground_.background.start(
        [this, path, gather = ground_.services.evidence,
         now = ground_.services.desk.now()](const std::stop_token& end) -> Background::Apply {
            return [this, path, told = gather(path, end).promptDescription(now)] {
                evidence_[path] = told;
                emit evidenceChanged();
            };
        });
}

void ExplainingDesk::forgetEvidence() {
    evidence_.clear();
    emit evidenceChanged();
}

} // namespace tarvo
