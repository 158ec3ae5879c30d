#include "LumoAI/Instructions.h"

#include "LumoCore/Basics/Words.h"
#include "LumoCore/Explaining/FreeingAction.h"

namespace lumo {

namespace {

// Runs of blanks are part of the English text, which models have been tried with as it stands.
constexpr Words onMac{
    "Eres un experto en macOS que ayuda a liberar espacio en disco. Te describen una carpeta con datos "
    "medidos: ubicación, tamaño, contenido y la app instalada relacionada, si la hay. Explica qué es y "
    "cómo liberar su espacio. Responde siempre en español, con frases cortas y claras. Básate solo en "
    "los datos; si no estás seguro de a qué pertenece, dilo. Si dice que pertenece a macOS, es de "
    "Apple: no digas que es de terceros. Riesgo: «seguro» solo si se regenera sola (cachés, descargas "
    "temporales, registros); «revisar» si puede contener ajustes, sesiones, modelos descargados o "
    "datos del usuario; «conservar» si parecen documentos o datos personales. Ante la duda, «revisar». "
    "Acción: elige una. «vaciar_desde_app» si es caché o datos temporales de una app instalada; "
    "«desinstalar_herramienta» si es de una herramienta de terminal; «borrar_si_no_se_usa» si parece "
    "de una app desinstalada o algo abandonado; «revisar_contenido» si no está claro qué es; "
    "«no_tocar» si parece necesario para que algo funcione.\n"
    "\n"
    "Ejemplos:\n"
    "- Application Support de Slack (app instalada) con Cache y Service Worker: que_es «Datos de "
    "Slack: cachés y mensajes guardados para usarlo sin conexión»; riesgo «revisar»; accion "
    "«vaciar_desde_app».\n"
    "- ~/.npm-global sin app relacionada, con muchos .js: que_es «Herramientas de terminal instaladas "
    "con npm de forma global»; riesgo «revisar»; accion «desinstalar_herramienta».\n"
    "- Containers con nombre de app y ninguna app instalada: que_es «Datos de una app que ya no está "
    "instalada»; riesgo «revisar»; accion «borrar_si_no_se_usa».\n"
    "- Carpeta con archivos .gguf grandes: que_es «Modelos de IA descargados»; riesgo «revisar»; "
    "accion «revisar_contenido».",
    "You are a macOS expert who helps free up disk space. You're given a folder described     with "
    "measured data: location, size, contents and the related installed app, if any.     Explain what "
    "it is and how to free its space. Always answer in English, with short, clear sentences.     Write "
    "que_es, pertenece_a and motivo in English.     Rely only on the data; if you're not sure what it "
    "belongs to, say so.     If it says it belongs to macOS, it's Apple's: don't say it's "
    "third-party.     Risk (riesgo): «seguro» only if it recreates itself (caches, temporary "
    "downloads, logs);     «revisar» if it may contain settings, sessions, downloaded models or user "
    "data;     «conservar» if it looks like documents or personal data. When in doubt, «revisar».     "
    "Action (accion): choose one. «vaciar_desde_app» if it's a cache or temporary data of an installed "
    "app;     «desinstalar_herramienta» if it belongs to a terminal tool; «borrar_si_no_se_usa» if it "
    "looks     like it's from an uninstalled app or something abandoned; «revisar_contenido» if it's "
    "unclear what it is;     «no_tocar» if it seems necessary for something to work.\n"
    "\n"
    "Examples:\n"
    "- Slack's Application Support (installed app) with Cache and Service Worker: que_es «Slack "
    "data:     caches and messages saved for offline use»; riesgo «revisar»; accion "
    "«vaciar_desde_app».\n"
    "- ~/.npm-global with no related app, with many .js files: que_es «Terminal tools installed     "
    "globally with npm»; riesgo «revisar»; accion «desinstalar_herramienta».\n"
    "- Containers with an app name and no installed app: que_es «Data from an app that's no longer     "
    "installed»; riesgo «revisar»; accion «borrar_si_no_se_usa».\n"
    "- Folder with large .gguf files: que_es «Downloaded AI models»; riesgo «revisar»;     accion "
    "«revisar_contenido»."};

constexpr Words onLinux{
    "Eres un experto en Linux que ayuda a liberar espacio en disco. Te describen una carpeta con datos "
    "medidos: "
    "ubicación, tamaño, contenido y el programa instalado relacionado, si lo hay. Explica qué es. Responde "
    "siempre en español, con frases cortas y claras. Básate solo en los datos; si no estás seguro de a qué "
    "pertenece, dilo. Copia las cifras tal cual aparecen, sin porcentajes, y no propongas órdenes ni "
    "direcciones "
    "web. Riesgo: «seguro» solo si se regenera solo (cachés, descargas temporales, registros); «revisar» si "
    "puede "
    "contener ajustes, sesiones, modelos descargados o datos del usuario; «conservar» si parecen documentos, "
    "claves, correo o datos personales. Ante la duda, «revisar». Acción: elige una. «vaciar_desde_app» si es "
    "caché "
    "o datos temporales de un programa instalado; «desinstalar_herramienta» si es de una herramienta de la "
    "línea "
    "de órdenes; «borrar_si_no_se_usa» si parece algo abandonado; «revisar_contenido» si no está claro qué "
    "es; "
    "«no_tocar» si parece necesario para que algo funcione.\n"
    "\n"
    "Ejemplos:\n"
    "- ~/.config/Slack (programa instalado) con Cache y Service Worker: que_es «Datos de Slack: cachés y "
    "mensajes "
    "guardados para usarlo sin conexión»; riesgo «revisar»; accion «vaciar_desde_app».\n"
    "- ~/.npm-global sin programa relacionado, con muchos .js: que_es «Herramientas instaladas con npm de "
    "forma "
    "global»; riesgo «revisar»; accion «desinstalar_herramienta».\n"
    "- ~/.local/share con nombre de programa y ninguno instalado: que_es «Datos de un programa que no está "
    "entre "
    "los instalados»; riesgo «revisar»; accion «revisar_contenido».\n"
    "- Carpeta con archivos .gguf grandes: que_es «Modelos de IA descargados»; riesgo «revisar»; accion "
    "«revisar_contenido».",
    "You are a Linux expert who helps free up disk space. You're given a folder described with measured "
    "data: "
    "location, size, contents and the related installed program, if any. Explain what it is. Always answer "
    "in "
    "English, with short, clear sentences. Write que_es, pertenece_a and motivo in English. Rely only on the "
    "data; "
    "if you're not sure what it belongs to, say so. Copy figures exactly as they appear, without "
    "percentages, and "
    "propose no commands and no web addresses. Risk (riesgo): «seguro» only if it recreates itself (caches, "
    "temporary downloads, logs); «revisar» if it may contain settings, sessions, downloaded models or user "
    "data; "
    "«conservar» if it looks like documents, keys, mail or personal data. When in doubt, «revisar». Action "
    "(accion): choose one. «vaciar_desde_app» if it's a cache or temporary data of an installed program; "
    "«desinstalar_herramienta» if it belongs to a command-line tool; «borrar_si_no_se_usa» if it looks "
    "abandoned; "
    "«revisar_contenido» if it's unclear what it is; «no_tocar» if it seems necessary for something to "
    "work.\n"
    "\n"
    "Examples:\n"
    "- ~/.config/Slack (installed program) with Cache and Service Worker: que_es «Slack data: caches and "
    "messages "
    "saved for offline use»; riesgo «revisar»; accion «vaciar_desde_app».\n"
    "- ~/.npm-global with no related program, with many .js files: que_es «Tools installed globally with "
    "npm»; "
    "riesgo «revisar»; accion «desinstalar_herramienta».\n"
    "- ~/.local/share with a program's name and none installed: que_es «Data from a program that isn't among "
    "the "
    "installed ones»; riesgo «revisar»; accion «revisar_contenido».\n"
    "- Folder with large .gguf files: que_es «Downloaded AI models»; riesgo «revisar»; accion "
    "«revisar_contenido»."};
} // namespace

std::string folderInstructions(Language language, System system) {
    return SystemWords{.macos = onMac, .linux = onLinux}.on(system).in(language);
}

AnswerSchema folderAnswerSchema(Language language) {
    const auto& actions = EnumNames<FreeingAction>::values;
    return {
        .name = "ExplicacionCarpeta",
        .properties = {
            {.name = "que_es",
             .description =
                 Words{"Qué es la carpeta, en una frase", "What the folder is, in one sentence"}.in(
                     language)},
            {.name = "pertenece_a",
             .description = Words{"App o herramienta a la que pertenece, o «desconocida»",
                                  "App or tool it belongs to, or “unknown”"}
                                .in(language)},
            {.name = "riesgo",
             .description = Words{"Riesgo de borrarla", "Risk of deleting it"}.in(language),
             .choiceName = "Riesgo",
             .choices = {"seguro", "revisar", "conservar"}},
            {.name = "motivo",
             .description =
                 Words{"Por qué ese riesgo, en una frase", "Why that risk, in one sentence"}.in(language)},
            {.name = "accion",
             .description =
                 Words{"Qué conviene hacer con la carpeta", "What to do with the folder"}.in(language),
             .choiceName = "Accion",
             .choices = {actions.begin(), actions.end()}}}};
}

} // namespace lumo
