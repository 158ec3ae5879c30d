#pragma once

#include "TarvoApp/App/CleaningDesk.h"
#include "TarvoApp/App/EntrySafeties.h"
#include "TarvoApp/App/ExplorerList.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/HomeTree.h"
#include "TarvoApp/App/PlacesDesk.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvo {

/// The folder explorer beside the map: where one is in the home, what is there, and what of it is marked.
/// While it is open, it and the map's zoom lead each other.
class ExplorerDesk final : public QObject {
    Q_OBJECT
    /// Whether somebody explores; nothing is measured before.
    Q_PROPERTY(bool open READ isOpen WRITE setOpen NOTIFY openChanged)
    Q_PROPERTY(tarvo::ExplorerList* entries READ entries CONSTANT)
    Q_PROPERTY(int current READ current NOTIFY changed)
    /// The folders from below the home to where one is, and what each takes.
    Q_PROPERTY(QStringList titles READ titles NOTIFY changed)
    Q_PROPERTY(QStringList amounts READ amounts NOTIFY changed)
    /// What is in the folder, and how far measuring is.
    Q_PROPERTY(QString facts READ facts NOTIFY changed)
    /// Why there are no rows; empty where there are some.
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY changed)
    /// See `ExplorerOrder`.
    Q_PROPERTY(int order READ order WRITE setOrder NOTIFY changed)
    Q_PROPERTY(QString filter READ filter WRITE setFilter NOTIFY changed)
    /// The ages that can be asked for: 0 is everything. See `Explorer::setOlderThan`.
    Q_PROPERTY(QStringList ages READ ages CONSTANT)
    Q_PROPERTY(int age READ age WRITE setAge NOTIFY changed)
    /// That only what is so old is shown, and what that takes; empty for everything.
    Q_PROPERTY(QString ageText READ ageText NOTIFY changed)
    /// How many are marked and what goes with them; empty for none.
    Q_PROPERTY(QString markedText READ markedText NOTIFY changed)

  public:
    ExplorerDesk(const Ground& ground, const TickedDesk& ticked, ScanningDesk& scanning, MapModel& map,
                 CleaningDesk& cleaning, QObject* parent = nullptr);

    /// The row of a key of the list's; -1 where there is none any more.
    Q_INVOKABLE [[nodiscard]] int rowOf(const QString& key) const;
    Q_INVOKABLE void moveTo(int row);
    /// Into the folder of that row; false where it is none.
    Q_INVOKABLE bool enter(int row);
    /// Out of the folder, onto its row.
    Q_INVOKABLE void leave();
    /// Back to the folder so many levels below the home.
    Q_INVOKABLE void leaveTo(int depth);
    /// To the folder at that absolute path, as soon as that is known.
    void goTo(const std::string& path);
    /// Marks the row, or no longer; or says why it is not marked.
    Q_INVOKABLE void toggleMark(int row);
    /// Shows what is of the next age, and after the last one everything.
    Q_INVOKABLE void showNextAge();
    Q_INVOKABLE void clearMarks();
    /// How many things `setAside` of that row would ask about.
    Q_INVOKABLE [[nodiscard]] int togetherWith(int row) const;
    /// Asks whether what is marked is set aside: with a row that is not marked, that alone.
    Q_INVOKABLE void setAside(int row);
    /// Tells what stands there.
    Q_INVOKABLE void explain(int row);
    /// A scan has ended: the map shows again where one is.
    void settle();

    [[nodiscard]] bool isOpen() const { return isOpen_; }
    void setOpen(bool open);
    [[nodiscard]] ExplorerList* entries() { return &list_; }
    [[nodiscard]] bool isReading() const { return explorer_ && explorer_->isReading(); }
    [[nodiscard]] int current() const;
    [[nodiscard]] QStringList titles() const;
    [[nodiscard]] QStringList amounts() const;
    [[nodiscard]] QString facts() const;
    [[nodiscard]] QString emptyText() const;
    [[nodiscard]] int order() const;
    void setOrder(int order);
    [[nodiscard]] QString filter() const;
    void setFilter(const QString& letters);
    [[nodiscard]] QStringList ages() const;
    [[nodiscard]] int age() const;
    void setAge(int age);
    [[nodiscard]] QString ageText() const;
    [[nodiscard]] QString markedText() const;
    /// Where one is; empty until it was open.
    [[nodiscard]] std::string path() const { return explorer_ ? explorer_->path() : std::string(); }

  signals:
    void openChanged();
    void changed();

  private:
    void takeTree();
    /// What is never touched may have changed, and has to be known of what was just marked: looked up in the
    /// background.
    void protect();
    void takeNeverTouched(const NeverTouched& never);
    void refresh();
    /// True when the rows are so many that they are read in the background.
    bool readElsewhere(const RowsWanted& wanted);
    void readNext();
    void showOlderThan(std::optional<std::int64_t> days);
    void show();
    /// The user has gone elsewhere: the map goes there, too.
    void hasMoved();
    void leadMap();
    void followMap();
    [[nodiscard]] bool hasRow(int row) const;
    [[nodiscard]] std::vector<lumo::EntryIndex> chosenWith(int row) const;
    [[nodiscard]] std::vector<lumo::NamedEntry> way() const;

    Ground ground_;
    MapModel& map_;
    CleaningDesk& cleaning_;
    HomeTree tree_;
    EntrySafeties safeties_;
    std::unique_ptr<Explorer> explorer_; ///< None until it was first open.
    bool isLookingUp_ = false;           ///< What is never touched.
    bool looksUpAgain_ = false;          ///< After that.
    std::string justMarked_;             ///< Until that is known of it; empty for nothing.
    std::optional<RowsWanted> toRead_;   ///< In the background, after what is read there now.
    bool isReading_ = false;
    ExplorerList list_;
    bool isOpen_ = false;
    std::string goingTo_; ///< What the tree has not got yet; empty for none.
    std::string ledTo_;   ///< What the map was asked to show and has not yet; empty for none.
    QTimer leading_;
};

} // namespace tarvo
