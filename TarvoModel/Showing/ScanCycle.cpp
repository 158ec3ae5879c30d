#include "TarvoModel/Showing/ScanCycle.h"

#include "LumoCore/Basics/Path.h"
#include "LumoCore/Basics/Words.h"

#include <algorithm>

namespace tarvo {

using lumo::Language;

bool isRescanDue(const std::optional<lumo::Date>& lastScan, const Phase& phase, lumo::Date now) {
    if (!lastScan || !isIdle(phase)) {
        return false;
    }
    // A report from the future has an unknown age: the clock was set back.
    return now - *lastScan > rescanAge || *lastScan > now;
}

std::vector<Volume> otherVolumes(const std::vector<Volume>& mounted,
                                 std::span<const std::string_view> folders) {
    std::vector<Volume> others = mounted;
    std::erase_if(others, [&](const Volume& volume) {
        return std::ranges::none_of(folders, [&](std::string_view folder) {
            return volume.path != folder && lumo::isInside(volume.path, folder);
        });
    });
    std::ranges::sort(others, {}, &Volume::name);
    return others;
}

std::string unreadableVolumeText(const Volume& volume, Language language, lumo::System system) {
    return lumo::Words{"No he podido leer ", "I couldn't read "}.in(language) + volume.name +
           lumo::SystemWords{
               .macos = {". Si macOS pidió permiso para el disco, acéptalo y vuelve a probar.",
                         ". If macOS asked for permission for the drive, allow it and try again."},
               .linux = {". Comprueba que sigue conectado y que tu usuario puede leerlo.",
                         ". Check that it is still connected and that your user can read it."}}
               .on(system)
               .in(language);
}

std::string scanAgainHelp(Language language, lumo::System system) {
    return lumo::SystemWords{.macos = {"Volver a analizar (⌘R)", "Analyze again (⌘R)"},
                             .linux = {"Volver a analizar (Ctrl+R)", "Analyze again (Ctrl+R)"}}
        .on(system)
        .in(language);
}

} // namespace tarvo
