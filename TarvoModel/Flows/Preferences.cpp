#include "TarvoModel/Flows/Preferences.h"

#include "LumoAI/LocalModelPlace.h"
#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/StateFile.h"
#include "TarvoModel/Flows/GivenPath.h"

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

bool isOfKind(const Preference& key, const JsonValue& value) {
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
                   // By hand a person writes the short form.
                   return path != nullptr &&
                          (path->starts_with('/') || *path == "~" || path->starts_with("~/"));
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

std::string expectation(const Preference& key) {
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

std::string expectedOf(const Preference& key) {
    return Words{"{} espera {}", "{} expects {}"}.with(key.key, expectation(key));
}

std::optional<JsonValue> standardOf(const Preference& key) {
    if (key.kind == PreferenceKind::folders) {
        return JsonValue{JsonValue::Array()};
    }
    return std::visit(
        [](const auto& standard) -> std::optional<JsonValue> {
            using Standard = std::remove_cvref_t<decltype(standard)>;
            if constexpr (std::is_same_v<Standard, std::monostate>) {
                return std::nullopt;
            } else if constexpr (std::is_same_v<Standard, std::string_view>) {
                return JsonValue{std::string(standard)};
            } else {
                return JsonValue{standard};
            }
        },
        key.standard);
}

/// An empty word is nobody's folder, and stays empty for the check of the value to refuse.
JsonValue foldersFrom(const std::vector<std::string>& words, const std::string& home) {
    JsonValue::Array folders;
    for (const std::string& word : words) {
        folders.push_back({pathMeant(word, home)});
    }
    return {std::move(folders)};
}

/// The value in one word, absent when the word cannot be one of its kind.
std::optional<JsonValue> valueFrom(const Preference& key, const std::string& word) {
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

const Preference* preferenceNamed(std::string_view word) {
    const auto* found = std::ranges::find(allPreferences, word, &Preference::key);
    return found != allPreferences.end() ? *found : nullptr;
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

std::optional<JsonValue> Preferences::json(const Preference& key) const {
    const auto found = std::ranges::find(stored_, key.key, &JsonValue::Member::name);
    return found != stored_.end() && isOfKind(key, found->value) ? found->value : standardOf(key);
}

std::optional<std::string> Preferences::storeProblem() const {
    const std::string path = lumo::printable(pathFor(home_));
    if (!readProblem_.empty()) {
        return Words{"no he podido leer los ajustes en {}: {}", "the settings in {} could not be read: {}"}
            .with(path, readProblem_);
    }
    if (isDamaged_) {
        return Words{"los ajustes en {} están dañados: arregla el fichero o bórralo",
                     "the settings in {} are damaged: mend the file or delete it"}
            .with(path);
    }
    return std::nullopt;
}

std::optional<std::string> Preferences::problem() const {
    const Preference& folders = preference::protectedFolders;
    const auto stored = std::ranges::find(stored_, folders.key, &JsonValue::Member::name);
    if (stored != stored_.end() && !isOfKind(folders, stored->value)) {
        return Words{"las carpetas protegidas en {} no son una lista de rutas absolutas: corrígelas",
                     "the protected folders in {} are no list of absolute paths: correct them"}
            .with(lumo::printable(pathFor(home_)));
    }
    return storeProblem();
}

bool Preferences::hold(const Preference& key, std::optional<JsonValue> value) {
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

lumo::Result<void> Preferences::store(const Preference& key, std::optional<JsonValue> value) {
    if (const auto trouble = storeProblem()) {
        // What else is stored is not known now and would be lost.
        return lumo::failure(*trouble);
    }
    if (!hold(key, std::move(value))) {
        return lumo::failure(expectedOf(key));
    }
    const std::string path = pathFor(home_);
    const std::string bytes = lumo::dumpJson({stored_}, lumo::JsonLayout::indented) + "\n";
    platform::SystemResult<void> written = platform::makePrivateFolder(std::string(lumo::parentOf(path)));
    if (written) {
        written = platform::replaceWhole(path, bytes);
    }
    if (!written) {
        return lumo::failure(
            Words{"no he podido guardar el ajuste en {}: {}", "the setting could not be saved in {}: {}"}
                .with(lumo::printable(path), lumo::reasonText(written.error())));
    }
    return {};
}

lumo::Result<JsonValue> preferenceFromWords(const Preference& key, const std::vector<std::string>& words,
                                            const std::string& home) {
    std::optional<JsonValue> value;
    if (key.kind == PreferenceKind::folders && !words.empty()) {
        value = foldersFrom(words, home);
    } else if (key.kind == PreferenceKind::localModel) {
        value = JsonValue{fmt::format("{}", fmt::join(words, " "))};
    } else if (words.size() == 1) {
        value = valueFrom(key, words.front());
    }
    if (!value || !isOfKind(key, *value)) {
        return lumo::failure(expectedOf(key));
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
