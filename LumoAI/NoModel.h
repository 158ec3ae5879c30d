#pragma once

#include "LumoAI/LanguageModel.h"

namespace lumo {

/// Where there is no model, or none was chosen.
class NoModel final : public LanguageModel {
  public:
    std::optional<std::string> unavailableReason(Language language) override;
    Result<std::string> respond(const ModelRequest& request, const std::stop_token& stop) override;
};

/// Why a model cannot be used when nothing better can be said.
std::string modelIsUnavailable(Language language);

} // namespace lumo
