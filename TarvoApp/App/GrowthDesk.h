#pragma once

#include "LumoCore/History/GrowthTracker.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoModel/Showing/GrowthSeries.h"

#include <QObject>
#include <QString>
#include <QVariantList>

#include <cstddef>
#include <string>
#include <vector>

namespace tarvo {

/// What grew since an earlier look at the disk; for its window, what changed over all the looks that are
/// stored.
class GrowthDesk final : public QObject {
    Q_OBJECT
    /// Each with its "key", "name", "delta" and "now".
    Q_PROPERTY(QVariantList growth READ growth NOTIFY changed)
    Q_PROPERTY(QString growthSince READ growthSince NOTIFY changed)

    Q_PROPERTY(bool isBusy READ isBusy NOTIFY linesChanged)
    /// Why nothing is compared; empty when something is.
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY linesChanged)
    /// The free space, then what changed, largest change first: each with its "key" (the free space has
    /// none), "name", "word" ("new"), "delta", "now", its "values" for a screen reader, and its "points" from
    /// the corner above, both ways from 0 to 1; the free space has them only while it is
    /// chosen.
    Q_PROPERTY(QVariantList lines READ lines NOTIFY linesChanged)
    /// What the ends of the picture stand for; empty where nothing rose, or nothing fell.
    Q_PROPERTY(QString highest READ highest NOTIFY linesChanged)
    Q_PROPERTY(QString lowest READ lowest NOTIFY linesChanged)
    Q_PROPERTY(QString from READ from NOTIFY linesChanged)
    Q_PROPERTY(QString to READ to NOTIFY linesChanged)
    /// How far down no change is.
    Q_PROPERTY(double zero READ zero NOTIFY linesChanged)
    /// Which line is looked at; -1 when there is none.
    Q_PROPERTY(int chosen READ chosen WRITE choose NOTIFY chosenChanged)
    Q_PROPERTY(QString title READ title NOTIFY chosenChanged)
    Q_PROPERTY(QString facts READ facts NOTIFY chosenChanged)

  public:
    explicit GrowthDesk(const Ground& ground, QObject* parent = nullptr);

    void take(lumo::Growth growth);

    /// Reads the stored snapshots, and again after each scan.
    Q_INVOKABLE void show();
    /// No longer.
    Q_INVOKABLE void forget() { isShown_ = false; }
    void choose(int index);

    [[nodiscard]] QVariantList growth() const;
    [[nodiscard]] QString growthSince() const;
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] QVariantList lines() const;
    [[nodiscard]] QString highest() const;
    [[nodiscard]] QString lowest() const;
    [[nodiscard]] QString from() const;
    [[nodiscard]] QString to() const;
    [[nodiscard]] double zero() const { return 1 - frame_.up(0); }
    [[nodiscard]] int chosen() const { return chosen_; }
    [[nodiscard]] QString title() const;
    [[nodiscard]] QString facts() const;

  signals:
    void changed();
    void linesChanged();
    void chosenChanged();

  private:
    /// What was read: lines, or why there are none.
    struct Read {
        std::vector<GrowthLine> lines;
        std::string problem;
    };
    static Read readFrom(const std::string& home);
    static Read readDemo(lumo::Date now);
    void refresh();
    void takeLines(Read read);
    [[nodiscard]] const GrowthLine* opened() const;

    Ground ground_;
    lumo::Growth growth_;
    Read read_;
    GrowthFrame frame_;
    int chosen_ = -1;
    std::size_t asked_ = 0; ///< How often it was read: only the last answer counts.
    bool isShown_ = false;
    bool isBusy_ = false;
};

} // namespace tarvo
