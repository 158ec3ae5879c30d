#pragma once

#include "LumoAI/ChatInterface.h"
#include "LumoAI/LocalModelPlace.h"

namespace lumo {

/// A model that a program on this machine runs for the user, asked over loopback. Nothing is asked before the
/// first use, and nothing at all of a model that the program would pass on to another machine. Which of the
/// two interfaces the program speaks is found out once.
class LocalModel final : public LanguageModel {
  public:
    explicit LocalModel(LocalModelPlace place) : place_(std::move(place)) {}

    std::optional<std::string> unavailableReason(Language language) override;
    Result<std::string> respond(const ModelRequest& request, const std::stop_token& stop) override;

  private:
    enum class Trouble { unreachable, missing, remote };

    /// The interface, asked for while it is not known.
    std::expected<ChatInterface, Trouble> interface(const std::stop_token& stop);
    std::expected<ChatInterface, Trouble> askForInterface(const std::stop_token& stop) const;

    LocalModelPlace place_;
    std::optional<ChatInterface> interface_;
};

} // namespace lumo
