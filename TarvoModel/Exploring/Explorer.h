#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Scanning/NamedTree.h"
#include "TarvoModel/Exploring/NeverTouched.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

/// The folder explorer, the same for every face: where somebody is in a measured tree, what they see there,
/// in which order, and what they have marked. It is used by one thread, while others may still fill the tree.
namespace tarvo {

/// By what the entries of a folder are ordered: the largest, the newest or the fullest first, or by name.
enum class ExplorerOrder { size, name, date, items };

/// Which rows of a tree are read, and in which order.
struct RowsWanted {
    lumo::EntryIndex folder = lumo::NamedTree::root;
    ExplorerOrder order = ExplorerOrder::size;
    std::string filter;                         ///< Letters of the names; empty for all.
    std::optional<std::uint32_t> changedBefore; ///< In seconds since 1970; absent for all.

    friend bool operator==(const RowsWanted&, const RowsWanted&) = default;
};

struct RowsRead {
    RowsWanted wanted;
    std::vector<lumo::NamedEntry> rows; ///< In order.
    std::int64_t largestBytes = 0;
    std::int64_t bytes = 0; ///< Of all rows.
};

/// Reads them; of a folder with very many entries that takes a while. May be called on any thread.
RowsRead readRows(const lumo::NamedTree& tree, const RowsWanted& wanted);

class Explorer final {
  public:
    /// Asked before rows are read: true when they will be read elsewhere and handed over with `take`.
    using ReadElsewhere = std::function<bool(const RowsWanted& wanted)>;

    /// Begins at the root of the tree.
    explicit Explorer(std::shared_ptr<lumo::NamedTree> tree, ReadElsewhere readElsewhere = {});

    [[nodiscard]] const lumo::NamedTree& tree() const { return *tree_; }

    // What is seen.

    [[nodiscard]] lumo::NamedEntry folder() const; ///< Where one is.
    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] bool isAtTop() const { return folder_ == lumo::NamedTree::root; }
    /// What is in the folder and passes the filter, in order. Stays until the next step. Until rows that are
    /// read elsewhere are there, the folder has those that it had before, or none.
    [[nodiscard]] const std::vector<lumo::NamedEntry>& rows() const { return shown_.rows; }
    [[nodiscard]] std::int64_t rowsBytes() const { return shown_.bytes; }
    [[nodiscard]] bool isReading() const { return isReading_; }  ///< Rows are read elsewhere just now.
    [[nodiscard]] std::size_t cursor() const { return cursor_; } ///< 0 where there are no rows.
    [[nodiscard]] const lumo::NamedEntry* current() const;
    [[nodiscard]] ExplorerOrder order() const { return order_; }
    [[nodiscard]] const std::string& filter() const { return filter_; }
    /// Without a change for at least so many days is all that is shown; absent for everything.
    [[nodiscard]] std::optional<std::int64_t> olderThanDays() const { return olderThanDays_; }
    /// True for an entry that holds newer things besides those that are shown: then its row has the sums of
    /// the older ones only.
    [[nodiscard]] bool holdsNewer(lumo::EntryIndex entry) const;
    /// What part of the folder an entry takes, from 0 to 1.
    [[nodiscard]] double share(const lumo::NamedEntry& entry) const;
    /// The same of the largest row: what its bar is long.
    [[nodiscard]] double barShare(const lumo::NamedEntry& entry) const;

    // Steps.

    /// Reads anew what the tree has by now. The cursor stays on its entry, or at the top while it never left
    /// that. Of a folder that is gone the nearest one around it is shown.
    void refresh();
    /// The same place was measured anew, in a tree of its own: goes on there, with order, filter, age and
    /// marks, as far as it still has them. What `rows` gave before is no longer valid.
    void goOnIn(std::shared_ptr<lumo::NamedTree> tree);
    /// Rows that were read elsewhere. Those that are not wanted any more are dropped.
    void take(RowsRead read);
    void moveBy(std::ptrdiff_t rows);
    void moveTo(std::size_t row);
    /// Into the folder under the cursor; false for what is none.
    bool enter();
    /// Out of the folder, onto its row in the one around it; false at the top.
    bool leave();
    /// To where an entry is, with the cursor on it.
    void goTo(lumo::EntryIndex entry);
    /// Into a folder of the tree.
    void goInto(lumo::EntryIndex folder) { show(folder); }
    void setOrder(ExplorerOrder order);
    /// Shows only names with these letters in them, whatever their case and accents; all when empty. It ends
    /// with the folder.
    void setFilter(const std::string& letters);
    /// Shows only what was not changed for at least so many days, in folders of any age; everything when
    /// absent. It stays when one goes elsewhere.
    void setOlderThan(std::optional<std::int64_t> days, lumo::Date now);

    // What is never touched.

    /// What that holds back is no longer marked.
    void protect(NeverTouched never);
    /// The paths about which the disk has to be asked when it is looked up once more: what is marked, and
    /// what was found to be held back.
    [[nodiscard]] std::vector<std::string> inQuestion() const;
    /// True for a folder that is never touched, for what lies in one, and for what is known to lead there.
    [[nodiscard]] bool isProtected(lumo::EntryIndex entry) const;
    /// "a: it's in a folder protected in Settings", where that, or one that it holds, forbids to mark it.
    [[nodiscard]] std::optional<std::string> whyNotMarked(lumo::EntryIndex entry) const;

    // Marks, which stay when one goes elsewhere.

    /// Marks the entry under the cursor, or no longer; or else says why it is not marked.
    std::optional<std::string> toggleMark();
    void mark(lumo::EntryIndex entry);
    void clearMarks();
    [[nodiscard]] bool isMarked(lumo::EntryIndex entry) const { return marked_.contains(entry); }
    [[nodiscard]] std::size_t markCount() const { return marked_.size(); }
    [[nodiscard]] const std::set<lumo::EntryIndex>& marked() const { return marked_; }
    /// What is marked, or else what is under the cursor, and lies in nothing else that is: what an action is
    /// about. Its order is that of the marks' numbers.
    [[nodiscard]] std::vector<lumo::EntryIndex> chosen() const;
    /// What goes from the disk with what is marked (see `NamedTree::freedWithout`), as it was at the latest
    /// mark or refresh: in a home of many files with several names that takes a while to find out.
    [[nodiscard]] std::int64_t markedBytes() const;

  private:
    void read();
    [[nodiscard]] RowsWanted wanted() const;
    void putCursorOn(lumo::EntryIndex entry);
    void putCursorAt(std::size_t row);
    void forgetGone();
    /// The folder at the path, or the nearest one around it.
    [[nodiscard]] lumo::EntryIndex folderNear(const std::string& path) const;
    void show(lumo::EntryIndex folder);

    std::shared_ptr<lumo::NamedTree> tree_;
    lumo::EntryIndex folder_ = lumo::NamedTree::root;
    std::string path_; ///< Of the folder, by which one around it is found when it is gone.
    ReadElsewhere readElsewhere_;
    RowsRead shown_;
    bool isReading_ = false;
    std::size_t cursor_ = 0;
    std::optional<lumo::EntryIndex> cursorOn_; ///< Where it goes once that is among the rows.
    ExplorerOrder order_ = ExplorerOrder::size;
    std::string filter_;
    std::optional<std::int64_t> olderThanDays_;
    std::uint32_t changedBefore_ = 0; ///< In seconds since 1970, while there is such an age.
    NeverTouched never_;
    std::set<lumo::EntryIndex> marked_;
    mutable std::optional<std::int64_t> markedBytes_; ///< Absent until somebody asks.
};

/// The next age to choose: half a year, one year, two years, and then none again.
std::optional<std::int64_t> nextAge(std::optional<std::int64_t> days);

/// "unchanged for 1 year".
std::string ageText(std::int64_t days, lumo::Language language = lumo::currentLanguage());

/// "2 marked: 3 GB", with what goes from the disk with them; empty for none.
std::string markedText(const Explorer& explorer);

/// After something changed on the disk. May be called on any thread; whoever explores the tree refreshes
/// then. The first takes out of it what no longer stands at these paths, with what is gone around it. The
/// second measures what stands at a path anew, or takes it out when it is gone; where the tree has no such
/// folder nothing happens.
void dropMissing(lumo::NamedTree& tree, const std::vector<std::string>& paths);
void measureAnew(lumo::NamedTree& tree, const std::string& path, const std::stop_token& stop = {});

} // namespace tarvo
