#include "LumoAI/NoModel.h"

#include "LumoCore/Basics/Words.h"

namespace lumo {

std::optional<std::string> NoModel::unavailableReason(Language language) {
    return std::string(modelIsUnavailable(language));
}

Result<std::string> NoModel::respond(const ModelRequest&, const std::stop_token&) {
    return failure("there is no model");
}

std::string modelIsUnavailable(Language language) {
    return Words{"el modelo no está disponible", "the model isn't available"}.in(language);
}

} // namespace lumo
