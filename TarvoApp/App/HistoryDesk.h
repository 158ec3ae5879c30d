#pragma once

#include "TarvoApp/App/HoldingDesk.h"
#include "TarvoModel/Showing/HistoryRows.h"

#include <QObject>
#include <QString>
#include <QVariantList>

#include <cstddef>
#include <string>
#include <vector>

namespace tarvo {

/// All cleanups as their window shows them, one of them with what became of each item. Kept up to date while
/// it is shown.
class HistoryDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isBusy READ isBusy NOTIFY changed)
    Q_PROPERTY(QString total READ total NOTIFY changed)
    /// Why there is no cleanup to be seen, or nothing known of what can go back; empty when all is shown.
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed)
    /// Newest first, each with its "date", "facts" and whether it "canGoBack".
    Q_PROPERTY(QVariantList cleanups READ cleanups NOTIFY changed)
    /// Which of them is opened; -1 when there is none.
    Q_PROPERTY(int chosen READ chosen WRITE choose NOTIFY chosenChanged)
    Q_PROPERTY(QString title READ title NOTIFY chosenChanged)
    Q_PROPERTY(QString facts READ facts NOTIFY chosenChanged)
    /// Of that cleanup, largest first: the items, each with its "title", "bytes", "text" and "failed", and
    /// below each its pieces, with "place", "text", and the "key" by which one can be put back.
    Q_PROPERTY(QVariantList lines READ lines NOTIFY chosenChanged)

  public:
    HistoryDesk(const Ground& ground, const HoldingDesk& holding, std::string home,
                QObject* parent = nullptr);

    /// Reads the log, and again after each change of what is set aside.
    Q_INVOKABLE void show();
    /// No longer. The next time it begins with the newest cleanup.
    Q_INVOKABLE void forget() { isShown_ = false; }
    void choose(int index);

    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] QString total() const;
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] QVariantList cleanups() const;
    [[nodiscard]] int chosen() const { return chosen_; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString facts() const;
    [[nodiscard]] QVariantList lines() const;

  signals:
    void changed();
    void chosenChanged();

  private:
    /// What was read.
    struct Read {
        std::vector<HistoryCleanup> cleanups;
        std::string total;
        std::string problem;
    };
    static Read readFrom(const Desk& desk);
    static Read readDemo(lumo::Date now);
    void refresh();
    void take(Read read);
    [[nodiscard]] const HistoryCleanup* opened() const;

    Ground ground_;
    std::string home_; ///< Which is shown as "~".
    Read read_;
    int chosen_ = -1;
    std::size_t asked_ = 0; ///< How often it was read: only the last answer counts.
    bool isShown_ = false;
    bool beginsAnew_ = false; ///< The newest cleanup is to be chosen when they are read.
    bool isBusy_ = false;
};

} // namespace tarvo
