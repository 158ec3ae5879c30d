#include "LumoCore/Explaining/HelpTopicRow.h"

#include <array>

namespace lumo::HelpCatalog {

// What the help says otherwise on Linux. The words are those that the windows show and those that people have
// for them.
std::span<const LinuxRow> linuxRows() {
    static constexpr auto rows = std::to_array<LinuxRow>(
        {{.id = "colores",
          .answer = {"El color dice cuánto riesgo tiene borrar cada cosa. Verde, «Se regenera solo»: se "
                     "puede borrar sin miedo. Ámbar, «Míralo antes»: puede hacerte falta, así que lo miras "
                     "y decides tú. Gris, «Se conserva»: hay que conservarlo y solo se enseña. Morado, «Sin "
                     "clasificar»: una carpeta grande que no reconozco; en el mapa va además rayada. No "
                     "tienes que fiarte solo del color: un bloque marcado lleva una marca, uno que ahora no "
                     "se puede limpiar lleva un candado, y al señalar una fila de la lista su bloque queda "
                     "rodeado por una línea.",
                     "The color tells you how risky it is to delete something. Green, “Recreates itself”: "
                     "it can go without fear. Amber, “Needs a look”: you may need it, so you take a look "
                     "and decide. Gray, “Kept”: it has to be kept and is only shown. Purple, "
                     "“Unclassified”: a large folder I don't recognize; in the map it is striped as well. "
                     "You never have to rely on color alone: a selected block carries a check mark, one "
                     "that can't be cleaned right now carries a lock, and pointing at a row of the list "
                     "draws a line around its block."},
          .keywords = {"violeta, lila, amarillo, rojo, colores, rayas, rayada, rayado, se conserva, "
                       "conservar, conserva, sin clasificar, clasificar, clasificada, miralo antes, "
                       "mirar antes, leyenda, pinta, riesgo, gris, grises, amarilla, amarillas",
                       "violet, yellow, red, colors, colour, colours, colored, stripe, stripes, hatched, "
                       "kept, keep, unclassified, classified, needs a look, look first, legend, risk, "
                       "grays, lilac, yellowish"}},
         {.id = "regenera",
          .keywords = {"npm, pip, regenera solo, temporal, temporales, basura, seguro borrar, marcar lo "
                       "seguro, recuperable, volver a descargar, dejan de funcionar, estropear "
                       "programas, cache de paquetes, cache de apps, reaparece, sin riesgo, siguen "
                       "funcionando, funcionando",
                       "npm, pip, recreates itself, temp, temporary, junk, garbage, select safe, "
                       "recoverable, download again, stop working, break programs, package caches, app "
                       "caches, rebuilt, come back, safe to remove, still work, work afterwards"}},
         {.id = "libera",
          .question = {},
          .answer =
              {"Depende de lo que limpies. Lo que se regenera solo se borra en el acto y ese espacio "
               "queda libre al momento; también lo que quita otra herramienta, como Docker. Lo tuyo, en "
               "cambio, pasa al Apartado: sigue en el mismo disco 7 días y no libera nada hasta que se "
               "vacía. Antes de limpiar te digo cuánto va por cada camino. El objetivo de la parte de "
               "arriba es solo una ayuda: cuánto te gustaría liberar. Lo subes o lo bajas con + y −, y la "
               "barra se llena con lo que vas marcando.",
               "It depends on what you clean. What recreates itself is deleted on the spot and its space "
               "is free right away; so is what another tool removes, such as Docker. Your own files go to "
               "Recently Cleaned instead: they stay on the same disk for 7 days and free nothing until it "
               "is emptied. Before cleaning I tell you how much goes each way. The goal at the top is only "
               "a help: how much you would like to free. You raise or lower it with + and −, and its bar "
               "fills with what you select."},
          .keywords = {"limpiar, pulsar limpiar, objetivo, meta, subir objetivo, subo, bajar objetivo, "
                       "medidor, espacio, lleno, disco ocupado, no cambia, no ha cambiado, liberado, "
                       "sigue lleno, el mas y el menos",
                       "clean, press clean, goal, target, raise goal, lower goal, meter, bar, full, disk "
                       "used, still, freed, did nothing, nothing changed, space, emptier, plus and minus"}},
         {.id = "apartado",
          .keywords = {"vuelva, vuelvan, cuantos dias se, todo como estaba, equivocada, equivocado, "
                       "volver atras, recuperarlo, devolver, error, equivocacion, sin querer, borre, "
                       "borrado, arrepentido, arrepiento, apartados, donde van, van mis archivos, al "
                       "limpiar, a donde fue, papelera, lo que no era, las cosas, desaparece, limpie mal",
                       "old file back, how many days, undone, bring back, back, mistake, wrong, regret, "
                       "changed my mind, deleted, removed, set aside, where did my files go, files after "
                       "cleaning, recycle bin, wastebasket, put things back, gone, holding, holding area"}},
         {.id = "vaciar",
          .keywords = {"vaciar ahora, borrar definitivamente, borrado definitivo, del todo, ahora mismo",
                       "empty now, delete permanently, permanent, for ever, right now"}},
         {.id = "permisos",
          .question = {"¿Me va a pedir permisos o una contraseña?",
                       "Will it ask me for permission or a password?"},
          .answer =
              {"No. En Linux trabaja con los permisos de tu usuario: no pide contraseña, no necesita ser "
               "administrador y no pregunta carpeta por carpeta. Mira tu carpeta personal, y lo que tu "
               "usuario no puede leer se deja fuera y se te avisa, porque no está contado. Limpiar "
               "tampoco pide nada más: si algo no es tuyo y no se puede quitar, se queda como está y se te "
               "dice.",
               "No. On Linux it works with your own user's permissions: it asks for no password, needs no "
               "administrator rights and doesn't ask folder by folder. It looks at your home folder, and "
               "what your user can't read is left out and you are told, because it isn't counted. Cleaning "
               "asks for nothing more either: if something isn't yours and can't be removed, it stays as "
               "it is and you are told."},
          .keywords = {"sudo, root, administrador, superusuario, privilegios, derechos, no se puede "
                       "leer, leer carpetas, ilegible",
                       "sudo, root, administrator, admin, superuser, privileges, rights, read, "
                       "unreadable"}},
         {.id = "privacidad",
          .question = {"¿Mis archivos o datos salen de mi equipo?", "Do my files or data leave my computer?"},
          .answer = {},
          .keywords = {"espia, programa espia, ve mis archivos, ven mis archivos, privado, privada, "
                       "sube, sube algo, recoge, recopila, recopilan, espiar, en linea, publicidad, "
                       "anuncios, cuenta de usuario, conexion, red, se conecta",
                       "spyware, see my files, sees my files, collect, collects, online, offline, ads, "
                       "account, spying, tracking, network, phone home, connect to a server, filenames"}},
         {.id = "segura",
          .question = {"¿Es segura? ¿Está firmada?", "Is it safe? Is it signed?"},
          .answer =
              {"Está hecha para que no pierdas nada sin querer: solo borra dentro de tu carpeta personal, "
               "pregunta antes de cada limpieza que pides, y lo tuyo espera 7 días en el Apartado. Si el "
               "equipo se apaga a mitad de una limpieza, lo que estaba apartando sigue a salvo y se puede "
               "devolver a su sitio. Por ahora no viene firmada por nadie: la compilas tú en tu propio "
               "equipo, a partir de su código.",
               "It is built so that you lose nothing by accident: it only deletes inside your home folder, "
               "asks before every cleanup you start, and keeps your own files for 7 days in Recently "
               "Cleaned. If the computer shuts down in the middle of a cleanup, what was being set aside "
               "is safe and can be put back in its place. For now nobody signs it for you: you build it on "
               "your own computer, from its source code."},
          .keywords = {"virus, romper, rompe, estropear, dano, danar, peligro, peligroso, miedo, perder "
                       "datos, borrar documentos, importante, importantes, corte de luz, apagon, a "
                       "medias, confiar, se va la luz, estropea, fallo, herramienta, falla, fallar",
                       "virus, malicious, ruin, damage, destroy, harm, danger, risky, lose data, losing, "
                       "important, afraid, scared, power cut, blackout, halfway, crashes, delete "
                       "documents, break my computer, break, breaks, wreck, tool, safe, safely"}},
         {.id = "compartir",
          .keywords = {"publicar en x, twitter, guardar imagen, copiar imagen, celebracion, lo que he "
                       "liberado, mis amigos, ensenar, captura de lo liberado, tuitear, subirlo, subirlo "
                       "a twitter",
                       "share on x, twitter, save image, save the card, copy image, celebration, show my "
                       "friends, what i freed, tweet, as a picture, picture of my result"}},
         {.id = "ia",
          .answer =
              {"Son una orientación, no una orden. La IA solo ve el nombre de una carpeta, dónde está, "
               "cuánto ocupa y los nombres y tipos de lo más grande que contiene, nunca lo que dicen tus "
               "archivos, y puede equivocarse. Por eso no decide qué es seguro: solo se da por seguro lo "
               "que está en la carpeta de cachés; lo demás queda, como mucho, en «revisar». Lo que escribe "
               "la IA, también el resumen, va señalado; lo que nombra tamaños que nadie midió o propone "
               "órdenes no se enseña. Sin IA verás una explicación aproximada, hecha con reglas fijas. La "
               "enciendes en los Ajustes, diciendo qué modelo de tu propio equipo hay que usar.",
               "They are guidance, not orders. The AI only sees a folder's name, where it is, how big it "
               "is and the names and types of the largest things in it, never what your files say, and it "
               "can be wrong. So it doesn't decide what is safe: only what lies in the caches folder "
               "counts as safe; the rest is “review” at best. What the AI writes, the summary included, is "
               "marked as such; what names sizes that nobody measured or proposes commands isn't shown. "
               "Without AI you see an approximate explanation made from fixed rules. You switch it on in "
               "the Settings, by naming a model that runs on your own computer."},
          .keywords = {"explicar con ia, aproximada, aproximacion, resumen, resumen del disco, modelo "
                       "local, lo dice, en que se basa, inventa, inventar, equivocarse, equivoca, "
                       "alucina, llm, ia, la ia, ia funciona en mi",
                       "explain with ai, ai explanations, approximate, approximation, summary, disk "
                       "summary, local model, says who, what it rests on, hallucinate, invent, mistaken, "
                       "llm, be wrong, ai, made up, makes up"}},
         {.id = "bloqueado",
          .keywords = {"candado, bloqueo, no se puede limpiar, no se puede marcar, solo se ensena, "
                       "desmarcar, cerrar antes, cierra antes, cierre, cierre antes, primero, en gris, "
                       "desactivada, no puedo seleccionar, deshabilitado, abierto, esta abierta, cierra "
                       "la app, cerrar la app",
                       "padlock, shown only, cannot be cleaned, can t be cleaned, ticked, deselect, quit "
                       "first, close first, first, grayed out, greyed, greyed out, disabled, "
                       "unavailable, running, click, is open, quit, close the app"}},
         {.id = "docker",
          .answer =
              {"Docker Desktop guarda todo en un archivo que reserva mucho sitio pero solo ocupa lo que "
               "de verdad se ha escrito en él. Otros programas enseñan el tamaño reservado; aquí ves el "
               "real. El Docker del sistema guarda sus datos fuera de tu carpeta personal, y entonces no "
               "aparecen; los de Podman, o los de Docker sin administrador, sí. Es ámbar y nunca se marca "
               "solo. Si lo marcas, la propia herramienta quita lo que no usa, también los contenedores "
               "parados: eso no se puede deshacer, pero deja los volúmenes, donde suelen estar las bases "
               "de datos.",
               "Docker Desktop keeps everything in one file that reserves a lot of room but only takes "
               "what was really written to it. Other programs show the reserved size; here you see the "
               "real one. The system's own Docker keeps its data outside your home folder, and then it "
               "doesn't show up; that of Podman, or of Docker without an administrator, does. It is amber "
               "and never selected for you. If you select it, the tool itself removes what it doesn't use, "
               "stopped containers included: that can't be undone, but it leaves volumes alone, where "
               "databases usually live."},
          .keywords = {"base de datos, podman, docker desktop, maquinas virtuales",
                       "database, podman, docker desktop, virtual machines"}},
         {.id = "proyectos",
          .keywords = {"proyecto activo, activo, carpetas de compilacion, codigo fuente, programacion, "
                       "repositorio git, cmake, rust, cargo, target, python, entorno virtual, mi codigo, "
                       "codigo",
                       "active project, build folders, source code, my code, coding, git repository, "
                       "cmake, rust, cargo, target, python, virtual environment, code"}},
         {.id = "icloud",
          .question = {"¿Qué hace con iCloud Drive y otras nubes?",
                       "What does it do with iCloud Drive and other clouds?"},
          .answer =
              {"iCloud Drive es la nube de Apple y en Linux no está, así que aquí no hay descargas suyas "
               "que quitar. Las carpetas que sincronizan otras nubes son archivos tuyos: puedes mirar qué "
               "ocupan, pero no se limpian.",
               "iCloud Drive is Apple's cloud and Linux doesn't have it, so there are no downloads of it "
               "to remove here. Folders that other clouds sync are files of yours: you can see how much "
               "they take, but they aren't cleaned."},
          .keywords = {"apple, dropbox, onedrive, google drive, nextcloud, nubes",
                       "apple, dropbox, onedrive, google drive, nextcloud, clouds"}},
         {.id = "apps",
          .answer =
              {"Por ahora no las desinstala. Sí limpia sus cachés y, cuando una carpeta grande no coincide "
               "con nada instalado, te dice que puede ser de un programa sin icono o un resto, para que "
               "mires qué hay dentro. Para quitar una app, usa el centro de software o lo que usaste para "
               "instalarla. Después vuelve a analizar: lo que haya dejado y ocupe más de cien megas saldrá "
               "sin clasificar.[ «tarvo apps» enseña las que tienes.]",
               "For now it doesn't uninstall them. It does clean their caches and, when a large folder "
               "matches nothing installed, it tells you that it may belong to a program without an icon or "
               "be a leftover, so that you look at what is inside. To remove an app, use the software "
               "center or whatever you installed it with. Then analyze again: what it left behind and "
               "takes more than a hundred megabytes shows up as unclassified.[ “tarvo apps” lists the ones "
               "you have.]"},
          .keywords = {"programa, desinstalar programas, quitar un programa, resto, instaladas, flatpak, "
                       "snap, paquetes deb, centro de software",
                       "program, remove a program, leftover, installed, residue, flatpak, snap, deb "
                       "packages, software center"}},
         {.id = "purgable",
          .question = {"¿Hay espacio que el sistema libera solo?",
                       "Is there space that the system frees by itself?"},
          .answer =
              {"Aquí no. Es cosa de los Mac, que guardan instantáneas de Time Machine y copias de iCloud y "
               "las quitan cuando el disco se llena. Linux no tiene nada parecido: el espacio libre que "
               "ves es el que hay.",
               "Not here. That is a thing of Macs, which keep Time Machine snapshots and copies from "
               "iCloud and remove them when the disk fills up. Linux has nothing like it: the free space "
               "you see is what there is."},
          .keywords = {"se libera solo, sistema", "system frees, system space"}},
         {.id = "disco-entero",
          .keywords = {"disco entero, completo, todo el mapa, bloque del sistema, espacio disponible",
                       "whole disk, entire drive, everything on the disk, system block, available space"}},
         {.id = "barra",
          .question = {"¿Para qué sirve el icono de la bandeja?", "What is the tray icon for?"},
          .answer =
              {"Para ver el espacio libre sin abrir la ventana. Al pulsarlo ves también cuánto puedes "
               "recuperar sin riesgo y qué ha crecido desde un análisis anterior, que también sale en la "
               "ventana, y desde ahí puedes volver a analizar o abrir Tarvo AI. Mientras está puesto, "
               "cerrar la ventana no la apaga: sigue pendiente para avisarte si queda poco sitio. Se pone "
               "y se quita en los Ajustes, donde también eliges si se abre al iniciar sesión. Hace falta "
               "que tu escritorio tenga una bandeja del sistema.",
               "To see the free space without opening the window. Press it and you also see how much you "
               "can recover with no risk and what has grown since an earlier scan, which the window shows "
               "as well, and from there you can analyze again or open Tarvo AI. While it is there, closing "
               "the window doesn't quit: it keeps an eye on the disk to warn you when room runs low. You "
               "switch it on and off in the Settings, where you also choose whether it starts at login. "
               "Your desktop has to have a system tray."},
          .keywords = {"bandeja del sistema, panel, indicador, al iniciar sesion, arranque, arrancar, al "
                       "encender",
                       "system tray, panel, indicator, start at login, startup, autostart, boot"}},
         {.id = "ajustes",
          .keywords = {"rueda dentada, engranaje, tema, claro, oscuro, oscura, aspecto, apariencia, "
                       "tamano del texto, letra, letras, carpetas protegidas, proteger, protejo, carpeta "
                       "protegida, no tocar nunca, nunca, excluir, opcion, apagar una opcion, configura",
                       "gear, theme, light, dark, appearance, text size, font, letters, protected "
                       "folders, protect, protected folder, never touch, never, exclude, ignore a "
                       "folder, option, turn off, bigger text"}},
         {.id = "dentro",
          .answer = {"Sí. La lupa de un bloque abre la carpeta y reparte el mapa entre lo que tiene dentro, "
                     "con lo más grande primero; lo más pequeño va junto en un solo bloque. Puedes seguir "
                     "entrando, y Esc o la ruta de arriba te devuelven. Con «Mirar en…» entras en tu "
                     "carpeta personal o en otro disco, y en la vista previa ves el principio de un "
                     "archivo. Mirar no cambia nada: lo de dentro no se marca por separado ni se borra.[ Sin "
                     "ventanas, «tarvo carpeta» seguido de una ruta dice lo mismo en una lista.]",
                     "Yes. The magnifier on a block opens the folder and divides the map among what it "
                     "holds, largest first; the smallest things share one block. You can go on deeper, and "
                     "Esc or the path at the top takes you back. With “Look Into…” you enter your home "
                     "folder or another disk, and the preview shows the beginning of a file. Looking "
                     "changes nothing: what is inside isn't selected on its own or deleted.[ Without "
                     "windows, “tarvo folder” followed by a path tells you the same in a list.]"},
          .keywords = {"recuadro, recuadros, cuadro, cuadrado, rectangulo, casilla del mapa, bloques, "
                       "pinchar, vista previa, lo mas pequeno, mirar en, que hay en una carpeta, abrir "
                       "un bloque, contenido, entro, entrar en una carpeta, entrar",
                       "tile, tiles, square, squares, rectangle, box, blocks, see inside, magnifying "
                       "glass, preview, smallest, look into, content, what is in a folder, go into, go "
                       "inside"}},
         {.id = "agente",
          .keywords = {"windsurf, chatgpt, gemini, otra ia, conectarla, servidor mcp",
                       "windsurf, chatgpt, gemini, other ai, hook up, mcp server"}},
         {.id = "fotos",
          .question = {"¿Puede ayudarme con mis fotos?", "Can it help me with my photos?"},
          .answer =
              {"Sí, en Repasar fotos (Ctrl+P o el menú). Mira tu carpeta de imágenes, o la que elijas, y "
               "junta "
               "las copias exactas, las parecidas, las ráfagas y las capturas de pantalla; lo demás va por "
               "meses. De cada grupo propone conservar una, pero no elige nada por ti: te mueves con las "
               "flechas, eliges con la barra espaciadora y ves una en grande con Intro. Tus fotos nunca se "
               "borran con lo que se regenera: solo lo que elijas, tras preguntarte, espera 7 días en el "
               "Apartado.",
               "Yes, in Review Photos (Ctrl+P or the menu). It looks at your pictures folder, or one you "
               "choose, and puts exact copies, look alikes, bursts and screenshots together; the rest goes "
               "by "
               "month. Of each group it proposes one to stay, but chooses nothing for you: the arrow keys "
               "move, the space bar chooses and Return shows one large. Your photos are never deleted with "
               "what recreates itself: only what you choose waits, after a question, for 7 days in Recently "
               "Cleaned."},
          .keywords = {"fotografias, album, grabaciones, video, carpeta de imagenes, mis fotos, familia, "
                       "fotos repetidas, fotos parecidas, fotos duplicadas, rafagas, borrosas",
                       "photographs, photography, album, recordings, video, pictures folder, family, "
                       "duplicate photos, similar photos, look alikes, bursts, blurry, blurred"}},
         {.id = "archivar",
          .answer =
              {"Es para carpetas tuyas que casi no abres. Archivar crea un .zip al lado, comprueba que "
               "dentro está todo y solo entonces aparta el original, que puedes recuperar durante 7 días. "
               "Antes te dice cuánto ahorrarías: las fotos y los vídeos, por ejemplo, apenas encogen. No "
               "deja archivar lo que se rompería, como las carpetas ocultas, ni carpetas principales como "
               "Documentos. Se hace con clic derecho en la lista[, o con «tarvo archivar» y la ruta].",
               "It is for folders of yours that you hardly open. Archiving makes a .zip beside the folder, "
               "checks that everything is in it and only then sets the original aside, and you can get it "
               "back for 7 days. First it tells you how much you would save: photos and videos, for "
               "example, hardly shrink. It refuses what would break, such as hidden folders, and main "
               "folders such as Documents. Right-click in the list[, or use “tarvo archive” and the path]."},
          .keywords = {"archivar una carpeta, zip, cosas viejas, antigua, antiguas, reducir, no uso casi",
                       "archive a folder, zip it, old stuff, old files, rarely, pack"}},
         {.id = "duplicados",
          .keywords = {"dos veces el mismo, archivos repetidos, copias del mismo, duplicada, identicos, "
                       "identicas",
                       "dupes, doubles, copies of the same, repeated files, identical files"}},
         {.id = "explorador",
          .answer =
              {"Sí: Explorar, junto al mapa, que se abre con Ctrl+E o con su pestaña. Recorre tu carpeta "
               "personal con lo que ocupa cada cosa, y cada uno sigue al otro: si entras en una carpeta, el "
               "mapa también, y al revés. Te mueves con las flechas, entras con Intro, sales con Retroceso, "
               "marcas con la barra espaciadora y «Apartar…» lo aparta 7 días, tras preguntarte. Con clic "
               "derecho lo abres en el gestor de archivos de tu escritorio o copias su "
               "ruta.[ Sin ventanas: «tarvo explorar».]",
               "Yes: Explore, beside the map, which opens with Ctrl+E or its tab. It walks through your home "
               "folder with what each thing takes, and each follows the other: when you go into a folder, so "
               "does the map, and the other way round. The arrow keys move, Return goes in, Backspace goes "
               "out, the space bar marks, and “Set Aside…” sets that aside for 7 days, after a question. A "
               "right-click opens it in your desktop's file manager or copies its path.[ Without windows: "
               "“tarvo explore”.]"},
          .keywords = {"mostrar en el gestor de archivos, copiar ruta, ruta, nautilus, dolphin, abrir la "
                       "carpeta, clic derecho, explorar, recorrer carpetas, carpeta por carpeta",
                       "show in file manager, copy path, path, nautilus, dolphin, open the folder, right "
                       "click, explore, walk through folders, folder by folder"}},
         {.id = "otro-disco",
          .answer =
              {"Sí, para mirar. Un disco externo o una memoria USB que esté conectada se abre en el mapa "
               "como una carpeta más, con «Mirar en…», y enseña lo que más ocupa[; «tarvo carpeta» con la "
               "ruta del disco hace lo mismo]. Limpiar, en cambio, solo se limpia tu carpeta personal: de "
               "un disco externo no se borra ni se aparta nada.",
               "Yes, to look at it. An external disk or a USB stick that is connected opens in the map "
               "like any other folder, with “Look Into…”, and shows what takes the most[; “tarvo folder” "
               "with the disk's path does the same]. Cleaning, though, only happens in your home folder: "
               "nothing on an external drive is deleted or set aside."},
          .keywords = {"pendrive, lapiz usb, mirar en otro disco, segundo disco, nas, discos",
                       "pendrive, usb stick, thumb drive, second disk, nas, look into another disk"}},
         {.id = "atajos",
          .answer =
              {"Sí. Ctrl+R vuelve a analizar, Ctrl+Mayús+S marca solo lo que se regenera solo, Ctrl y "
               "Retroceso pide limpiar lo marcado (y siempre pregunta antes), Ctrl+Z deshace la última "
               "limpieza, Ctrl+F busca, Ctrl+O y Ctrl+S abren y guardan un informe, Ctrl+H y Ctrl+G abren "
               "el Historial y el Crecimiento, Ctrl+W cierra cada ventana así, F1 abre esta ayuda y Esc sale "
               "del bloque que abriste con la "
               "lupa. "
               "Con las flechas te mueves por la lista y por el mapa, y la barra espaciadora marca o "
               "desmarca. La ventana entera se puede manejar con el teclado, sin ratón.",
               "Yes. Ctrl+R analyzes again, Ctrl+Shift+S selects only what recreates itself, Ctrl and "
               "Backspace asks to clean what is selected (and always checks with you first), Ctrl+Z undoes "
               "the last cleanup, Ctrl+F searches, Ctrl+O and Ctrl+S open and save a report, Ctrl+H and "
               "Ctrl+G open the History and the Growth, Ctrl+W closes such a window, F1 opens this help and "
               "Esc leaves the block you "
               "opened "
               "with the magnifier. The arrow keys move through the list and the map, and the space bar "
               "selects or deselects. The whole window can be used from the keyboard, without a mouse."},
          .keywords = {"ctrl, control, combinacion, raton", "ctrl, control key, keyboard only, mouse"}},
         {.id = "cifras",
          .question = {"¿Por qué una carpeta ocupa menos aquí que en otros programas?",
                       "Why does a folder take up less here than in other programs?"},
          .answer =
              {"Porque aquí se mide lo que cada archivo ocupa de verdad en el disco, y los gestores de "
               "archivos suelen enseñar su longitud. Un archivo con huecos, como el disco de una máquina "
               "virtual, ocupa mucho menos de lo que mide, y uno con varios nombres se cuenta una sola "
               "vez. Las copias que comparten contenido se cuentan enteras. Lo que no se ha podido leer no "
               "está contado; cuando pasa, se te dice.",
               "Because here each file counts for what it really takes on the disk, while file managers "
               "mostly show its length. A file with holes, such as a virtual machine's disk, takes far "
               "less than its length, and one with several names counts once. Copies that share their "
               "content count in full. What couldn't be read isn't counted; when that happens, you are "
               "told."},
          .keywords = {"menor, menores, nautilus dice otra cosa, otro tamano, tamanos, distintos, "
                       "distinta, diferente, diferentes, no cuadran, gestor de archivos, numeros, du, "
                       "menos espacio, ocupa distinto, mas pequeno, mas grande aqui",
                       "number, nautilus, other size, differ, differs, disagree, discrepancy, wrong "
                       "size, size on disk, du, file manager, smaller"}},
         {.id = "automatica",
          .answer =
              {"Las dos cosas, mientras esté abierta o en la bandeja del sistema. Te avisa, como mucho una "
               "vez al día, cuando quedan menos de 10 GB libres; la cantidad se cambia en los Ajustes, y "
               "el aviso se puede quitar. La limpieza semanal está apagada hasta que tú la enciendas: "
               "entonces borra cada 7 días, sin preguntar, solo lo que se regenera solo, nunca lo tuyo ni "
               "tus carpetas protegidas, y te dice cuánto ha liberado.",
               "Both, as long as it is open or in the system tray. It warns you, once a day at most, when "
               "less than 10 GB are free; the amount can be changed in the Settings, and the alert can be "
               "switched off. The weekly cleanup is off until you switch it on: from then on it deletes "
               "every 7 days, without asking, only what recreates itself, never your files or your "
               "protected folders, and it tells you how much it freed."},
          .keywords = {"avise, avisa, avisos, alertas, casi lleno, se llena, llenarse, semanal, semana, "
                       "programar, notificaciones, sin que yo haga nada, recordatorio",
                       "warns, warning, almost full, nearly full, running out, runs low, alerts, weekly, "
                       "week, notifications, reminder, scheduled, on its own"}},
         {.id = "requisitos",
          .answer =
              {"Un equipo con Linux: se prueba en Debian y Ubuntu. No hacen falta cuenta, internet ni "
               "permisos de administrador. La IA es opcional: es un modelo que tengas funcionando en tu "
               "propio equipo, y sin ella funciona todo lo demás. Hay prevista una versión para Mac, que "
               "todavía no está lista.",
               "A computer with Linux: it is tested on Debian and Ubuntu. You need no account, no internet "
               "and no administrator rights. The AI is optional: it is a model that you run on your own "
               "computer, and everything else works without it. A version for the Mac is planned but not "
               "ready yet."},
          .keywords = {"debian, fedora, mint, distribucion, mac, windows, ordenador viejo, novedades, "
                       "versiones, linux, sin internet",
                       "debian, fedora, mint, distribution, distro, mac, windows, old computer, whats "
                       "new, release, without internet"}},
         {.id = "lento",
          .answer =
              {"Porque hay que mirar cientos de miles de archivos, uno por uno; la primera vez es la más "
               "lenta. Por eso se hace en dos partes: primero lo que se mira enseguida, y ya ves "
               "resultados; después, con «Buscando también…», tus proyectos y Descargas. Mientras tanto "
               "puedes ir marcando. Puedes detenerlo cuando quieras con «Parar», y repetirlo con «Volver a "
               "analizar»: analizar no toca tus archivos.",
               "Because it has to look at hundreds of thousands of files, one by one; the first time is "
               "the slowest. So it works in two parts: first what can be seen quickly, and you already get "
               "results; then, with “Also searching…”, your projects and Downloads. You can select things "
               "meanwhile. You can stop it whenever you like with “Stop”, and repeat it with “Analyze "
               "again”: analyzing doesn't touch your files."},
          .keywords = {"lenta, tardar, tanto, tarda mucho, analisis, analizar, volver a analizar, "
                       "analizo, parar, detener, buscando tambien, atascado, congelado, espera",
                       "slowly, long, so long, scan, scanning, scans, analyze, analyze again, analysis, "
                       "stop, also searching, hangs, hanging, waiting, rescan, refresh"}}});
    return rows;
}

std::span<const Row> linuxOnlyRows() {
    static constexpr auto rows = std::to_array<Row>(
        {{.id = "historial",
          .question = {"¿Dónde veo lo que hizo cada limpieza?", "Where do I see what each cleanup did?"},
          .answer = {"En el Historial, que se abre con Ctrl+H o desde el menú de la ventana principal. Lista "
                     "todas las limpiezas con su fecha y lo que liberó cada una; al elegir una ves qué fue "
                     "de cada cosa. Lo que sigue apartado puedes devolverlo suelto a su sitio, sin deshacer "
                     "lo demás, y lo que falló dice por qué.[ Sin ventanas: «tarvo historial».]",
                     "In the History, which opens with Ctrl+H or from the menu of the main window. It lists "
                     "all cleanups with their dates and what each one freed; choose one to see what became "
                     "of each thing. What is still set aside you can put back on its own, without undoing "
                     "the rest, and what failed says why.[ Without windows: “tarvo history”.]"},
          .keywords = {"historial, hizo cada limpieza, limpiezas anteriores, que borro, que se "
                       "borro, devolver una sola cosa",
                       "history, did each cleanup, past cleanups, earlier cleanups, log, what was deleted, "
                       "put one thing back"}},
         {.id = "crecimiento",
          .question = {"¿Cómo veo qué ha ido creciendo?", "How do I see what has been growing?"},
          .answer = {"En la ventana Crecimiento, que se abre con Ctrl+G o desde el menú. De cada análisis "
                     "completo se guarda cuánto ocupaba cada cosa, y aquí cada una tiene su línea: cuánto "
                     "ha subido o bajado desde el primero, qué es nuevo y qué ha encogido. Al elegir una "
                     "fila se ve su evolución. Lo que más ha subido sale además al final de la lista "
                     "principal.[ Sin ventanas: «tarvo crecimiento».]",
                     "In the Growth window, which opens with Ctrl+G or from the menu. Each full scan "
                     "stores how much everything took, and here each thing has its line: how far it went "
                     "up or down since the first one, what is new and what shrank. Choose a row to see it "
                     "over time. What grew most also stands at the end of the main list.[ Without windows: "
                     "“tarvo growth”.]"},
          .keywords = {"crecimiento, creciendo, evolucion, ha crecido, crecido, crece, lo que mas ha crecido "
                       "desde, con el tiempo, ha subido, ha encogido, grafica",
                       "growth, growing, over time, grew, grown, grew most since, got bigger, trend, chart, "
                       "shrank, went up"}}});
    return rows;
}

} // namespace lumo::HelpCatalog
