#pragma once

#include "LumoCore/Basics/JsonValue.h"
#include "LumoCore/Basics/Language.h"
#include "LumoCore/Basics/Result.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

/// What may be stored under a key.
enum class PreferenceKind { integer, boolean, number, text, choice, folders, date, localModel };

/// One preference. Keys are stored words and the same in both languages.
struct PreferenceKey {
    std::string_view key;
    PreferenceKind kind;
    std::optional<lumo::JsonValue> standard = {}; ///< What holds while nothing is stored; none for "absent".
    std::vector<std::string_view> choices = {};   ///< Of a choice.
    double least = 0;                             ///< Of integers and numbers.
    double most = 9.0e15;
    std::string_view meaningEs = {};
    std::string_view meaningEn = {};
};

/// All preferences, in the order in which they are shown.
std::span<const PreferenceKey> preferenceKeys();

/// The preference with that key; none when there is no such key.
const PreferenceKey* preferenceKey(std::string_view key);

/// What is stored for one home folder. Values of the wrong kind count as not stored.
class Preferences final {
  public:
    /// Reads the store. A missing one is empty, and so is a damaged one, which the next change keeps aside.
    static Preferences load(const std::string& home);

    /// The stored value or else the standard one; absent when there is neither.
    [[nodiscard]] std::optional<lumo::JsonValue> value(const PreferenceKey& key) const;

    /// Why what is stored may not be what the user chose: the store is damaged or cannot be read, or the
    /// protected folders in it make no sense. Absent when all is well. Nothing may be cleaned while there is
    /// such a problem.
    [[nodiscard]] std::optional<std::string> problem() const;

    /// Stores a value, or with none goes back to the standard one, and writes the store at once. The store is
    /// not touched when it could not be read; keys that this program does not know stay in it.
    lumo::Result<void> store(const PreferenceKey& key, std::optional<lumo::JsonValue> value);

    /// Takes a value, or with none goes back to the standard one, without writing the store. False, and
    /// nothing changes, when the value is none that the key allows.
    bool hold(const PreferenceKey& key, std::optional<lumo::JsonValue> value);

    friend bool operator==(const Preferences&, const Preferences&) = default;

    /// Where the preferences of a home folder are kept.
    static std::string pathFor(const std::string& home);

  private:
    explicit Preferences(std::string home) : home_(std::move(home)) {}

    std::string home_;
    lumo::JsonValue::Object stored_;
    bool isDamaged_ = false;
    std::string readProblem_; ///< Why the store could not be read, when it is there and could not.
};

/// The value that a person's words mean for the key; a failure says in the interface language what is
/// expected. Folders are made absolute.
lumo::Result<lumo::JsonValue> preferenceFromWords(const PreferenceKey& key,
                                                  const std::vector<std::string>& words);

/// The value as a person reads and would type it.
std::string wordsOf(const lumo::JsonValue& value);

} // namespace tarvo
