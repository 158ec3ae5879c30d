#include "LumoCore/Explaining/HeuristicExplainer.h"

#include "LumoCore/Basics/Text.h"

#include <fmt/format.h>

namespace lumo::HeuristicExplainer {

namespace {

/// The words of an explanation in one language.
class Words final {
  public:
    Words(const FolderEvidence& evidence, Language language) : evidence_(evidence), language_(language) {}

    void writeTo(Explanation& explanation) const {
        const std::optional<std::string> app = evidence_.appName();
        if (evidence_.location == FolderLocation::caches) {
            explainCache(explanation, app.value_or(printable(evidence_.folderName())));
        } else if (evidence_.isAppleComponent) {
            explainComponent(explanation);
        } else if (app) {
            explainAppData(explanation, *app);
        } else {
            explainLeftover(explanation);
        }
    }

  private:
    void explainCache(Explanation& explanation, const std::string& owner) const {
        explanation.whatItIs = named("Caché de {}", "{} cache", owner);
        explanation.owner = owner;
        explanation.safety = Safety::safe;
        explanation.reason = said("macOS permite borrar las cachés: la app las regenera.",
                                  "macOS allows caches to be deleted: the app recreates them.");
        explanation.howToFree =
            said("Vaciar la carpeta con la app cerrada.", "Empty the folder with the app closed.");
    }

    void explainComponent(Explanation& explanation) const {
        explanation.whatItIs = said("Componente de macOS", "macOS component");
        explanation.owner = "macOS";
        explanation.safety = Safety::keep;
        explanation.reason = said("Lo gestiona el sistema.", "Managed by the system.");
        explanation.howToFree = said("Dejar que macOS lo gestione.", "Let macOS manage it.");
    }

    void explainAppData(Explanation& explanation, const std::string& app) const {
        explanation.whatItIs = named("Datos de {}", "{} data", app);
        explanation.owner = app;
        explanation.safety = Safety::review;
        explanation.reason = said("Puede contener ajustes o documentos de la app.",
                                  "It may contain the app's settings or documents.");
        explanation.howToFree =
            named("Revisar desde los ajustes de {} o desinstalarla si no la usas.",
                  "Review it in {}'s settings, or uninstall it if you don't use it.", app);
    }

    void explainLeftover(Explanation& explanation) const {
        explanation.whatItIs = said("Posible resto de una app o herramienta que ya no está instalada",
                                    "Possibly left over from an app or tool that's no longer installed");
        explanation.owner = "desconocida"; // A stored word, the same in both languages.
        explanation.safety = Safety::review;
        explanation.reason =
            said("Ninguna app instalada coincide con el nombre.", "No installed app matches the name.");
        explanation.howToFree =
            said("Comprueba que no la usas y bórrala.", "Check you don't use it, then delete it.");
    }

    [[nodiscard]] std::string said(std::string_view es, std::string_view en) const {
        return std::string(text(es, en, language_));
    }

    [[nodiscard]] std::string named(std::string_view es, std::string_view en, const std::string& name) const {
        return fmt::format(fmt::runtime(text(es, en, language_)), name);
    }

    const FolderEvidence& evidence_;
    const Language language_;
};

} // namespace

Explanation explain(const FolderEvidence& evidence, Date now, Language language) {
    Explanation explanation{.path = evidence.path,
                            .sizeBytes = evidence.usage.allocatedBytes,
                            .source = Explanation::Source::heuristic,
                            .createdAt = now};
    Words(evidence, language).writeTo(explanation);
    return explanation;
}

} // namespace lumo::HeuristicExplainer
