#include "LumoAI/NoModel.h"

namespace lumo {

std::optional<std::string> NoModel::unavailableReason(Language language) {
    return std::string(modelIsUnavailable(language));
}

Result<std::string> NoModel::respond(const ModelRequest&, const std::stop_token&) {
    return failure("there is no model");
}

std::string_view modelIsUnavailable(Language language) {
    return text("el modelo no está disponible", "the model isn't available", language);
}

} // namespace lumo
