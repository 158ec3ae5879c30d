#pragma once

#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoModel/Flows/Finding.h"
#include "TarvoModel/Showing/ItemRows.h"

#include <QObject>
#include <QString>
#include <QVariantList>

#include <array>
#include <memory>
#include <optional>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

namespace tarvo {

/// What closer looks find, kind by kind. They are taken in the background while nothing else goes on, one at
/// a time, and given up for whatever begins meanwhile. What is found joins the plan that is shown.
class ItemsDesk final : public QObject {
    Q_OBJECT
    /// For each kind a map with title, amount, note and count, in the order of the kinds.
    Q_PROPERTY(QVariantList kinds READ kinds NOTIFY changed)

  public:
    ItemsDesk(const Ground& ground, TickedDesk& ticked, QObject* parent = nullptr);

    /// Looks at all kinds again as soon as nothing else goes on, but at duplicates, which take long, only
    /// where somebody wanted them before.
    void lookAgain();
    /// Looks at the kind unless that was done.
    Q_INVOKABLE void want(int kind);
    /// What is to be said below the items of the kind; may be empty.
    Q_INVOKABLE [[nodiscard]] QString noteOf(int kind) const;

    [[nodiscard]] QVariantList kinds() const;
    [[nodiscard]] bool isLooking() const { return looking_.has_value() || next().has_value(); }

    // What was found, largest first; a list is empty until its kind was looked at.
    using Items = std::vector<lumo::DetailItem>;
    [[nodiscard]] const Items& models() const { return itemsOf(lumo::InventoryKind::models); }
    [[nodiscard]] const Items& forgottenFiles() const { return itemsOf(lumo::InventoryKind::large); }
    [[nodiscard]] const Items& duplicateFiles() const { return itemsOf(lumo::InventoryKind::duplicates); }
    [[nodiscard]] const Items& leftoverItems() const { return itemsOf(lumo::InventoryKind::leftovers); }
    [[nodiscard]] const Items& icloudItems() const { return itemsOf(lumo::InventoryKind::cloud); }
    [[nodiscard]] const Items& systemDownloadItems() const { return itemsOf(lumo::InventoryKind::system); }
    [[nodiscard]] const Items& unusedAppItems() const { return itemsOf(lumo::InventoryKind::unused); }
    [[nodiscard]] const Items& installerItems() const { return itemsOf(lumo::InventoryKind::installers); }
    /// Null until it was looked at; it may say that it is unavailable.
    [[nodiscard]] const lumo::Inventory* docker() const { return foundOf(lumo::InventoryKind::docker); }

  signals:
    void changed();

  private:
    /// By the last looks at each kind that came to their end; null before.
    using Looks = std::array<std::shared_ptr<const CloserLook>, lumo::inventoryKindCount>;

    /// What all looks have found together.
    static std::shared_ptr<const ShownItems> itemsIn(const Looks& looks, const std::string& home);
    /// What the last look at the kind found, or null.
    [[nodiscard]] const lumo::Inventory* foundOf(lumo::InventoryKind kind) const;
    [[nodiscard]] const Items& itemsOf(lumo::InventoryKind kind) const;
    [[nodiscard]] LookState stateOf(lumo::InventoryKind kind) const;
    /// The kind that is looked at next.
    [[nodiscard]] std::optional<lumo::InventoryKind> next() const;
    void look();
    /// What a look has found, and what is shown then: null where it found the same as before.
    struct Look {
        lumo::InventoryKind kind = lumo::InventoryKind::docker;
        std::shared_ptr<const CloserLook> found;
        std::shared_ptr<const WholePlan> whole;
    };
    void lookEnded(const Look& look, bool wasStopped);
    /// Takes out what a cleanup took.
    void drop(const std::set<std::string>& ids);
    void tell();

    Ground ground_;
    TickedDesk& ticked_;
    Looks looks_;
    std::array<bool, lumo::inventoryKindCount> wanted_{};
    std::optional<lumo::InventoryKind> looking_;
    std::stop_source stop_; ///< Of the look that goes on.
    /// Views ask for each line apart, and each time for all of them; empty until somebody does.
    mutable QVariantList lines_;
};

} // namespace tarvo
