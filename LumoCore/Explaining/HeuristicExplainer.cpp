#include "LumoCore/Explaining/HeuristicExplainer.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/FreeingAction.h"
#include "LumoCore/Explaining/SafetyPolicy.h"

namespace lumo::HeuristicExplainer {

namespace {

/// The words of an explanation in one language.
class Wording final {
  public:
    Wording(const FolderEvidence& evidence, Language language, System system)
        : evidence_(evidence), language_(language), system_(system) {}

    void writeTo(Explanation& explanation) const {
        const std::optional<std::string> app = evidence_.appName();
        if (evidence_.location == FolderLocation::caches) {
            explainCache(explanation, app.value_or(printable(evidence_.ownersName(system_))));
        } else if (evidence_.isAppleComponent) {
            explainComponent(explanation);
        } else if (app) {
            explainAppData(explanation, *app);
        } else if (evidence_.uninstalledOwner) {
            explainLeftover(explanation, printable(*evidence_.uninstalledOwner));
        } else {
            explainUnknown(explanation);
        }
    }

  private:
    void explainCache(Explanation& explanation, const std::string& owner) const {
        explanation.whatItIs = Words{"Caché de {}", "{} cache"}.in(language_, owner);
        explanation.owner = owner;
        explanation.safety = Safety::safe;
        explanation.reason = SafetyPolicy::cachesReason.on(system_).in(language_);
        explanation.howToFree =
            Words{"Vaciar la carpeta con la app cerrada.", "Empty the folder with the app closed."}.in(
                language_);
    }

    void explainComponent(Explanation& explanation) const {
        explanation.whatItIs = Words{"Componente de macOS", "macOS component"}.in(language_);
        explanation.owner = "macOS";
        explanation.safety = Safety::keep;
        explanation.reason = Words{"Lo gestiona el sistema.", "Managed by the system."}.in(language_);
        explanation.howToFree = Words{"Dejar que macOS lo gestione.", "Let macOS manage it."}.in(language_);
    }

    void explainAppData(Explanation& explanation, const std::string& app) const {
        explanation.whatItIs = Words{"Datos de {}", "{} data"}.in(language_, app);
        explanation.owner = app;
        explanation.safety = Safety::review;
        explanation.reason = hasWindows()
                                 ? Words{"Puede contener ajustes o documentos de la app.",
                                         "It may contain the app's settings or documents."}
                                       .in(language_)
                                 : Words{"Puede contener ajustes del programa, o cosas tuyas.",
                                         "It may contain the program's settings, or things of yours."}
                                       .in(language_);
        explanation.howToFree = appDataAdvice(app);
    }

    /// A program without a desktop icon has no settings to look into, and uninstalling anything on Linux
    /// leaves its folders in the home.
    [[nodiscard]] std::string appDataAdvice(const std::string& app) const {
        if (!hasWindows()) {
            return advice(FreeingAction::reviewContents, evidence_, language_);
        }
        return SystemWords{
            .macos = {"Revisar desde los ajustes de {} o desinstalarla si no la usas.",
                      "Review it in {}'s settings, or uninstall it if you don't use it."},
            .linux = {"Mira en los ajustes de {} qué deja borrar; desinstalarla no quita esta carpeta.",
                      "See what {}'s settings let you remove; uninstalling it leaves this folder."}}
            .on(system_)
            .in(language_, app);
    }

    [[nodiscard]] bool hasWindows() const {
        return system_ == System::macos || evidence_.relatedApp->path.ends_with(".desktop") ||
               evidence_.relatedApp->path.ends_with(".app");
    }

    void explainLeftover(Explanation& explanation, const std::string& owner) const {
        explanation.whatItIs =
            Words{"Resto de {}, que se desinstaló", "Left over from {}, which was uninstalled"}.in(language_,
                                                                                                   owner);
        explanation.owner = owner;
        explanation.safety = Safety::review;
        explanation.reason = Words{"Puede contener documentos o ajustes que quieras conservar.",
                                   "It may contain documents or settings that you want to keep."}
                                 .in(language_);
        explanation.howToFree = advice(FreeingAction::reviewContents, evidence_, language_);
    }

    void explainUnknown(Explanation& explanation) const {
        constexpr SystemWords whatItIs{
            .macos = {"Posible resto de una app o herramienta que ya no está instalada",
                      "Possibly left over from an app or tool that's no longer installed"},
            .linux = {"Datos de un programa sin icono de aplicación, o un resto",
                      "Data of a program without a desktop icon, or a leftover"}};
        constexpr SystemWords reason{
            .macos = {"Ninguna app instalada coincide con el nombre.", "No installed app matches the name."},
            .linux = {"Muchas herramientas no aparecen entre las apps.",
                      "Many tools are not listed among the apps."}};
        explanation.whatItIs = whatItIs.on(system_).in(language_);
        explanation.owner = "desconocida"; // A stored word, the same in both languages.
        explanation.safety = Safety::review;
        explanation.reason = reason.on(system_).in(language_);
        explanation.howToFree =
            system_ == System::macos
                ? Words{"Comprueba que no la usas y bórrala.", "Check you don't use it, then delete it."}.in(
                      language_)
                : advice(FreeingAction::reviewContents, evidence_, language_);
    }

    const FolderEvidence& evidence_;
    const Language language_;
    const System system_;
};

} // namespace

Explanation explain(const FolderEvidence& evidence, Date now, Language language, System system) {
    Explanation explanation{.path = evidence.path,
                            .sizeBytes = evidence.usage.allocatedBytes,
                            .source = Explanation::Source::heuristic,
                            .createdAt = now};
    Wording(evidence, language, system).writeTo(explanation);
    return explanation;
}

} // namespace lumo::HeuristicExplainer
