#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Result.h"
#include "TarvoModel/Flows/PreferenceKeys.h"

#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace tarvo {

/// What is stored for one home folder. Values of the wrong kind count as not stored.
class Preferences final {
  public:
    /// Reads the store. A missing one is empty, and so is one that is damaged or cannot be read; `problem`
    /// tells.
    static Preferences load(const std::string& home);

    /// The stored value or else the standard one; an optional one is absent when there is neither.
    template <class Value>
    [[nodiscard]] Value value(const PreferenceKey<Value>& key) const {
        const std::optional<lumo::JsonValue> found = json(key);
        // Only what the key allows is found, so that it can always be read.
        if constexpr (lumo::IsOptional<Value>::value) {
            return found ? Value(lumo::decode<typename Value::value_type>(*found).value()) : std::nullopt;
        } else {
            return lumo::decode<Value>(found.value()).value();
        }
    }
    /// The same for a preference that a person named.
    [[nodiscard]] std::optional<lumo::JsonValue> json(const Preference& key) const;

    /// Why what is stored may not be what the user chose: the store is damaged or cannot be read, or the
    /// protected folders in it make no sense. Absent when all is well. Nothing may be cleaned while there is
    /// such a problem.
    [[nodiscard]] std::optional<std::string> problem() const;

    /// Writes the store at once with this value in it; an absent one goes back to none. A store that is
    /// damaged or could not be read is left alone, since all else in it would be lost; keys that this program
    /// does not know stay in it. A failure says in a sentence what to do.
    template <class Value>
    lumo::Result<void> set(const PreferenceKey<Value>& key, const std::type_identity_t<Value>& value) {
        return store(key, asJson<Value>(value));
    }
    /// The same for a preference that a person named; with none, the standard value holds again.
    lumo::Result<void> store(const Preference& key, std::optional<lumo::JsonValue> value);

    /// Takes a value, or with none goes back to the standard one, without writing the store. False, and
    /// nothing changes, when the value is none that the key allows.
    bool hold(const Preference& key, std::optional<lumo::JsonValue> value);

    friend bool operator==(const Preferences&, const Preferences&) = default;

    /// A key's value as it is stored; none for one that is absent.
    template <class Value>
    static std::optional<lumo::JsonValue> asJson(const Value& value) {
        if constexpr (lumo::IsOptional<Value>::value) {
            return value ? std::optional(lumo::encode(*value)) : std::nullopt;
        } else {
            return lumo::encode(value);
        }
    }

    /// Where the preferences of a home folder are kept.
    static std::string pathFor(const std::string& home);

  private:
    explicit Preferences(std::string home) : home_(std::move(home)) {}

    /// Why nothing can be written: what stands there now is not known.
    [[nodiscard]] std::optional<std::string> storeProblem() const;

    std::string home_;
    lumo::JsonValue::Object stored_;
    bool isDamaged_ = false;
    std::string readProblem_; ///< Why the store could not be read, when it is there and could not.
};

/// The value that a person's words mean for the key; a failure says in the interface language what is
/// expected. Folders are those that `pathMeant` reads, in that home.
lumo::Result<lumo::JsonValue>
preferenceFromWords(const Preference& key, const std::vector<std::string>& words, const std::string& home);

/// The value as a person reads and would type it.
std::string wordsOf(const lumo::JsonValue& value);

} // namespace tarvo
