#include "LumoAI/LocalModel.h"

#include "LumoAI/ModelText.h"
#include "LumoAI/NoModel.h"
#include "LumoCore/Basics/Words.h"

#include <fmt/format.h>

namespace lumo {

namespace {

using namespace std::chrono_literals;

constexpr int allIsWell = 200;
constexpr std::size_t mostCharacters = 4000; // Of an answer in plain text, which is to be a few sentences.
constexpr platform::LoopbackLimits listLimits{.mostBodyBytes = std::size_t{4} * 1024 * 1024, .patience = 3s};
constexpr platform::LoopbackLimits answerLimits{.mostBodyBytes = std::size_t{1} * 1024 * 1024,
                                                .patience = 60s};

/// Not found, not allowed, not implemented: the program does not know the path.
bool isUnknownPath(int status) {
    return status == 404 || status == 405 || status == 501;
}

/// A plain answer for people; one in a form is left for the form's own check.
Result<std::string> tidied(const std::string& answer, const ModelRequest& request) {
    const std::string_view said = withoutThoughts(answer);
    return request.schema ? Result<std::string>(said) : modelText(said, mostCharacters);
}

} // namespace

std::optional<std::string> LocalModel::unavailableReason(Language language) {
    const auto found = interface({});
    if (found) {
        return std::nullopt;
    }
    switch (found.error()) {
    case Trouble::remote:
        return Words{"el modelo elegido se ejecuta en otra máquina y tus datos saldrían de esta",
                     "the chosen model runs on another machine, so your data would leave this one"}
            .in(language);
    case Trouble::missing:
        return Words{"el servicio de {} no tiene el modelo «{}»",
                     "the service at {} doesn't have the model “{}”"}
            .in(language, hostAndPort(place_.address), place_.model);
    case Trouble::unreachable:
        break;
    }
    return std::string(modelIsUnavailable(language));
}

Result<std::string> LocalModel::respond(const ModelRequest& request, const std::stop_token& stop) {
    const auto chat = interface(stop);
    if (!chat) {
        return failure("the model is unavailable");
    }
    const platform::LoopbackRequest question{.path = std::string(chatPath(*chat)),
                                             .json = chatBody(*chat, place_.model, request)};
    const auto reply = platform::askLoopback(place_.address, question, answerLimits, stop);
    if (!reply) {
        return failure(reply.error().reason());
    }
    if (reply->status != allIsWell) {
        return failure(fmt::format("the model service answered with status {}", reply->status));
    }
    const Result<std::string> answer = answerIn(*chat, reply->body);
    return answer ? tidied(*answer, request) : answer;
}

std::expected<ChatInterface, LocalModel::Trouble> LocalModel::interface(const std::stop_token& stop) {
    if (interface_) {
        return *interface_;
    }
    const auto found = askForInterface(stop);
    if (found) {
        interface_ = *found;
    }
    return found;
}

std::expected<ChatInterface, LocalModel::Trouble>
LocalModel::askForInterface(const std::stop_token& stop) const {
    // Ollama speaks both, but only its own list says which models are elsewhere. So the second question is
    // put only to a program that does not understand the first.
    for (const ChatInterface chat : {ChatInterface::ollama, ChatInterface::openAI}) {
        const platform::LoopbackRequest question{.path = std::string(modelsPath(chat))};
        const auto reply = platform::askLoopback(place_.address, question, listLimits, stop);
        if (!reply || (reply->status != allIsWell && !isUnknownPath(reply->status))) {
            return std::unexpected(Trouble::unreachable);
        }
        if (reply->status != allIsWell) {
            continue;
        }
        switch (standingIn(chat, reply->body, place_.model)) {
        case ModelStanding::local:
            return chat;
        case ModelStanding::remote:
            return std::unexpected(Trouble::remote);
        case ModelStanding::missing:
            return std::unexpected(Trouble::missing);
        case ModelStanding::otherInterface:
            break;
        }
    }
    return std::unexpected(Trouble::unreachable);
}

} // namespace lumo
