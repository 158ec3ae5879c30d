#pragma once

#include "LumoAI/LanguageModel.h"

#include <string>
#include <string_view>

/// The two languages that model services on a user's machine speak, as texts in and texts out.
namespace lumo {

enum class ChatInterface {
    ollama, ///< "/api/chat", by Ollama.
    openAI, ///< "/v1/chat/completions", by llama.cpp's server and most others.
};

/// The path under which questions are put, and the one that lists the models.
std::string_view chatPath(ChatInterface chat);
std::string_view modelsPath(ChatInterface chat);

/// The question as the service takes it. Nothing in it is left to chance: no sampling, a fixed seed.
std::string chatBody(ChatInterface chat, std::string_view model, const ModelRequest& request);

/// What a list of models says about one of them.
enum class ModelStanding {
    otherInterface, ///< The document is no such list: the service speaks something else.
    missing,
    remote, ///< The service would pass the question on to another machine.
    local,
};

/// Reads the list of models that a service gave. A service of the second kind may answer for a model under
/// any name, so there `local` means no more than that it is not known to be remote.
ModelStanding standingIn(ChatInterface chat, std::string_view models, std::string_view model);

/// What the model wrote, from the service's reply to a question. Fails for what is no such reply, for a text
/// that was cut off, and for one that came from another machine.
Result<std::string> answerIn(ChatInterface chat, std::string_view reply);

} // namespace lumo
