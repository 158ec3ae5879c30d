#include "TarvoModel/Flows/ModelChoice.h"

#include "LumoAI/LocalModel.h"
#include "LumoAI/NoModel.h"

namespace tarvo {

namespace {

std::optional<lumo::LocalModelPlace> chosenPlace(const Preferences& preferences) {
    const auto written = preferences.value(preference::localModel);
    return written ? lumo::LocalModelPlace::parse(*written) : std::nullopt;
}

} // namespace

bool isModelChosen(const Preferences& preferences) {
    return chosenPlace(preferences).has_value();
}

std::unique_ptr<lumo::LanguageModel> chosenModel(const Preferences& preferences) {
    if (auto place = chosenPlace(preferences)) {
        return std::make_unique<lumo::LocalModel>(std::move(*place));
    }
    return std::make_unique<lumo::NoModel>();
}

} // namespace tarvo
