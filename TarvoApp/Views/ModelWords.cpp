#include "TarvoApp/Views/ModelWords.h"

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/Holding.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/DiskMap.h"
#include "TarvoModel/Showing/ScanCycle.h"
#include "TarvoModel/Showing/Selection.h"

namespace tarvo {

QString ModelWords::firstLook() {
    return shown(tarvo::firstLook());
}

QString ModelWords::scanAgainHelp() {
    return shown(tarvo::scanAgainHelp());
}

QString ModelWords::selectSafeHelp() {
    return shown(tarvo::selectSafeHelp());
}

QString ModelWords::homeFolder() {
    return shown(DiskMap::homeTitle());
}

QString ModelWords::settingsHelp() {
    return shown(lumo::SystemWords{.macos = {"Ajustes (⌘,)", "Settings (⌘,)"},
                                   .linux = {"Ajustes (Ctrl+,)", "Settings (Ctrl+,)"}}
                     .on()
                     .in());
}

QString ModelWords::previewHelp() {
    return shown(lumo::SystemWords{.macos = {"Qué hay dentro, sin abrir otro programa (⌥↩)",
                                             "What's inside, without another program (⌥↩)"},
                                   .linux = {"Qué hay dentro, sin abrir otro programa (Alt+Intro)",
                                             "What's inside, without another program (Alt+Return)"}}
                     .on()
                     .in());
}

int ModelWords::retentionDays() {
    return lumo::Holding::retentionDays;
}

} // namespace tarvo
