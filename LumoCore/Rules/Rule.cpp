#include "LumoCore/Rules/Rule.h"

#include "LumoCore/Basics/Words.h"

#include <algorithm>

namespace lumo {

namespace {

struct Shown {
    Language language;

    std::string operator()(const locator::Path& where) const { return where.path; }
    std::string operator()(const locator::Children& where) const {
        std::string shown = where.of + "/";
        for (std::size_t index = 0; index < where.matching.size(); ++index) {
            shown += (index > 0 ? ", " : "") + where.matching[index];
        }
        return shown;
    }
    std::string operator()(const locator::OlderVersions& where) const {
        return within(where.of, "<versiones antiguas>", "<old versions>");
    }
    std::string operator()(const locator::NewestVersion& where) const {
        return within(where.of, "<versión en uso>", "<current version>");
    }
    std::string operator()(const locator::Installers& where) const {
        if (where.use == locator::InstallerUse::unused) {
            return where.in + "/*.dmg, *.pkg, *.zip, *.iso, *.xip";
        }
        return within(where.in, "<instaladores de apps ya instaladas y comprimidos ya descomprimidos>",
                      "<installers of installed apps and already extracted archives>");
    }

  private:
    [[nodiscard]] std::string within(const std::string& folder, std::string_view es,
                                     std::string_view en) const {
        return folder + "/" + Words{es, en}.in(language);
    }
};

} // namespace

std::string Rule::displayPath(Language language) const {
    return std::visit(Shown{language}, locator);
}

bool Rule::needsFolderPermission() const {
    constexpr std::array<std::string_view, 4> guarded{"~/Downloads", "~/Documents", "~/Desktop",
                                                      "~/Pictures"};
    return std::ranges::any_of(guarded,
                               [&](std::string_view folder) { return startOf(locator).starts_with(folder); });
}

} // namespace lumo
