#pragma once

#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/Explaining/Explanation.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoModel/Flows/HelpReply.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace tarvo {

/// What is known and guessed of folders that no rule knows, and the disk in two sentences: what a language
/// model may add to.
class ExplainingDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString summary READ summaryText NOTIFY summaryChanged)
    Q_PROPERTY(bool summaryByAI READ isSummaryByAI NOTIFY summaryChanged)
    /// Empty while there is a model that can be used.
    Q_PROPERTY(QString aiUnavailableReason READ aiUnavailableReason NOTIFY summaryChanged)
    Q_PROPERTY(bool canExplain READ canExplain NOTIFY reportChanged)

  public:
    /// By folder.
    using Explanations = std::map<std::string, lumo::Explanation>;

    explicit ExplainingDesk(const Ground& ground, QObject* parent = nullptr);

    /// A new report, with what is certain of its folders.
    void take(const std::shared_ptr<const lumo::ScanReport>& report, std::int64_t recoverable,
              const std::string& summary, const Explanations& certain);
    /// The same report has been planned anew: what can be recovered of it is told as it is now.
    void takeRecoverable(std::int64_t recoverable);
    /// What explanations rest on may be no longer true.
    void forgetEvidence();
    /// Finds out whether there is a model.
    void askModel();
    /// Asks the model about the folders that no rule knows.
    Q_INVOKABLE void explain();
    Q_INVOKABLE void refreshSummary();
    /// Finds out what the explanation of the folder rests on.
    void gatherEvidence(const std::string& path);

    /// What the help may know of this disk, and the model that words it.
    [[nodiscard]] HelpSources helpSources() const;
    [[nodiscard]] const Explanations& explanations() const { return explanations_; }
    /// In words, by folder; empty while it is gathered.
    [[nodiscard]] const std::map<std::string, std::string>& evidence() const { return evidence_; }
    [[nodiscard]] QString summaryText() const;
    [[nodiscard]] bool isSummaryByAI() const { return summary_.byAI; }
    [[nodiscard]] QString aiUnavailableReason() const;
    [[nodiscard]] bool canExplain() const { return report_ && !report_->unclassified.empty(); }

  signals:
    void reportChanged();
    void summaryChanged();
    void explanationsChanged();
    void evidenceChanged();

  private:
    void learn(const Explanations& explanations);

    Ground ground_;
    std::shared_ptr<const lumo::ScanReport> report_;
    std::int64_t recoverable_ = 0;
    lumo::DiskSummaryText summary_;
    std::optional<std::string> aiUnavailableReason_;
    Explanations explanations_;
    std::map<std::string, std::string> evidence_;
};

} // namespace tarvo
