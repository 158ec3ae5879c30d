#pragma once

#include "LumoCore/Basics/Codec.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumo {

/// What the holding area cannot show of itself: which of its items ended because somebody wanted it, so that
/// one that vanished can be told from them, which of these are back in their places, and which lost a part
/// to an emptying that failed. Kept on a best effort; a note that is missing costs a sentence, never an
/// item. Notes name a batch, or "batch/name".
class HeldNotes final {
  public:
    /// The notes of a home; none when there are none or they cannot be read.
    static HeldNotes of(const std::string& home);

    /// True when the item or its batch was put back, ended for good, or told as vanished. What is still held
    /// may have such a note, too: an ending that failed.
    [[nodiscard]] bool hasEnded(std::string_view inTrash) const;
    /// True when the item was put back.
    [[nodiscard]] bool wasPutBack(std::string_view inTrash) const;
    /// True when parts of the held item are gone.
    [[nodiscard]] bool isIncomplete(std::string_view inTrash) const;

    void end(std::string_view place);
    /// It ended by that.
    void putBack(std::string_view place);
    void markIncomplete(std::string_view place);

    /// Replaces the file if something was noted. Nothing is written over notes that could not be read.
    void write();

  private:
    struct Lists {
        std::vector<std::string> ended;
        std::vector<std::string> incomplete;
        std::optional<std::vector<std::string>> back; ///< Absent in older notes.

        static constexpr auto fields =
            std::tuple{field("ended", &Lists::ended), field("incomplete", &Lists::incomplete),
                       field("back", &Lists::back)};
    };

    std::string path_;
    Lists lists_;
    bool isReadable_ = true;
    bool hasChanged_ = false;
};

} // namespace lumo
