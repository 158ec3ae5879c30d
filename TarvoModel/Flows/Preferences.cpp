#include "TarvoModel/Flows/Preferences.h"

#include "LumoAI/LocalModelPlace.h"
#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "Platform/Folder.h"
#include "Platform/StateFile.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarvo {

using lumo::JsonValue;
using lumo::Words;
namespace platform = lumo::platform;

namespace {

bool isOfKind(const PreferenceKey& key, const JsonValue& value) {
    const auto isInRange = [&](double number) { return number >= key.least && number <= key.most; };
    switch (key.kind) {
    case PreferenceKind::integer: {
        const auto* whole = std::get_if<std::int64_t>(&value.value);
        return whole != nullptr && isInRange(static_cast<double>(*whole));
    }
    case PreferenceKind::number: {
        const auto* number = std::get_if<double>(&value.value);
        const auto* whole = std::get_if<std::int64_t>(&value.value);
        return (number != nullptr && isInRange(*number)) ||
               (whole != nullptr && isInRange(static_cast<double>(*whole)));
    }
    case PreferenceKind::boolean:
        return std::holds_alternative<bool>(value.value);
    case PreferenceKind::text:
        return std::holds_alternative<std::string>(value.value);
    case PreferenceKind::choice: {
        const auto* chosen = std::get_if<std::string>(&value.value);
        return chosen != nullptr && std::ranges::find(key.choices, *chosen) != key.choices.end();
    }
    case PreferenceKind::folders: {
        const auto* list = std::get_if<JsonValue::Array>(&value.value);
        return list != nullptr && std::ranges::all_of(*list, [](const JsonValue& folder) {
                   const auto* path = std::get_if<std::string>(&folder.value);
                   return path != nullptr && path->starts_with('/');
               });
    }
    case PreferenceKind::date: {
        const auto* date = std::get_if<std::string>(&value.value);
        return date != nullptr && lumo::dateFromIsoText(*date);
    }
    case PreferenceKind::localModel: {
        const auto* place = std::get_if<std::string>(&value.value);
        return place != nullptr && lumo::LocalModelPlace::parse(*place);
    }
    }
    return false;
}

template <class Number>
std::optional<Number> numberFrom(std::string_view word) {
    Number number = {};
    const std::string whole(word);
    const char* end = whole.c_str() + whole.size();
    const auto [stop, problem] = std::from_chars(whole.c_str(), end, number);
    return problem == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::optional<bool> flagFrom(std::string_view word) {
    const std::string plain = lumo::folded(word);
    for (const char* yes : {"true", "yes", "si", "1", "on", "y", "s"}) {
        if (plain == yes) {
            return true;
        }
    }
    for (const char* no : {"false", "no", "0", "off", "n"}) {
        if (plain == no) {
            return false;
        }
    }
    return std::nullopt;
}

std::string expectation(const PreferenceKey& key) {
    switch (key.kind) {
    case PreferenceKind::integer:
        return Words{"un número entero de {:.0f} a {:.0f}", "a whole number from {:.0f} to {:.0f}"}.with(
            key.least, key.most);
    case PreferenceKind::number:
        return Words{"un número de {} a {}", "a number from {} to {}"}.with(key.least, key.most);
    case PreferenceKind::boolean:
        return Words{"«true» o «false»", "“true” or “false”"}.in();
    case PreferenceKind::choice:
        return fmt::format("{} {}", Words{"una de:", "one of:"}.in(), fmt::join(key.choices, ", "));
    case PreferenceKind::date:
        return Words{"una fecha como 2025-03-14T09:30:05Z", "a date like 2025-03-14T09:30:05Z"}.in();
    case PreferenceKind::folders:
        return Words{"carpetas", "folders"}.in();
    case PreferenceKind::localModel:
        return Words{"una dirección de este ordenador y un modelo, como «http://127.0.0.1:11434 llama3.2»",
                     "an address of this computer and a model, like “http://127.0.0.1:11434 llama3.2”"}
            .in();
    case PreferenceKind::text:
        break;
    }
    return Words{"un texto", "a text"}.in();
}

/// An empty word is nobody's folder, and stays empty for the check of the value to refuse.
JsonValue foldersFrom(const std::vector<std::string>& words) {
    JsonValue::Array folders;
    for (const std::string& word : words) {
        if (word.empty()) {
            folders.push_back({word});
            continue;
        }
        folders.push_back({platform::absolutePath(word).value_or(word)});
    }
    return {std::move(folders)};
}

/// The value in one word, absent when the word cannot be one of its kind.
std::optional<JsonValue> valueFrom(const PreferenceKey& key, const std::string& word) {
    const auto wrapped = [](auto parsed) {
        return parsed ? std::optional(JsonValue{*parsed}) : std::nullopt;
    };
    switch (key.kind) {
    case PreferenceKind::integer:
        return wrapped(numberFrom<std::int64_t>(word));
    case PreferenceKind::number:
        return wrapped(numberFrom<double>(word));
    case PreferenceKind::boolean:
        return wrapped(flagFrom(word));
    default:
        return JsonValue{word};
    }
}

} // namespace

std::span<const PreferenceKey> preferenceKeys() {
    using Kind = PreferenceKind;
    static const auto keys = std::to_array<PreferenceKey>({
        {.key = "objetivoBytes",
         .kind = Kind::integer,
         .standard = JsonValue{std::int64_t{24000000000}},
         .meaningEs = "bytes que quieres liberar",
         .meaningEn = "bytes you want to free"},
        {.key = "bienvenidaVista",
         .kind = Kind::boolean,
         .standard = JsonValue{false},
         .meaningEs = "la bienvenida ya se ha visto",
         .meaningEn = "the welcome has been seen"},
        {.key = "verDiscoEntero",
         .kind = Kind::boolean,
         .standard = JsonValue{false},
         .meaningEs = "el mapa muestra el disco entero",
         .meaningEn = "the map shows the whole disk"},
        {.key = "apariencia",
         .kind = Kind::choice,
         .standard = JsonValue{std::string("system")},
         .choices = {"system", "light", "dark"},
         .meaningEs = "aspecto claro, oscuro o el del sistema",
         .meaningEn = "light, dark or the system's appearance"},
        {.key = "barraDeMenus",
         .kind = Kind::boolean,
         .standard = JsonValue{true},
         .meaningEs = "icono en la barra de menús",
         .meaningEn = "icon in the menu bar"},
        {.key = "avisoGB",
         .kind = Kind::integer,
         .standard = JsonValue{std::int64_t{10}},
         .most = 1000000,
         .meaningEs = "GB libres por debajo de los que avisar",
         .meaningEn = "free GB below which to warn"},
        {.key = "avisoNotificacion",
         .kind = Kind::boolean,
         .standard = JsonValue{true},
         .meaningEs = "avisar con una notificación",
         .meaningEn = "warn with a notification"},
        {.key = "limpiezaSemanal",
         .kind = Kind::boolean,
         .standard = JsonValue{false},
         .meaningEs = "limpiar cada semana lo que se recrea solo",
         .meaningEn = "clean weekly what recreates itself"},
        {.key = "diasProyectoActivo",
         .kind = Kind::integer,
         .standard = JsonValue{std::int64_t{30}},
         .most = 36500,
         .meaningEs = "días que un proyecto sigue activo tras un cambio",
         .meaningEn = "days a project stays active after a change"},
        {.key = "carpetasProtegidas",
         .kind = Kind::folders,
         .standard = JsonValue{JsonValue::Array()},
         .meaningEs = "carpetas que nunca se tocan",
         .meaningEn = "folders that are never touched"},
        {.key = "resumenConIA",
         .kind = Kind::boolean,
         .standard = JsonValue{true},
         .meaningEs = "escribir el resumen con IA",
         .meaningEn = "write the summary with AI"},
        {.key = "explicarAlAnalizar",
         .kind = Kind::boolean,
         .standard = JsonValue{false},
         .meaningEs = "explicar las carpetas tras cada análisis",
         .meaningEn = "explain folders after each scan"},
        {.key = "tamanoTexto",
         .kind = Kind::number,
         .standard = JsonValue{1.0},
         .least = 0.5,
         .most = 3,
         .meaningEs = "tamaño del texto",
         .meaningEn = "text size"},
        {.key = "novedadesVistas",
         .kind = Kind::text,
         .meaningEs = "última versión cuyas novedades se vieron",
         .meaningEn = "last version whose news were seen"},
        {.key = "ultimaLimpiezaSemanal",
         .kind = Kind::date,
         .meaningEs = "fecha de la última limpieza semanal",
         .meaningEn = "date of the last weekly cleanup"},
        {.key = "ultimaLimpiezaSemanalBytes",
         .kind = Kind::integer,
         .meaningEs = "bytes que liberó",
         .meaningEn = "bytes it freed"},
        {.key = "avisoPocoEspacioEnviado",
         .kind = Kind::date,
         .meaningEs = "fecha del último aviso de poco espacio",
         .meaningEn = "date of the last low-space warning"},
        {.key = "modeloLocal",
         .kind = Kind::localModel,
         .meaningEs = "modelo de lenguaje en este ordenador: dirección y nombre",
         .meaningEn = "language model on this computer: address and name"},
    });
    return keys;
}

const PreferenceKey* preferenceKey(std::string_view key) {
    const auto found = std::ranges::find(preferenceKeys(), key, &PreferenceKey::key);
    return found != preferenceKeys().end() ? &*found : nullptr;
}

std::string Preferences::pathFor(const std::string& home) {
    return lumo::OwnFiles::preferences(home);
}

Preferences Preferences::load(const std::string& home) {
    Preferences preferences(home);
    const auto bytes = platform::readWhole(pathFor(home), lumo::mostJsonBytes);
    if (!bytes) {
        if (!bytes.error().isMissing()) {
            preferences.readProblem_ = lumo::reasonText(bytes.error());
        }
        return preferences;
    }
    auto document = lumo::parseJson(*bytes);
    auto* object = document ? std::get_if<JsonValue::Object>(&document->value) : nullptr;
    if (object == nullptr) {
        preferences.isDamaged_ = true;
    } else {
        preferences.stored_ = std::move(*object);
    }
    return preferences;
}

std::optional<JsonValue> Preferences::value(const PreferenceKey& key) const {
    const auto found = std::ranges::find(stored_, key.key, &JsonValue::Member::name);
    return found != stored_.end() && isOfKind(key, found->value) ? found->value : key.standard;
}

std::optional<std::string> Preferences::problem() const {
    const std::string path = lumo::printable(pathFor(home_));
    const auto say = [&](const Words& words) { return words.with(path); };
    if (!readProblem_.empty()) {
        return say({"no he podido leer los ajustes en {}: ", "the settings in {} could not be read: "}) +
               readProblem_;
    }
    if (isDamaged_) {
        return say({"los ajustes en {} están dañados: arregla el fichero o bórralo",
                    "the settings in {} are damaged: mend the file or delete it"});
    }
    const PreferenceKey& folders = *preferenceKey("carpetasProtegidas");
    const auto stored = std::ranges::find(stored_, folders.key, &JsonValue::Member::name);
    if (stored != stored_.end() && !isOfKind(folders, stored->value)) {
        return say({"las carpetas protegidas en {} no son una lista de rutas absolutas: corrígelas",
                    "the protected folders in {} are no list of absolute paths: correct them"});
    }
    return std::nullopt;
}

bool Preferences::hold(const PreferenceKey& key, std::optional<JsonValue> value) {
    if (value && !isOfKind(key, *value)) {
        return false;
    }
    const auto found = std::ranges::find(stored_, key.key, &JsonValue::Member::name);
    if (!value && found != stored_.end()) {
        stored_.erase(found);
    } else if (value && found != stored_.end()) {
        found->value = std::move(*value);
    } else if (value) {
        stored_.push_back({std::string(key.key), std::move(*value)});
    }
    return true;
}

lumo::Result<void> Preferences::store(const PreferenceKey& key, std::optional<JsonValue> value) {
    const std::string path = pathFor(home_);
    const auto problem = [&](const std::string& reason) {
        return lumo::failure(lumo::printable(path) + ": " + reason);
    };
    if (!readProblem_.empty()) {
        return problem(readProblem_);
    }
    if (value && !isOfKind(key, *value)) {
        return lumo::failure(fmt::format("{}: {}", key.key, expectation(key)));
    }
    if (isDamaged_) {
        // Without the colons, which some file systems refuse in names.
        std::string stamp = lumo::isoText(platform::now());
        std::erase(stamp, ':');
        const std::string aside = fmt::format("{}.{}", path, stamp);
        if (const auto moved = platform::renameAside(path, aside); !moved) {
            return problem(lumo::reasonText(moved.error()));
        }
        isDamaged_ = false;
    }
    hold(key, std::move(value));
    if (const auto made = platform::makePrivateFolder(std::string(lumo::parentOf(path))); !made) {
        return problem(lumo::reasonText(made.error()));
    }
    const std::string bytes = lumo::dumpJson({stored_}, lumo::JsonLayout::indented) + "\n";
    if (const auto written = platform::replaceWhole(path, bytes); !written) {
        return problem(lumo::reasonText(written.error()));
    }
    return {};
}

lumo::Result<JsonValue> preferenceFromWords(const PreferenceKey& key, const std::vector<std::string>& words) {
    std::optional<JsonValue> value;
    if (key.kind == PreferenceKind::folders && !words.empty()) {
        value = foldersFrom(words);
    } else if (key.kind == PreferenceKind::localModel) {
        value = JsonValue{fmt::format("{}", fmt::join(words, " "))};
    } else if (words.size() == 1) {
        value = valueFrom(key, words.front());
    }
    if (!value || !isOfKind(key, *value)) {
        return lumo::failure(Words{"{} espera {}", "{} expects {}"}.with(key.key, expectation(key)));
    }
    return *value;
}

std::string wordsOf(const JsonValue& value) {
    if (const auto* words = std::get_if<std::string>(&value.value)) {
        return lumo::printable(*words);
    }
    if (const auto* list = std::get_if<JsonValue::Array>(&value.value)) {
        std::vector<std::string> each;
        std::ranges::transform(*list, std::back_inserter(each), wordsOf);
        return fmt::format("{}", fmt::join(each, ", "));
    }
    return lumo::dumpJson(value, lumo::JsonLayout::line);
}

} // namespace tarvo
