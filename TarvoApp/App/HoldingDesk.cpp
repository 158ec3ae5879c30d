#include "TarvoApp/App/HoldingDesk.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"

#include <utility>

namespace tarvo {

using lumo::Words;

HoldingDesk::HoldingDesk(const Ground& ground, ScanningDesk& scanning, TickedDesk& ticked,
                         CelebrationDesk& celebration, QObject* parent)
    : QObject(parent), ground_(ground), scanning_(scanning), ticked_(ticked), celebration_(celebration) {
    connect(&ground.question, &QuestionDesk::accepted, this, [this](const Asked& agreed) {
        if (const auto* const asked = std::get_if<asked::Empty>(&agreed)) {
            empty(asked->batches);
        }
    });
}

void HoldingDesk::take(HeldState held) {
    held_ = std::move(held);
    totals_ = totalsOf(held_.batches);
    emit changed();
}

void HoldingDesk::refreshHolding() {
    if (ground_.isDemo()) {
        return;
    }
    ground_.background.start(
        [this, desk = ground_.services.desk](const std::stop_token&) -> Background::Apply {
            return [this, held = heldState(desk)] {
                if (held) {
                    take(*held);
                } else {
                    ground_.activity.say(held.error().message);
                }
            };
        });
}

void HoldingDesk::requestEmpty(bool isFromSettings) {
    if (!ground_.question.isAsking() && !held_.batches.empty()) {
        ground_.question.ask(asked::Empty{.batches = held_.batches, .isFromSettings = isFromSettings});
    }
}

void HoldingDesk::empty(const std::vector<lumo::Holding::Batch>& agreed) {
    change(Words{"Vaciando…", "Emptying…"}.in(), [agreed](const Desk& desk) -> lumo::Result<Changed> {
        const auto emptied = emptyAgreed(agreed, desk);
        if (!emptied) {
            return std::unexpected(emptied.error());
        }
        return Changed{.notice = emptiedText(*emptied), .freed = emptied->freed};
    });
}

void HoldingDesk::undoLastCleanup() {
    putBackBy({}, undo);
}

void HoldingDesk::putBack(const QString& key) {
    const PutBackRequest request{.ids = {idOf(key)}};
    putBackBy(request, [request](const Desk& desk) { return restore(request, desk); });
}

void HoldingDesk::putBackBy(
    const PutBackRequest& request,
    const std::function<lumo::Result<lumo::TrashOperationResult>(const Desk&)>& restore) {
    const bool hasBegun =
        change(Words{"Devolviendo a su sitio…", "Putting back…"}.in(),
               [request, restore](const Desk& desk) -> lumo::Result<Changed> {
                   const auto meant = itemsMeant(request, desk);
                   const auto restored = restore(desk);
                   if (!restored) {
                       return std::unexpected(restored.error());
                   }
                   Changed changed{.notice = restoredText(*restored), .putsBack = true};
                   for (const auto& item : meant.value_or(std::vector<lumo::TrashedItem>())) {
                       changed.touched.push_back(item.original);
                   }
                   return changed;
               });
    if (hasBegun) {
        celebration_.forget();
    }
}

bool HoldingDesk::change(const std::string& doing,
                         const std::function<lumo::Result<Changed>(const Desk&)>& change) {
    if (ground_.activity.isBusy()) {
        ground_.activity.say(Words{"Ahora hay otra cosa en marcha: vuelve a probar cuando acabe",
                                   "Something else is going on: try again when it has ended"}
                                 .in());
        return false;
    }
    if (ground_.isOnlyDemo()) {
        return false;
    }
    ground_.activity.begin(phase::Cleaning{}, doing);
    ground_.background.start(
        [this, change, desk = ground_.services.desk](const std::stop_token&) -> Background::Apply {
            return [this, changed = change(desk)] { say(changed); };
        });
    return true;
}

void HoldingDesk::say(const lumo::Result<Changed>& changed) {
    if (!changed) {
        ground_.activity.rest();
        ground_.activity.say(changed.error().message);
        return;
    }
    celebration_.addEmptied(changed->freed);
    if (changed->putsBack) {
        ticked_.putBack();
    }
    emit scanning_.touched(changed->touched);
    scanning_.rescan();
    ground_.activity.say(changed->notice);
}

QString HoldingDesk::holdingTitle() const {
    return shown(heldTitle(totals_));
}

QString HoldingDesk::holdingText() const {
    return totals_.expiry ? shown(heldText(*totals_.expiry)) : QString();
}

} // namespace tarvo
