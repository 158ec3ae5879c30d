#pragma once

#include "LumoCore/Rules/Rule.h"
#include "LumoCore/Scanning/NamedTree.h"
#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/TickedDesk.h"

#include <QObject>
#include <QTimer>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace tarvo {

/// What is certain of the safety of a tree's entries: by the rows that they belong to, and otherwise by what
/// nobody needs to guess about. Found out in the background, for those that somebody asks for.
class EntrySafeties final : public QObject {
    Q_OBJECT

  public:
    EntrySafeties(const Ground& ground, const TickedDesk& ticked, QObject* parent = nullptr);

    /// Of another tree from now on.
    void take(std::shared_ptr<const lumo::NamedTree> tree);
    /// Absent where nothing is certain, and until that is known.
    [[nodiscard]] std::optional<lumo::Safety> of(const lumo::NamedEntry& entry);

  signals:
    /// More is known.
    void changed();

  private:
    void askAgain();
    void findNext();

    Ground ground_;
    const TickedDesk& ticked_;
    std::shared_ptr<const lumo::NamedTree> tree_;
    std::map<lumo::EntryIndex, std::optional<lumo::Safety>> known_;
    std::vector<lumo::EntryIndex> asked_; ///< What is to be found out.
    bool isFinding_ = false;
    QTimer asking_;
};

} // namespace tarvo
