#include "TarvoCLI/UsersModel.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoCLI/Watching.h"
#include "TarvoModel/Flows/ModelChoice.h"

#include <fmt/format.h>

namespace tarvo {

using lumo::Words;

std::unique_ptr<lumo::LanguageModel> usersModel(const Invocation& invocation, std::string_view instead) {
    const Preferences preferences = Preferences::load(invocation.home);
    if (!isModelChosen(preferences)) {
        return nullptr;
    }
    auto model = chosenModel(preferences);
    const std::optional<std::string> reason = model->unavailableReason(lumo::currentLanguage());
    if (!reason) {
        return model;
    }
    (void)complain(fmt::format("{} {}.{}{}", Words{"IA no disponible:", "AI unavailable:"}.in(), *reason,
                               instead.empty() ? "" : " ", instead),
                   ExitCode::failed);
    return nullptr;
}

bool watchModel(const Invocation& invocation, const std::function<void(const std::stop_token&)>& work) {
    return watchWalk(
        invocation, [&](const lumo::FileTree::Watch& watch) { work(watch.stop); },
        [] { return Words{"Preguntando a la IA de tu equipo", "Asking the AI on your computer"}.in(); });
}

} // namespace tarvo
