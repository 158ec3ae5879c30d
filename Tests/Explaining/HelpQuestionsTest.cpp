#include "LumoCore/Explaining/HelpCatalog.h"

#include <gtest/gtest.h>

#include <array>
#include <span>

using namespace lumo;

namespace {

/// What somebody asks, and the topic that answers it; none where the help has no answer.
struct Asked {
    const char* question;
    std::string_view topic;
};

constexpr std::string_view none;

// As people ask who are afraid for their files, who develop software, or who clicked something and wonder.
constexpr std::array<Asked, 60> english{{
    {"what is the purple stuff", "colores"},
    {"why are some squares striped", "colores"},
    {"I clicked an amber one, what is it", "colores"},
    {"it says needs a look, what should I do?", "colores"},
    {"why is my folder unclassified", "colores"},
    {"what does kept mean", "colores"},
    {"will my programs break if I delete the cache?", "regenera"},
    {"do caches come back by themselves", "regenera"},
    {"are temp files safe to delete", "regenera"},
    {"I cleaned 10 GB and it is still full", "libera"},
    {"what is the goal at the top", "libera"},
    {"I deleted something by mistake, how do I get it back", "apartado"},
    {"can I undo that", "apartado"},
    {"where did my files go after cleaning", "apartado"},
    {"how do I get rid of it for good", "vaciar"},
    {"what does Empty Now do", "vaciar"},
    {"do I need sudo for this", "permisos"},
    {"why can't it read some folders", "permisos"},
    {"does it upload anything to the internet?", "privacidad"},
    {"do you collect telemetry", "privacidad"},
    {"is this a virus", "segura"},
    {"what happens if the power goes out halfway", "segura"},
    {"I'm afraid of losing something important", "segura"},
    {"how can I show my friends what I freed", "compartir"},
    {"can I save the card as a picture", "compartir"},
    {"can the AI be wrong?", "ia"},
    {"how do I set up ollama", "ia"},
    {"why is there a padlock on this tile", "bloqueado"},
    {"I can't tick this row", "bloqueado"},
    {"it tells me to quit Firefox first", "bloqueado"},
    {"will it remove my docker containers", "docker"},
    {"does it delete node_modules", "proyectos"},
    {"will it touch my git repos", "proyectos"},
    {"what is an active project", "proyectos"},
    {"does it clean my Dropbox", "icloud"},
    {"how do I uninstall a program with it", "apps"},
    {"what about time machine", "purgable"},
    {"how do I see the entire disk", "disco-entero"},
    {"can it sit in the tray", "barra"},
    {"where do I turn on dark mode", "ajustes"},
    {"the letters are too small, can they be bigger", "ajustes"},
    {"how do I keep it away from one folder, protect it", "ajustes"},
    {"what does the magnifier do", "dentro"},
    {"can I hook it up to Claude", "agente"},
    {"will it delete my family photos", "fotos"},
    {"can I zip an old folder", "archivar"},
    {"does it look for duplicates", "duplicados"},
    {"can I check my usb stick", "otro-disco"},
    {"can I use it without a mouse", "atajos"},
    {"why does Nautilus show another size", "cifras"},
    {"warn me when it is almost full", "automatica"},
    {"why does the scan take so long", "lento"},
    // The help has none.
    {"what's the weather tomorrow", none},
    {"how do I partition a drive", none},
    {"can it defragment", none},
    {"how do I change my wifi key", none},
    {"which movie should we watch tonight", none},
    {"does it fix the Windows registry", none},
    {"how much space do I have left", none},
    {"how do I install a printer", none},
}};

constexpr std::array<Asked, 60> spanish{{
    {"¿qué es lo morado?", "colores"},
    {"¿por qué algunos recuadros tienen rayas?", "colores"},
    {"he pinchado uno ámbar y no sé qué es", "colores"},
    {"pone «míralo antes», ¿qué hago?", "colores"},
    {"¿por qué una carpeta sale sin clasificar?", "colores"},
    {"¿qué quiere decir «se conserva»?", "colores"},
    {"¿se me estropean los programas si borro la caché?", "regenera"},
    {"¿vuelven a aparecer las cachés?", "regenera"},
    {"¿puedo quitar los archivos temporales?", "regenera"},
    {"he limpiado y el disco sigue lleno", "libera"},
    {"¿para qué sirve el objetivo de arriba?", "libera"},
    {"he borrado algo por error, ¿cómo lo recupero?", "apartado"},
    {"¿se puede deshacer?", "apartado"},
    {"¿a dónde van mis archivos al limpiar?", "apartado"},
    {"quiero borrarlo definitivamente", "vaciar"},
    {"¿qué hace «Vaciar ahora»?", "vaciar"},
    {"¿tengo que ser administrador?", "permisos"},
    {"¿por qué no puede leer algunas carpetas?", "permisos"},
    {"¿sube algo a internet?", "privacidad"},
    {"¿me espía?", "privacidad"},
    {"¿esto es un virus?", "segura"},
    {"¿qué pasa si se va la luz a medias?", "segura"},
    {"me da miedo perder algo importante", "segura"},
    {"¿puedo publicar en X lo que he liberado?", "compartir"},
    {"¿cómo guardo la tarjeta como imagen?", "compartir"},
    {"¿la IA se puede equivocar?", "ia"},
    {"¿cómo pongo ollama?", "ia"},
    {"¿por qué sale un candado?", "bloqueado"},
    {"no me deja marcar esta fila", "bloqueado"},
    {"me dice que cierre antes Firefox", "bloqueado"},
    {"¿me va a quitar los contenedores de docker?", "docker"},
    {"¿borra node_modules?", "proyectos"},
    {"¿toca mis repositorios de git?", "proyectos"},
    {"¿qué es un proyecto activo?", "proyectos"},
    {"¿limpia mi Dropbox?", "icloud"},
    {"¿cómo desinstalo un programa?", "apps"},
    {"¿y las copias de Time Machine?", "purgable"},
    {"¿cómo veo todo el disco?", "disco-entero"},
    {"¿se puede quedar en la bandeja?", "barra"},
    {"¿dónde pongo el modo oscuro?", "ajustes"},
    {"la letra es muy pequeña, ¿puede ser más grande?", "ajustes"},
    {"quiero que una carpeta no la toque nunca", "ajustes"},
    {"¿qué hace la lupa?", "dentro"},
    {"¿la puedo conectar con Claude?", "agente"},
    {"¿va a borrar las fotos de mi familia?", "fotos"},
    {"quiero comprimir una carpeta vieja", "archivar"},
    {"¿busca archivos repetidos?", "duplicados"},
    {"¿puedo mirar un pendrive?", "otro-disco"},
    {"¿puedo usarla sin ratón?", "atajos"},
    {"¿por qué Nautilus dice otro tamaño?", "cifras"},
    {"que me avise cuando esté casi lleno", "automatica"},
    {"¿por qué tarda tanto en analizar?", "lento"},
    // The help has none.
    {"¿qué tiempo hará mañana?", none},
    {"¿cómo hago una partición?", none},
    {"¿desfragmenta?", none},
    {"¿cómo cambio la clave del wifi?", none},
    {"¿qué película vemos esta noche?", none},
    {"¿arregla el registro de Windows?", none},
    {"¿cuánto espacio me queda?", none},
    {"¿cómo instalo una impresora?", none},
}};

// What the windows show, alone: somebody saw it and asks what it is.
constexpr std::array<Asked, 43> englishWords{{
    {"violet", "colores"},
    {"striped", "colores"},
    {"gray", "colores"},
    {"Kept", "colores"},
    {"Unclassified", "colores"},
    {"Needs a look", "colores"},
    {"Recreates itself", "regenera"},
    {"recoverable", "regenera"},
    {"Select Safe", "regenera"},
    {"package caches", "regenera"},
    {"Goal", "libera"},
    {"Raise goal by 1 GB", "libera"},
    {"Disk used", "libera"},
    {"Undo", "apartado"},
    {"set aside", "apartado"},
    {"Empty Now…", "vaciar"},
    {"Delete Permanently", "vaciar"},
    {"padlock", "bloqueado"},
    {"shown only", "bloqueado"},
    {"can't be cleaned right now", "bloqueado"},
    {"Deselect All", "bloqueado"},
    {"Explain with AI", "ia"},
    {"approximate", "ia"},
    {"What it rests on", "ia"},
    {"Disk summary", "ia"},
    {"Local model", "ia"},
    {"Active project", "proyectos"},
    {"Show Whole Disk", "disco-entero"},
    {"Grew most since", "crecimiento"},
    {"History", "historial"},
    {"Similar photos", "fotos"},
    {"Start at login", "barra"},
    {"Never Touch This Folder", "ajustes"},
    {"Appearance", "ajustes"},
    {"tile", "dentro"},
    {"Preview", "dentro"},
    {"Look Into…", "dentro"},
    {"Archive…", "archivar"},
    {"Copy Path", "explorador"},
    {"Explore", "explorador"},
    {"Weekly cleanup", "automatica"},
    {"Low space", "automatica"},
    {"Analyze again", "lento"},
}};

constexpr std::array<Asked, 43> spanishWords{{
    {"violeta", "colores"},
    {"rayado", "colores"},
    {"gris", "colores"},
    {"Se conserva", "colores"},
    {"Sin clasificar", "colores"},
    {"Míralo antes", "colores"},
    {"Se regenera solo", "regenera"},
    {"recuperable", "regenera"},
    {"Marcar lo seguro", "regenera"},
    {"cachés de paquetes", "regenera"},
    {"Objetivo", "libera"},
    {"Subir objetivo 1 GB", "libera"},
    {"Disco ocupado", "libera"},
    {"Deshacer", "apartado"},
    {"apartado", "apartado"},
    {"Vaciar ahora…", "vaciar"},
    {"Borrar definitivamente", "vaciar"},
    {"candado", "bloqueado"},
    {"solo se enseña", "bloqueado"},
    {"no se puede limpiar ahora", "bloqueado"},
    {"Desmarcar todo", "bloqueado"},
    {"Explicar con IA", "ia"},
    {"aproximada", "ia"},
    {"En qué se basa", "ia"},
    {"Resumen del disco", "ia"},
    {"Modelo local", "ia"},
    {"Proyecto activo", "proyectos"},
    {"Ver disco entero", "disco-entero"},
    {"Lo que más ha crecido desde", "crecimiento"},
    {"Historial", "historial"},
    {"Fotos repetidas", "fotos"},
    {"Abrir al iniciar sesión", "barra"},
    {"No tocar nunca esta carpeta", "ajustes"},
    {"Aspecto", "ajustes"},
    {"recuadro", "dentro"},
    {"Vista previa", "dentro"},
    {"Mirar en…", "dentro"},
    {"Archivar…", "archivar"},
    {"Copiar ruta", "explorador"},
    {"Explorar", "explorador"},
    {"Limpieza semanal", "automatica"},
    {"Poco espacio", "automatica"},
    {"Volver a analizar", "lento"},
}};

/// How many of the questions reach what they should; tells those that do not.
int reached(std::span<const Asked> questions, Language language) {
    int count = 0;
    for (const auto& [question, topic] : questions) {
        const HelpTopic* found = HelpCatalog::topicAskedFor(question, language, System::linux);
        const bool isRight = (found != nullptr ? std::string_view(found->id) : none) == topic;
        count += isRight ? 1 : 0;
        if (!isRight) {
            std::printf("%s: %s, not %s\n", question, found != nullptr ? found->id.c_str() : "none",
                        topic.empty() ? "none" : topic.data());
        }
    }
    return count;
}

} // namespace

TEST(HelpQuestions, ReachTheirTopicOrNoneInTheWordsOfThoseWhoAsk) {
    // "what is amber" found nothing, and "what does the weather do" the topic of iCloud.
    constexpr int fewest = 57;
    EXPECT_GE(reached(english, Language::en), fewest);
    EXPECT_GE(reached(spanish, Language::es), fewest);
}

TEST(HelpQuestions, ReachATopicByEachWordThatTheWindowsShow) {
    // Whoever asked for a word of the window was told that the help does not know it.
    EXPECT_EQ(reached(englishWords, Language::en), std::ssize(englishWords));
    EXPECT_EQ(reached(spanishWords, Language::es), std::ssize(spanishWords));
}

TEST(HelpQuestions, InTheOtherLanguageTakeTwoWholeWords) {
    // Letters inside words of the other language gave an answer in it to questions that were none of its.
    const auto found = [](const char* question) {
        const HelpTopic* topic = HelpCatalog::topicAskedFor(question, Language::es, System::linux);
        return topic != nullptr ? topic->id : std::string();
    };
    EXPECT_EQ(found("what is the weekly cleanup warning"), "automatica");
    EXPECT_EQ(found("padlock"), "");
    EXPECT_EQ(found("Docker prune?"), "docker"); // In its own language first.
    EXPECT_EQ(HelpCatalog::topicAskedFor("Docker prune?", Language::es, System::linux)->question,
              HelpCatalog::topicNamed("docker", Language::es, System::linux)->question);
    EXPECT_EQ(found("the man in the red hat asks"), "");
}
