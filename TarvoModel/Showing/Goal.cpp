#include "TarvoModel/Showing/Goal.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>

namespace tarvo::Goal {

using lumo::Language;

std::int64_t raised(std::int64_t goal) {
    return lumo::saturatedSum(goal, step);
}

std::int64_t lowered(std::int64_t goal) {
    return goal < 2 * step ? step : goal - step;
}

bool isReached(std::int64_t goal, std::int64_t selected) {
    return selected >= goal;
}

double fraction(std::int64_t goal, std::int64_t selected) {
    if (isReached(goal, selected)) {
        return 1;
    }
    return std::max(static_cast<double>(selected) / static_cast<double>(goal), 0.0);
}

std::string goalText(std::int64_t goal) {
    return std::to_string(goal / step) + " GB";
}

std::string meterText(std::int64_t goal, std::int64_t selected, Language language) {
    if (isReached(goal, selected)) {
        return lumo::Words{"Cumples el objetivo con ", "You reach your goal with "}.in(language) +
               lumo::ByteFormat::string(selected, language);
    }
    return lumo::ByteFormat::string(goal - selected, language) +
           lumo::Words{": marca más elementos en el mapa o en la lista",
                       " to go: select more items in the map or the list"}
               .in(language);
}

std::optional<std::int64_t> offer(std::int64_t goal, std::int64_t reachable) {
    const std::int64_t whole = reachable / step * step;
    return reachable < goal && whole >= step ? std::optional(whole) : std::nullopt;
}

std::string beyondText(std::int64_t goal, std::int64_t reachable, Language language) {
    if (reachable >= goal) {
        return {};
    }
    return reachable == 0
               ? lumo::Words{"Ahora no hay nada que se pueda marcar.",
                             "There is nothing that can be selected now."}
                     .in(language)
               : lumo::Words{"Todo lo que se puede marcar suma {}.", "All that can be selected comes to {}."}
                     .in(language, lumo::ByteFormat::string(reachable, language));
}

std::string offerText(std::int64_t offered, Language language) {
    return lumo::Words{"Fijar el objetivo en {}", "Set the goal to {}"}.in(language, goalText(offered));
}

} // namespace tarvo::Goal
