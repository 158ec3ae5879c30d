#include "TarvoApp/Views/CommandLineWords.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace tarvo {

namespace {

constexpr auto words = std::to_array<std::pair<std::string_view, const char*>>(
    {{"Usage: %1", "Uso: %1"},
     {"[options]", "[opciones]"},
     {"Options:", "Opciones:"},
     {"Arguments:", "Argumentos:"},
     {"Displays help on commandline options.", "muestra esta ayuda"},
     {"Displays help including Qt specific options.", "muestra también las opciones de Qt"},
     {"Displays version information.", "muestra la versión"},
     {"Unknown option '%1'.", "No existe la opción «%1»."},
     {"Unknown options: %1.", "No existen las opciones: %1."},
     {"Missing value after '%1'.", "Falta un valor tras «%1»."},
     {"Unexpected value after '%1'.", "Sobra el valor tras «%1»."}});

} // namespace

QString CommandLineWords::translate(const char* context, const char* sourceText, const char*, int) const {
    if (context == std::string_view("QCommandLineParser")) {
        const auto found =
            std::ranges::find(words, sourceText, &std::pair<std::string_view, const char*>::first);
        if (found != words.end()) {
            return QString::fromUtf8(found->second);
        }
    }
    return {};
}

} // namespace tarvo
