#include "LumoCore/Explaining/PlaceTexts.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/CleanupPlanner.h"
#include "LumoCore/Explaining/SafetyPolicy.h"
#include "LumoCore/Inventories/AppStatus.h"
#include "LumoCore/Scanning/ProjectArtifacts.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace lumo::PlaceTexts {

namespace {

using Source = Explanation::Source;

constexpr Words users{"tú", "you"};
constexpr Words unknown{"desconocida", "desconocida"}; // A stored word, the same in both languages.
constexpr Words systems{"el sistema", "the system"};
constexpr Words leaveIt{"Déjalo como está.", "Leave it as it is."};
constexpr Words noAdvice{"Tarvo AI no aconseja borrar nada aquí.",
                         "Tarvo AI gives no advice to remove anything here."};
constexpr Words partOf{"Parte de «{}»", "Part of “{}”"};

/// Something that is kept.
Explanation kept(std::string whatItIs, const Words& owner, const Words& reason, const Words& howToFree,
                 Language language, Source source = Source::place) {
    return {.path = {},
            .whatItIs = std::move(whatItIs),
            .owner = owner.in(language),
            .safety = Safety::keep,
            .suggestedSafety = {},
            .reason = reason.in(language),
            .howToFree = howToFree.in(language),
            .note = {},
            .source = source,
            .createdAt = {}};
}

/// The text as a sentence of its own.
std::string sentence(std::string text) {
    return text.empty() || text.ends_with('.') ? text : text + ".";
}

/// How a cleanup frees what the rule finds, or how the user does.
struct Way {
    const Rule& rule;
    Language language;

    std::string operator()(const cleanup::Command& how) const {
        if (!CleanupPlanner::wordsOfCommand(how.line)) {
            return Words{"A mano, eligiendo qué: {}.", "By hand, choosing what: {}."}.in(language, how.line);
        }
        return rule.safety == Safety::safe ? Words{"Una limpieza con Tarvo AI lo libera: {}.",
                                                   "A cleanup with Tarvo AI frees it: {}."}
                                                 .in(language, how.line)
                                           : Words{"Si lo eliges, una limpieza con Tarvo AI lo libera: {}.",
                                                   "If you choose it, a cleanup with Tarvo AI frees it: {}."}
                                                 .in(language, how.line);
    }
    std::string operator()(const cleanup::Manual& how) const { return sentence(how.instruction); }
    std::string operator()(const cleanup::DeleteContents&) const {
        return rule.safety == Safety::safe ? Words{"Una limpieza con Tarvo AI vacía la carpeta.",
                                                   "A cleanup with Tarvo AI empties the folder."}
                                                 .in(language)
                                           : setAside();
    }
    std::string operator()(const cleanup::DeleteItems&) const {
        return rule.safety == Safety::safe
                   ? Words{"Una limpieza con Tarvo AI lo borra.", "A cleanup with Tarvo AI deletes it."}.in(
                         language)
                   : setAside();
    }

  private:
    [[nodiscard]] std::string setAside() const {
        return Words{
            "Si lo eliges, una limpieza con Tarvo AI lo aparta, y lo puedes recuperar durante 7 días.",
            "If you choose it, a cleanup with Tarvo AI sets it aside, and you can have it back for 7 "
            "days."}
            .in(language);
    }
};

std::string howToFree(const Rule& rule, Language language) {
    if (rule.safety == Safety::keep) {
        // What the row says for a Mac is about that system, and may free something.
        return Words{"Déjalo como está: Tarvo AI nunca lo toca.",
                     "Leave it as it is: Tarvo AI never touches it."}
            .in(language);
    }
    std::string text = std::visit(Way{rule, language}, rule.cleanup);
    if (rule.closeFirst && !std::holds_alternative<cleanup::Manual>(rule.cleanup)) {
        text = Words{"Cierra {} primero. {}", "Quit {} first. {}"}.in(
            language, AppStatus::wellKnownName(*rule.closeFirst, language), text);
    }
    return text;
}

/// A folder that has one meaning wherever it stands.
struct StandardRow {
    std::string_view place;
    Words whatItIs;
};

constexpr std::array<StandardRow, 9> mainRows{
    {{"~/Desktop", {"Tu escritorio", "Your desktop"}},
     {"~/Documents", {"Tus documentos", "Your documents"}},
     {"~/Downloads", {"Tus descargas", "Your downloads"}},
     {"~/Pictures", {"Tus imágenes", "Your pictures"}},
     {"~/Music", {"Tu música", "Your music"}},
     {"~/Movies", {"Tus vídeos", "Your videos"}},
     {"~/Videos", {"Tus vídeos", "Your videos"}},
     {"~/Templates", {"Tus plantillas de documentos", "Your templates for documents"}},
     {"~/Public", {"La carpeta que compartes con otros", "The folder that you share with others"}}}};

/// Folders of Linux that hold something of many programs each.
constexpr std::array<StandardRow, 8> sharedRows{
    {{"~/.cache", {"Las cachés de todos los programas", "The caches of all programs"}},
     {"~/.config", {"Los ajustes de todos los programas", "The settings of all programs"}},
     {"~/.local",
      {"Datos de todos los programas, y los que instalaste solo para ti",
       "Data of all programs, and those that you installed for yourself alone"}},
     {"~/.local/share", {"Los datos de todos los programas", "The data of all programs"}},
     {"~/.local/state",
      {"Registros e historiales de todos los programas", "Logs and histories of all programs"}},
     {"~/.var", {"Los datos de las apps de Flatpak", "The data of Flatpak apps"}},
     {"~/.var/app", {"Los datos de las apps de Flatpak", "The data of Flatpak apps"}},
     {"~/snap", {"Los datos de las apps de Snap", "The data of Snap apps"}}}};

/// Folders of Linux that are the same in every home, and what would be missed without them.
struct KeptRow {
    Words whatItIs;
    Words reason;
    std::array<std::string_view, 7> places;
};

constexpr std::array<KeptRow, 9> keptRows{
    {{{"Claves y accesos a servicios", "Keys and sign-ins for services"},
      {"Sin ellos tendrías que volver a darte acceso.", "Without them you would have to sign in again."},
      {"~/.aws", "~/.azure", "~/.kube", "~/.config/gcloud", "~/.config/gh", "~/.config/rclone",
       "~/.gem/credentials"}},
     {{"Programas instalados solo para ti", "Programs installed for you alone"},
      {"Borrarlos los desinstala.", "Deleting them uninstalls them."},
      {"~/.local/bin", "~/bin", "~/.cargo/bin", "~/go/bin", "~/.deno/bin", "~/.bun/bin", "~/.dotnet/tools"}},
     {{"Conda, con sus entornos y descargas", "Conda itself, with its environments and downloads"},
      {"Sin ello tus entornos dejan de funcionar.", "Without it your environments stop working."},
      {"~/miniconda3", "~/anaconda3", "~/miniforge3", "~/mambaforge"}},
     {{"Bibliotecas de programas instalados solo para ti", "Libraries of programs installed for you alone"},
      {"Sin ellas esos programas dejan de funcionar.", "Without them those programs stop working."},
      {"~/.local/lib", "~/.local/lib64", "~/.local/include", "~/.local/opt"}},
     {{"Tipos de letra que instalaste", "Fonts that you installed"},
      {"Sin ellos tus documentos se ven distintos.", "Without them your documents look different."},
      {"~/.fonts", "~/.local/share/fonts"}},
     {{"Iconos y temas del escritorio", "Icons and themes of the desktop"},
      {"El escritorio los usa.", "The desktop uses them."},
      {"~/.icons", "~/.themes", "~/.local/share/icons", "~/.local/share/themes"}},
     {{"Entradas del menú de aplicaciones", "Entries of the applications menu"},
      {"Sin ellas esas apps no aparecen en el menú.", "Without them those apps are missing from the menu."},
      {"~/.local/share/applications", "~/.local/share/desktop-directories"}},
     {{"Lo que arranca con tu sesión", "What starts with your session"},
      {"Sin ello dejaría de arrancar.", "Without it that would no longer start."},
      {"~/.config/autostart", "~/.config/systemd"}},
     {{"Ajustes del escritorio", "Settings of the desktop"},
      {"Sin ellos el escritorio vuelve a estar como al principio.",
       "Without them the desktop is as it was at first."},
      {"~/.config/dconf", "~/.config/gtk-3.0", "~/.config/gtk-4.0", "~/.dbus", "~/.gconf", "~/.gnome",
       "~/.kde"}}}};

std::optional<Explanation> ofKeptRow(const std::string& path, const HomePlaces& places, Language language) {
    for (const KeptRow& row : keptRows) {
        for (const std::string_view usual : row.places) {
            if (usual.empty() || !isInside(path, places.path(usual))) {
                continue;
            }
            const std::string whole = row.whatItIs.in(language);
            const bool isWhole = path == places.path(usual);
            return kept(isWhole ? whole : partOf.in(language, whole), users, row.reason, leaveIt, language);
        }
    }
    return std::nullopt;
}

/// What lies outside homes, on Linux.
struct OutsideRow {
    Words whatItIs;
    Words owner;
    std::array<std::string_view, 12> folders;
};

constexpr std::array<OutsideRow, 5> outsideRows{
    {{{"Otro disco u otro volumen", "Another disk or another volume"},
      unknown,
      {"/media", "/mnt", "/run/media"}},
     {{"Algo que el sistema enseña como archivos y no ocupa disco",
       "Something that the system shows as files and that takes no disk space"},
      systems,
      {"/proc", "/sys", "/dev", "/run"}},
     {{"Archivos temporales de todo el equipo", "Temporary files of the whole computer"},
      systems,
      {"/tmp", "/var/tmp"}},
     {{"La carpeta personal de otra persona, o algo en ella",
       "Another person's home folder, or something in it"},
      unknown,
      {"/home", "/root"}},
     {{"Parte del sistema y de los programas instalados para todos",
       "Part of the system and of the programs installed for everybody"},
      systems,
      {"/usr", "/etc", "/var", "/opt", "/bin", "/sbin", "/lib", "/lib64", "/boot", "/snap", "/srv"}}}};

} // namespace

Explanation ofRule(const Rule& rule, Extent extent, Source source, const std::optional<std::string>& appName,
                   Language language) {
    const std::string name = printable(rule.name);
    return {.path = {},
            .whatItIs = extent == Extent::whole ? name : partOf.in(language, name),
            .owner = rule.safety == Safety::keep ? users.in(language) : appName.value_or(name),
            .safety = rule.safety,
            .suggestedSafety = {},
            .reason = rule.explanation,
            .howToFree = howToFree(rule, language),
            .note = {},
            .source = source,
            .createdAt = {}};
}

Explanation ofFolderWith(const std::vector<const Rule*>& rules, const std::optional<std::string>& appName,
                         Language language) {
    constexpr std::size_t mostNamed = 3;
    std::vector<std::string> names;
    for (const Rule* rule : rules) {
        if (names.size() < mostNamed) {
            names.push_back(Words{"«{}»", "“{}”"}.in(language, printable(rule->name)));
        }
    }
    std::string listed = fmt::format("{}", fmt::join(names, ", "));
    if (rules.size() > mostNamed) {
        listed += Words{" y más", " and more"}.in(language);
    }
    const bool holdsKept =
        std::ranges::any_of(rules, [](const Rule* rule) { return rule->safety == Safety::keep; });
    Explanation explanation =
        kept(appName ? Words{"Datos de {}; dentro: {}", "{} data; in it: {}"}.in(language, *appName, listed)
                     : Words{"Una carpeta que contiene {}", "A folder that holds {}"}.in(language, listed),
             unknown,
             {"Cada parte tiene su propia explicación, y lo demás lo usa algún programa.",
              "Each part has its own explanation, and the rest is some program's."},
             leaveIt, language, Source::catalogue);
    explanation.owner = appName.value_or(unknown.in(language));
    if (!holdsKept) {
        explanation.safety = Safety::review;
        explanation.howToFree = Words{"Mira esas partes una a una; lo demás es del programa.",
                                      "Look at these parts one by one; the rest is the program's."}
                                    .in(language);
    }
    return explanation;
}

Explanation ofProject(const std::string& name, Extent extent, Language language) {
    const Words& what = extent == Extent::whole
                            ? Words{"Tu proyecto «{}»", "Your project “{}”"}
                            : Words{"Parte de tu proyecto «{}»", "Part of your project “{}”"};
    return kept(what.in(language, printable(name)), users, {"Ahí está tu trabajo.", "Your work is there."},
                {"Déjalo: de un proyecto, Tarvo AI enseña aparte lo que se regenera solo.",
                 "Leave it: what recreates itself in a project Tarvo AI lists apart."},
                language, Source::project);
}

Explanation ofArtifact(const std::string& artifact, const std::string& project, Extent extent,
                       Language language) {
    const std::string what = Words{"«{}» del proyecto «{}»", "“{}” of the project “{}”"}.in(
        language, printable(artifact), printable(project));
    const bool isDependency = artifact == "node_modules" || artifact == ".venv" || artifact == "venv";
    Explanation explanation = kept(
        extent == Extent::whole ? what : Words{"Parte de {}", "Part of {}"}.in(language, what), users, {},
        isDependency ? Words{"Una limpieza con Tarvo AI lo borra, salvo mientras trabajas en el proyecto.",
                             "A cleanup with Tarvo AI deletes it, but not while you work on the project."}
                     : Words{"Una limpieza con Tarvo AI lo borra.", "A cleanup with Tarvo AI deletes it."},
        language, Source::project);
    explanation.safety = Safety::safe;
    explanation.reason = capitalized(sentence(ProjectArtifacts::hint(artifact, language)));
    return explanation;
}

Explanation ofHome(Language language) {
    return kept(
        Words{"Tu carpeta personal, con todo lo tuyo", "Your home folder, with everything of yours"}.in(
            language),
        users, {"Todo lo que guardas está dentro.", "Everything that you keep is in it."},
        {"Mira sus partes una a una.", "Look at its parts one by one."}, language);
}

Explanation ofOwnFolder(Language language) {
    return kept(Words{"Carpeta propia de Tarvo AI", "Tarvo AI's own folder"}.in(language),
                {"Tarvo AI", "Tarvo AI"},
                {"Guarda lo apartado, el historial y los ajustes de Tarvo AI.",
                 "It holds what was set aside, and the history and settings of Tarvo AI."},
                {"Déjala: la usa Tarvo AI.", "Leave it: Tarvo AI uses it."}, language);
}

Explanation ofOutside(const std::string& path, const HomePlaces& places, Language language) {
    constexpr Words plain{"Algo fuera de tu carpeta personal", "Something outside your home folder"};
    constexpr Words reason{"Está fuera de tu carpeta personal.", "It lies outside your home folder."};
    constexpr Words howToFree{"Tarvo AI solo limpia tu carpeta personal.",
                              "Tarvo AI cleans only your home folder."};
    if (isInside(places.home(), path)) {
        return kept(Words{"Una carpeta en la que está la tuya", "A folder that yours lies in"}.in(language),
                    systems, reason, howToFree, language);
    }
    for (const OutsideRow& row : outsideRows) {
        const bool isThere = std::ranges::any_of(
            row.folders, [&](std::string_view folder) { return !folder.empty() && isInside(path, folder); });
        if (places.system() == System::linux && isThere) {
            return kept(row.whatItIs.in(language), row.owner, reason, howToFree, language);
        }
    }
    return kept(plain.in(language), unknown, reason, howToFree, language);
}

std::optional<Explanation> ofStandardFolder(const std::string& path, const HomePlaces& places,
                                            Language language) {
    for (const StandardRow& row : mainRows) {
        if (path == places.path(row.place)) {
            return kept(row.whatItIs.in(language), users,
                        {"Es una de tus carpetas principales.", "It is one of your main folders."},
                        {"Déjala: solo tú sabes qué te sobra de lo que hay dentro.",
                         "Leave it: only you know what in it you can do without."},
                        language);
        }
    }
    if (places.system() == System::macos) {
        return std::nullopt;
    }
    for (const StandardRow& row : sharedRows) {
        if (path == places.path(row.place)) {
            return kept(
                row.whatItIs.in(language), unknown,
                {"Cada programa tiene ahí su carpeta.", "Each program has its folder there."},
                {"Déjala, y mira sus partes una a una.", "Leave it, and look at its parts one by one."},
                language);
        }
    }
    return ofKeptRow(path, places, language);
}

Explanation ofLink(const std::string& target, Language language) {
    return kept(Words{"Un enlace a {}", "A link to {}"}.in(language, printable(target)), unknown,
                {"Borrar un enlace no libera espacio.", "Deleting a link frees no space."}, leaveIt,
                language);
}

Explanation ofFile(bool isUsers, Language language) {
    return isUsers ? kept(Words{"Un archivo tuyo", "A file of your own"}.in(language), users,
                          {"Solo tú sabes si lo necesitas.", "Only you know whether you need it."}, noAdvice,
                          language)
                   : kept(Words{"Un archivo de un programa", "A program's file"}.in(language), unknown,
                          {"Algún programa guarda ahí sus ajustes o sus datos.",
                           "Some program keeps its settings or data there."},
                          noAdvice, language);
}

Explanation ofCacheFile(Language language, System system) {
    Explanation explanation =
        kept(Words{"Un archivo de caché", "A cache file"}.in(language), unknown,
             SafetyPolicy::cachesReason.on(system),
             {"Se puede borrar con la app cerrada.", "It can be deleted with the app closed."}, language);
    explanation.safety = Safety::safe;
    return explanation;
}

Explanation ofOtherEntry(Language language) {
    return kept(
        Words{"Algo que no es archivo ni carpeta", "Something that is neither a file nor a folder"}.in(
            language),
        unknown, {"No ocupa espacio.", "It takes no space."}, leaveIt, language);
}

Explanation ofUsersFolder(Language language) {
    return kept(
        Words{"Una carpeta tuya", "A folder of your own"}.in(language), users,
        {"Solo tú sabes si necesitas lo que hay dentro.", "Only you know whether you need what is in it."},
        noAdvice, language);
}

Explanation ofSharedFolder(Language language) {
    return kept(
        Words{"Una carpeta en la que guardan cosas varias apps", "A folder in which several apps keep things"}
            .in(language),
        unknown, {"Cada app tiene ahí lo suyo.", "Each app has its own there."}, noAdvice, language);
}

Explanation ofPart(const std::string& whole, const std::optional<std::string>& appName, Language language) {
    Explanation explanation = kept(partOf.in(language, printable(whole)), unknown,
                                   {"Solo el programa que lo guarda sabe si lo necesita.",
                                    "Only the program that keeps it knows whether it needs it."},
                                   noAdvice, language);
    explanation.owner = appName.value_or(unknown.in(language));
    return explanation;
}

Explanation ofDividedCache(const std::string& whole, Extent extent, const std::optional<std::string>& appName,
                           Language language) {
    constexpr Words folder{"Cachés de un programa, y cosas que no vuelve a crear",
                           "A program's caches, and things that it does not create again"};
    Explanation explanation =
        kept(extent == Extent::whole ? folder.in(language) : partOf.in(language, printable(whole)), unknown,
             {"No todo lo que hay en esa carpeta de cachés se regenera.",
              "Not all that is in that caches folder recreates itself."},
             leaveIt, language);
    explanation.owner = appName.value_or(unknown.in(language));
    return explanation;
}

Explanation ofProgramsFolder(const std::string& program, const FolderEvidence& evidence, Language language,
                             System system) {
    const bool isCache = evidence.location == FolderLocation::caches;
    Explanation explanation = kept(
        (isCache ? Words{"Caché de {}", "{} cache"} : Words{"Datos de {}", "{} data"}).in(language, program),
        unknown,
        isCache ? SafetyPolicy::cachesReason.on(system)
                : Words{"Sus ajustes, y lo que descargó o guardó; puede haber cosas tuyas.",
                        "Its settings, and what it downloaded or stored; things of yours may be among "
                        "them."},
        {"Vaciar la carpeta con la app cerrada.", "Empty the folder with the app closed."}, language);
    explanation.owner = program;
    explanation.safety = isCache ? Safety::safe : Safety::review;
    if (!isCache) {
        explanation.howToFree = advice(FreeingAction::reviewContents, evidence, language);
    }
    return explanation;
}

} // namespace lumo::PlaceTexts
