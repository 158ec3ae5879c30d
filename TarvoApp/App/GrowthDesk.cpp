#include "TarvoApp/App/GrowthDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "TarvoApp/App/QtText.h"

#include <utility>

namespace tarvo {

using lumo::ByteFormat::string;

void GrowthDesk::take(lumo::Growth growth) {
    growth_ = std::move(growth);
    emit changed();
}

QVariantList GrowthDesk::growth() const {
    QVariantList items;
    for (const lumo::GrowthItem& item : growth_.items) {
        items.push_back(QVariantMap{{"key", keyOf(item.id)},
                                    {"name", shown(item.name)},
                                    {"delta", shown("+" + string(item.delta))},
                                    {"now", shown(string(item.now))}});
    }
    return items;
}

QString GrowthDesk::growthSince() const {
    return growth_.since ? shown(lumo::dayText(*growth_.since)) : QString();
}

} // namespace tarvo
