#include "LumoCore/Explaining/HelpTopicRow.h"

#include <array>

namespace lumo::HelpCatalog {

// Everything around it: what else there is, and what it needs.
std::span<const Row> usingRows() {
    static constexpr auto rows = std::to_array<Row>(
        {{.id = "barra",
          .question = {"¿Para qué sirve el icono de la barra de menús?", "What is the menu bar icon for?"},
          .answer = {"Para ver el espacio libre sin abrir la ventana. Al pulsarlo ves también cuánto puedes "
                     "recuperar sin riesgo y qué ha crecido, y desde ahí puedes volver a analizar o abrir "
                     "Tarvo AI. Mientras está puesto, cerrar la ventana no la apaga: sigue pendiente para "
                     "avisarte si queda poco sitio. Se pone y se quita en los Ajustes. En Linux sale en la "
                     "bandeja del sistema, si tu escritorio tiene una.",
                     "To see the free space without opening the window. Press it and you also see how much "
                     "you can recover with no risk and what has grown, and from there you can analyze again "
                     "or open Tarvo AI. While it is there, closing the window doesn't quit: it keeps an eye "
                     "on the disk to warn you when room runs low. You switch it on and off in the Settings. "
                     "On Linux it appears in the system tray, if your desktop has one."},
          .keywords =
              {"barra de menus, barra, icono, menu, bandeja, arriba, cerrar la ventana, segundo plano",
               "menu bar, icon, menu, tray, top, close the window, background"}},
         {.id = "ajustes",
          .question = {"¿Dónde están los Ajustes?", "Where are the Settings?"},
          .answer =
              {"En la rueda dentada de la ventana principal. Ahí eliges, entre otras cosas, el aspecto "
               "claro u oscuro, el tamaño del texto, las carpetas que nunca se tocan, cuándo avisar de "
               "poco espacio, la limpieza semanal y la IA; cada cambio vale desde que lo haces.[ Sin "
               "ventanas, «tarvo ajustes» los enseña todos y «tarvo ajustes set» cambia uno.] El idioma "
               "no está ahí: es el de tu sistema.",
               "Behind the gear in the main window. There you choose, among other things, the light or "
               "dark look, the text size, the folders that are never touched, when to warn about low "
               "space, the weekly cleanup and the AI; every change counts as soon as you make it.[ "
               "Without windows, “tarvo settings” shows them all and “tarvo settings set” changes one.] "
               "The language isn't among them: it is your system's."},
          .keywords = {"ajustes, configuracion, configurar, preferencias, opciones, cambiar, cambio, modo "
                       "oscuro, idioma, letra mas grande, proteger una carpeta, que no toque",
                       "settings, configuration, configure, preferences, options, change, dark mode, "
                       "language, make text bigger, font size, protect a folder"}},
         {.id = "dentro",
          .question = {"¿Puedo ver qué hay dentro de un bloque?", "Can I see what's inside a block?"},
          .answer = {"Sí. La lupa de un bloque abre la carpeta y reparte el mapa entre lo que tiene dentro, "
                     "con lo más grande primero. Puedes seguir entrando, y Esc o la ruta de arriba te "
                     "devuelven. Mirar no cambia nada: lo de dentro no se marca por separado ni se borra.[ "
                     "Sin ventanas, «tarvo carpeta» seguido de una ruta dice lo mismo en una lista.]",
                     "Yes. The magnifier on a block opens the folder and divides the map among what it "
                     "holds, largest first. You can go on deeper, and Esc or the path at the top takes you "
                     "back. Looking changes nothing: what is inside isn't selected on its own or deleted.[ "
                     "Without windows, “tarvo folder” followed by a path tells you the same in a list.]"},
          .keywords =
              {"dentro, bloque, lupa, contenido de una carpeta, que contiene, entrar, abrir, zoom, ampliar",
               "inside, block, magnifier, contents, contains, enter, open, zoom, look into"}},
         {.id = "agente",
          .question = {"¿Puedo usarla desde Claude Code, Codex u otro agente de IA?",
                       "Can I use it from Claude Code, Codex or another AI agent?"},
          .answer = {"Sí. En los Ajustes, en la parte de IA, se conecta con Claude Code y con la app de "
                     "Claude; para Codex y otros agentes te da el texto que tienes que copiar. El agente "
                     "puede analizar el disco, mirar qué hay en cada carpeta y proponer una limpieza, pero "
                     "antes de limpiar te pregunta siempre a ti, y lo tuyo se aparta 7 días. Ten presente "
                     "que el agente ve los nombres y tamaños que consulta.[ Sin ventanas: «tarvo agentes».]",
                     "Yes. In the Settings, in the AI part, you connect it to Claude Code and to the Claude "
                     "app; for Codex and other agents it gives you the text to copy. The agent can analyze "
                     "the disk, look at what is in each folder and propose a cleanup, but before cleaning it "
                     "always asks you, and your own files are set aside for 7 days. Bear in mind that the "
                     "agent sees the names and sizes it asks for.[ Without windows: “tarvo agents”.]"},
          .keywords =
              {"agente, agentes, claude, claude code, claude desktop, codex, mcp, conectar, cursor, "
               "asistente",
               "agent, agents, claude, claude code, claude desktop, codex, mcp, connect, cursor, assistant"}},
         {.id = "fotos",
          .question = {"¿Puede ayudarme con Fotos?", "Can it help me with Photos?"},
          .answer = {"Poco, y a propósito. La fototeca sale en gris porque son tus recuerdos: te dice cuánto "
                     "ocupa, pero no la toca ni busca fotos repetidas. Para que ocupe menos en un Mac, en "
                     "los ajustes de la app Fotos, en iCloud, elige optimizar el almacenamiento: los "
                     "originales quedan en iCloud y en el disco versiones pequeñas. Lo que sí enseña, en "
                     "ámbar, son las capturas y grabaciones de pantalla que quedaron en el Escritorio. En "
                     "Linux, tus fotos son archivos tuyos y no las toca.",
                     "A little, and on purpose no more. The photo library is gray because those are your "
                     "memories: it tells you how big it is, but doesn't touch it or look for repeated "
                     "photos. To make it smaller on a Mac, choose to optimize storage in the settings of the "
                     "Photos app, under iCloud: the originals stay in iCloud, with small versions on the "
                     "disk. What it does show, in amber, are the screenshots and screen recordings left on "
                     "the Desktop. On Linux, photos are files of yours and it leaves them alone."},
          .keywords = {"fotos, foto, fototeca, videos, camara, capturas de pantalla, recuerdos, imagenes, "
                       "perder mis fotos, borra mis fotos",
                       "photos, photo, photo library, pictures, videos, camera, screenshots, memories, "
                       "delete my photos, lose photos"}},
         {.id = "archivar",
          .question = {"¿Qué es «Para archivar»?", "What is “To Archive”?"},
          .answer = {"Es para carpetas tuyas que casi no abres. Archivar crea un .zip al lado, comprueba que "
                     "dentro está todo y solo entonces aparta el original, que puedes recuperar durante 7 "
                     "días. Antes te dice cuánto ahorrarías: las fotos y los vídeos, por ejemplo, apenas "
                     "encogen. No deja archivar lo que se rompería, como apps, bibliotecas, carpetas ocultas "
                     "o lo que hay en Library, ni carpetas principales como Documentos. Se hace con clic "
                     "derecho en la lista[, o con «tarvo archivar» y la ruta].",
                     "It is for folders of yours that you hardly open. Archiving makes a .zip beside the "
                     "folder, checks that everything is in it and only then sets the original aside, and you "
                     "can get it back for 7 days. First it tells you how much you would save: photos and "
                     "videos, for example, hardly shrink. It refuses what would break, such as apps, "
                     "libraries, hidden folders or what is in Library, and main folders such as Documents. "
                     "Right-click in the list[, or use “tarvo archive” and the path]."},
          .keywords =
              {"archivar, para archivar, comprimir, comprime, comprimido, guardar en un zip, encoger, "
               "ahorrar, una carpeta vieja",
               "archive, archiving, to archive, compress, compressed, zip, shrink, save room, old folder"}},
         {.id = "duplicados",
          .question = {"¿Encuentra archivos duplicados?", "Does it find duplicate files?"},
          .answer =
              {"No, por ahora no busca archivos repetidos. Lo que sí hace es no contarlos dos veces cuando "
               "son un mismo archivo con varios nombres, para que las cifras sean las de verdad. Si crees "
               "que guardas copias de más, mira con la lupa las carpetas más grandes del mapa[, o prueba "
               "«tarvo carpeta» con tu carpeta de Descargas, que es donde suelen acumularse].",
               "No, for now it doesn't look for repeated files. What it does is not count them twice when "
               "they are one file under several names, so that the figures are true. If you think you keep "
               "too many copies, look into the largest folders of the map with the magnifier[, or try “tarvo "
               "folder” with your Downloads folder, where they tend to pile up]."},
          .keywords = {"duplicado, duplicados, repetido, repetidos, copias, copia, iguales, dos veces",
                       "duplicate, duplicates, repeated, copies, copy, identical, same file, twice"}},
         {.id = "explorador",
          .question = {"¿Tiene un explorador de archivos como el de Windows?",
                       "Does it have a file explorer like Windows?"},
          .answer =
              {"No tiene una ventana aparte para recorrer archivos, pero el mapa hace algo parecido: la lupa "
               "abre cada carpeta y enseña primero lo que más ocupa. Con clic derecho ves el elemento en el "
               "Finder, o en el gestor de archivos de tu escritorio si usas Linux, y ahí puedes moverlo o "
               "borrarlo tú.[ Sin ventanas, «tarvo carpeta» y una ruta te dan lo mismo en texto.]",
               "It has no separate window to walk through files, but the map does something similar: the "
               "magnifier opens each folder and shows what takes the most first. A right-click shows the "
               "item in the Finder, or in your desktop's file manager on Linux, and there you can move or "
               "delete it yourself.[ Without windows, “tarvo folder” and a path give you the same as text.]"},
          .keywords = {"explorador, explorador de archivos, windows, navegar, recorrer, gestor de archivos, "
                       "finder, arbol",
                       "explorer, file explorer, windows, browse, navigate, file manager, finder, tree"}},
         {.id = "otro-disco",
          .question = {"¿Puedo ver qué ocupa un disco externo?",
                       "Can I see what's taking space on an external drive?"},
          .answer =
              {"Sí, para mirar. Un disco externo o una memoria USB que esté conectada se abre en el mapa "
               "como una carpeta más y enseña lo que más ocupa[; «tarvo carpeta» con la ruta del disco hace "
               "lo mismo]. En un Mac puede que el sistema pida permiso para leerlo. Limpiar, en cambio, solo "
               "se limpia tu carpeta personal: de un disco externo no se borra ni se aparta nada.",
               "Yes, to look at it. An external disk or a USB stick that is connected opens in the map like "
               "any other folder and shows what takes the most[; “tarvo folder” with the disk's path does "
               "the "
               "same]. On a Mac the system may ask for permission to read it. Cleaning, though, only happens "
               "in your home folder: nothing on an external drive is deleted or set aside."},
          .keywords = {"disco externo, externo, usb, sirve para un pendrive, otro disco, disco duro, tarjeta "
                       "sd, memoria, disco de red",
                       "external drive, external disk, usb, flash drive, other disk, another drive, hard "
                       "drive, sd card, network drive"}},
         {.id = "atajos",
          .question = {"¿Tiene atajos de teclado?", "Does it have keyboard shortcuts?"},
          .answer = {"Sí. ⌘R vuelve a analizar, ⇧⌘S marca solo lo que se regenera solo, ⌘⌫ pide limpiar lo "
                     "marcado (y siempre pregunta antes) y Esc sale del bloque que abriste con la lupa. Con "
                     "las flechas te mueves por la lista y por el mapa, y la barra espaciadora marca o "
                     "desmarca. En Linux esos atajos llevan Ctrl en lugar de ⌘. La ventana entera se puede "
                     "manejar con el teclado, sin ratón.",
                     "Yes. ⌘R analyzes again, ⇧⌘S selects only what recreates itself, ⌘⌫ asks to clean what "
                     "is selected (and always checks with you first) and Esc leaves the block you opened "
                     "with the magnifier. The arrow keys move through the list and the map, and the space "
                     "bar selects or deselects. On Linux these shortcuts take Ctrl instead of ⌘. The whole "
                     "window can be used from the keyboard, without a mouse."},
          .keywords = {"atajo, atajos, teclado, tecla, teclas, sin raton, flechas, limpiar con el teclado",
                       "shortcut, shortcuts, keyboard, keys, hotkey, hotkeys, without a mouse, arrows"}},
         {.id = "cifras",
          .question = {"¿Por qué una carpeta ocupa menos aquí que en el Finder?",
                       "Why does a folder take up less here than in the Finder?"},
          .answer = {"Porque aquí se mide lo que cada archivo ocupa de verdad en el disco, y el Finder suele "
                     "enseñar su longitud. Un archivo con huecos, como el disco de Docker, ocupa mucho menos "
                     "de lo que mide; uno con varios nombres se cuenta una sola vez, y en un Mac también las "
                     "copias que comparten contenido. En Linux esas copias se cuentan enteras. Lo que no se "
                     "ha podido leer no está contado; cuando pasa, se te dice.",
                     "Because here each file counts for what it really takes on the disk, while the Finder "
                     "mostly shows its length. A file with holes, such as Docker's disk, takes far less than "
                     "its length; one with several names counts once, and on a Mac so do copies that share "
                     "their content. On Linux those copies count in full. What couldn't be read isn't "
                     "counted; when that happens, you are told."},
          .keywords =
              {"cifra, cifras, finder, ocupa menos, distinto, diferencia, no cuadra, no coincide, tamano, "
               "tamano real",
               "figures, numbers, finder, less space, different, difference, match, size, sizes, real size"}},
         {.id = "automatica",
          .question = {"¿Puede avisarme o limpiar sola?", "Can it warn me or clean by itself?"},
          .answer = {"Las dos cosas, mientras esté abierta o en la barra de menús. Te avisa, como mucho una "
                     "vez al día, cuando quedan menos de 10 GB libres; la cantidad se cambia en los Ajustes, "
                     "y el aviso se puede quitar. La limpieza semanal está apagada hasta que tú la "
                     "enciendas: entonces borra cada 7 días, sin preguntar, solo lo que se regenera solo, "
                     "nunca lo tuyo ni tus carpetas protegidas, y te dice cuánto ha liberado.",
                     "Both, as long as it is open or in the menu bar. It warns you, once a day at most, when "
                     "less than 10 GB are free; the amount can be changed in the Settings, and the alert can "
                     "be switched off. The weekly cleanup is off until you switch it on: from then on it "
                     "deletes every 7 days, without asking, only what recreates itself, never your files or "
                     "your protected folders, and it tells you how much it freed."},
          .keywords = {"automatica, automatico, automaticamente, sola, avisar, aviso, avisarme, "
                       "notificacion, alerta, limpieza semanal, cada semana, poco espacio",
                       "automatic, automatically, by itself, warn, notify, notification, alert, weekly "
                       "cleanup, every week, low space, schedule"}},
         {.id = "requisitos",
          .question = {"¿Qué necesito para usarla?", "What do I need to use it?"},
          .answer = {"Hoy, un equipo con Linux: se prueba en Debian y Ubuntu. Está pensada para macOS 15 o "
                     "posterior, pero la versión para Mac todavía no está lista. Para usarla no hacen falta "
                     "cuenta, internet ni permisos de administrador. La IA es opcional: en Linux, un modelo "
                     "que tengas funcionando en tu propio equipo; en el Mac será el del sistema, con macOS "
                     "26. Sin IA funciona todo lo demás.",
                     "Today, a computer with Linux: it is tested on Debian and Ubuntu. It is designed for "
                     "macOS 15 or later, but the version for the Mac isn't ready yet. To use it you need no "
                     "account, no internet and no administrator rights. The AI is optional: on Linux, a "
                     "model you run on your own computer; on the Mac it will be the system's, with macOS 26. "
                     "Everything else works without AI."},
          .keywords = {"requisitos, requisito, necesito, necesita, macos, funciona en linux, version, "
                       "compatible, instalar, ubuntu, intel, conexion a internet",
                       "requirements, internet connection, need, needs, macos, linux, version, compatible, "
                       "install, ubuntu, intel, work on"}},
         {.id = "lento",
          .question = {"¿Por qué tarda o pone «Buscando también…»?",
                       "Why is it slow, or showing “Also searching…”?"},
          .answer =
              {"Porque hay que mirar cientos de miles de archivos, uno por uno; la primera vez es la más "
               "lenta. Por eso se hace en dos partes: primero lo que se mira enseguida, y ya ves resultados; "
               "después, con «Buscando también…», tus proyectos y Descargas. Mientras tanto puedes ir "
               "marcando. Si en un Mac parece parado o colgado, mira si hay una pregunta de permiso detrás "
               "de otra ventana. Puedes detenerlo cuando quieras: analizar no toca tus archivos.",
               "Because it has to look at hundreds of thousands of files, one by one; the first time is the "
               "slowest. So it works in two parts: first what can be seen quickly, and you already get "
               "results; then, with “Also searching…”, your projects and Downloads. You can select things "
               "meanwhile. If it seems stuck or frozen on a Mac, see whether a question about permission "
               "waits behind another window. You can stop it whenever you like: analyzing doesn't touch your "
               "files."},
          .keywords = {"tarda, lento, buscando, analizando, parado, colgado, fase",
                       "slow, searching, analyzing, stuck, frozen, phase"}}});
    return rows;
}

} // namespace lumo::HelpCatalog
