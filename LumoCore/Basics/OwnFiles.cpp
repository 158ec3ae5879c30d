#include "LumoCore/Basics/OwnFiles.h"

#include "LumoCore/Basics/Path.h"

namespace lumo::OwnFiles {

std::string support(const std::string& home) {
    return home + "/Library/Application Support/TarvoAI";
}

std::string historyLog(const std::string& home) {
    return joined(support(home), "historial.jsonl");
}

std::string intents(const std::string& home) {
    return joined(support(home), "apartado.jsonl");
}

std::string archiving(const std::string& home) {
    return joined(support(home), "archivando.jsonl");
}

std::string lock(const std::string& home) {
    return joined(support(home), "cerrojo");
}

std::string snapshots(const std::string& home) {
    return joined(support(home), "instantaneas.json");
}

std::string holding(const std::string& home) {
    return joined(support(home), "Apartado");
}

std::string heldNotes(const std::string& home) {
    return joined(support(home), "apartado-notas.json");
}

std::string caches(const std::string& home) {
    return home + "/Library/Caches/TarvoAI";
}

std::string staging(const std::string& home) {
    return joined(caches(home), "vaciando");
}

std::string explanations(const std::string& home) {
    return joined(caches(home), "explicaciones.json");
}

std::string settings(const std::string& home) {
    return home + "/.config/TarvoAI";
}

std::string preferences(const std::string& home) {
    return joined(settings(home), "preferencias.json");
}

} // namespace lumo::OwnFiles
