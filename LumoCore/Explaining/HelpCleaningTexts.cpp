#include "LumoCore/Explaining/HelpTopicRow.h"

#include <array>

namespace lumo::HelpCatalog {

// What a cleanup means, and whether it can be trusted.
std::span<const Row> cleaningRows() {
    static constexpr auto rows = std::to_array<Row>(
        {{.id = "colores",
          .question = {"¿Qué significan los colores?", "What do the colors mean?"},
          .answer = {"El color dice cuánto riesgo tiene borrar cada cosa. Verde: se regenera solo y se puede "
                     "borrar sin miedo. Ámbar: puede hacerte falta, así que lo miras y decides tú. Gris: hay "
                     "que conservarlo y solo se enseña. Morado: una carpeta grande que no reconozco; en el "
                     "mapa va además rayada. No tienes que fiarte solo del color: un bloque marcado lleva "
                     "una marca, uno que ahora no se puede limpiar lleva un candado, y al señalar una fila "
                     "de la lista los demás bloques se ponen más pálidos.",
                     "The color tells you how risky it is to delete something. Green: it recreates itself "
                     "and can go without fear. Amber: you may need it, so you take a look and decide. Gray: "
                     "it has to be kept and is only shown. Purple: a large folder I don't recognize; in the "
                     "map it is striped as well. You never have to rely on color alone: a selected block "
                     "carries a check mark, one that can't be cleaned right now carries a lock, and pointing "
                     "at a row of the list makes the other blocks pale."},
          .keywords =
              {"color, verde, ambar, naranja, gris, morado, significa, rayado, marcado, palido, mapa, bloque",
               "color, green, amber, orange, gray, grey, purple, mean, striped, selected, pale, map, block"}},
         {.id = "regenera",
          .question = {"¿Qué quiere decir «se regenera solo»?", "What does “recreates itself” mean?"},
          .answer = {"Que un programa lo creó para ir más rápido y lo volverá a crear o a descargar cuando "
                     "le haga falta: cachés, paquetes descargados, compilaciones. Al borrarlo no pierdes "
                     "nada tuyo. El precio es pequeño: la próxima vez ese programa tardará más en arrancar o "
                     "volverá a bajar lo que necesita, y para eso hace falta internet. Los registros de "
                     "errores antiguos también cuentan: no vuelven, pero solo sirven para investigar fallos "
                     "pasados. Todo esto se borra directamente, sin pasar por el Apartado.",
                     "That a program made it to work faster and will make it or download it again when it "
                     "needs it: caches, downloaded packages, build results. Deleting it loses nothing of "
                     "yours. The price is small: next time that program starts more slowly or fetches what "
                     "it needs again, which takes an internet connection. Old error logs count too: they "
                     "don't come back, but they only serve to look into past failures. All of this is "
                     "deleted directly, without passing through Recently Cleaned."},
          .keywords = {"regenera, regenerar, recrea, vuelve a crear, cache, caches, los archivos temporales, "
                       "sin riesgo, se puede borrar, perder",
                       "recreates, recreate, regenerate, comes back, cache, caches, temporary files, no "
                       "risk, safe to delete, logs"}},
         {.id = "libera",
          .question = {"¿Limpiar libera espacio al momento?", "Does cleaning free up space right away?"},
          .answer =
              {"Depende de lo que limpies. Lo que se regenera solo se borra en el acto y ese espacio queda "
               "libre al momento; también lo que quita otra herramienta, como Docker. Lo tuyo, en cambio, "
               "pasa al Apartado: sigue en el mismo disco 7 días y no libera nada hasta que se vacía. Antes "
               "de limpiar te digo cuánto va por cada camino. En un Mac, las instantáneas de Time Machine "
               "pueden retener un tiempo lo borrado, y el espacio libre tarda algo más en subir.",
               "It depends on what you clean. What recreates itself is deleted on the spot and its space is "
               "free right away; so is what another tool removes, such as Docker. Your own files go to "
               "Recently Cleaned instead: they stay on the same disk for 7 days and free nothing until it is "
               "emptied. Before cleaning I tell you how much goes each way. On a Mac, Time Machine snapshots "
               "can hold on to deleted files for a while, so the free space rises a little later."},
          .keywords = {"libera, liberar, al momento, en el acto, enseguida, espacio libre, sigue lleno, "
                       "sigue igual, por que no se libera, no sube",
                       "free up, frees, right away, immediately, instantly, free space, still full, the "
                       "same, not freed"}},
         {.id = "apartado",
          .question = {"¿Qué es el Apartado y cómo deshago una limpieza?",
                       "What is Recently Cleaned, and how do I undo a cleanup?"},
          .answer =
              {"Al limpiar, lo que es tuyo no se borra: espera 7 días en el Apartado, una carpeta de tu "
               "propio disco. Para deshacer, pulsa el botón de deshacer en la franja que dice cuánto hay "
               "apartado[, o usa «tarvo deshacer»]: todo vuelve a su sitio con su nombre, sin pisar nada que "
               "hayas creado después.[ «tarvo apartado» enseña qué hay y hasta cuándo.] Lo que se regenera "
               "solo y lo que quitó otra herramienta no pasan por ahí y no se pueden recuperar.",
               "When you clean, your own files aren't deleted: they wait for 7 days in Recently Cleaned, a "
               "folder on your own disk. To undo, press the undo button in the strip that says how much is "
               "set aside[, or use “tarvo undo”]: everything goes back to its place under its name, without "
               "overwriting anything you made since.[ “tarvo holding” shows what is there and until when.] "
               "What recreates itself and what another tool removed don't pass through it and can't be "
               "recovered."},
          .keywords = {"apartado, deshacer, deshago, recuperar, recupero, restaurar, donde esta lo que "
                       "limpie, por error, me equivoque, sin querer, cuanto tiempo se guarda",
                       "recently cleaned, undo, restore, recover, get back, put back, where is what i "
                       "cleaned, by mistake, accident, accidentally, trash"}},
         {.id = "vaciar",
          .question = {"¿Cómo libero ya lo que está apartado?",
                       "How do I free up what's in Recently Cleaned now?"},
          .answer =
              {"Con «Vaciar ahora…», en la franja de lo apartado o en los Ajustes[, o con «tarvo "
               "vaciar»]. Antes te dice cuánto se va a borrar y espera a que aceptes, porque después ya "
               "no se puede deshacer. Solo se borra lo que apartaron tus limpiezas; nada más se toca, "
               "y el espacio queda libre al momento. Si no haces nada, cada cosa se borra sola pasados "
               "sus 7 días, la siguiente vez que se analiza el disco.",
               "With “Empty Now…”, in the strip about what is set aside or in the Settings[, or with "
               "“tarvo empty”]. It first tells you how much will be deleted and waits until you agree, "
               "because afterwards it can't be undone. Only what your cleanups set aside is deleted; "
               "nothing else is touched, and the space is free right away. If you do nothing, each "
               "thing is deleted once its 7 days are over, the next time the disk is analyzed."},
          .keywords = {"vaciar, vacio, lo apartado, definitivamente, para siempre, liberar ya, sin esperar, "
                       "7 dias, caduca",
                       "empty, empty now, recently cleaned, permanently, for good, forever, without waiting, "
                       "7 days, expire"}},
         {.id = "permisos",
          .question = {"¿Por qué macOS me pide permisos?", "Why does macOS ask me for permission?"},
          .answer =
              {"macOS protege carpetas como Descargas, Escritorio o Documentos y pregunta la primera vez que "
               "una app las mira. Tarvo AI empieza por lo que no necesita permiso y deja esas carpetas para "
               "el final. Si dices que no, no pasa nada malo: lo que hay ahí no se cuenta ni se limpia. "
               "Puedes cambiar de idea en los Ajustes del Sistema, en Privacidad y seguridad. En Linux no "
               "hay esas preguntas: lo que tu usuario no puede leer se deja fuera y se te avisa.",
               "macOS protects folders such as Downloads, Desktop or Documents and asks the first time an "
               "app looks at them. Tarvo AI starts with what needs no permission and leaves those folders "
               "for last. If you say no, nothing bad happens: what is in there isn't counted or cleaned. You "
               "can change your mind in System Settings, under Privacy & Security. Linux has no such "
               "questions: what your user can't read is left out, and you are told."},
          .keywords = {"permiso, permisos, acceso, pregunta, pide, permitir, denegar, no puede leer, "
                       "contrasena, acceso total al disco",
                       "permission, permissions, access, asks, prompt, allow, deny, password, full disk "
                       "access, cannot read"}},
         {.id = "privacidad",
          .question = {"¿Mis archivos o datos salen de mi Mac?", "Do my files or data leave my Mac?"},
          .answer = {"No. Analizar, explicar y limpiar se hace todo en tu equipo, sin cuenta, sin publicidad "
                     "y sin estadísticas de uso. La IA, si la usas, es un modelo que funciona en este mismo "
                     "equipo, nunca uno de internet. Solo hay una excepción, y la decides tú: si conectas un "
                     "agente de IA como Claude Code, ese agente recibe los nombres y tamaños de lo que "
                     "consulta, y lo que haga con ellos depende de él.",
                     "No. Analyzing, explaining and cleaning all happen on your own computer, with no "
                     "account, no ads and no usage statistics. The AI, if you use it, is a model that runs "
                     "on this same computer, never one on the internet. There is one exception, and you "
                     "decide on it: if you connect an AI agent such as Claude Code, that agent receives the "
                     "names and sizes of what it looks at, and what it does with them is up to it."},
          .keywords = {"privacidad, estadisticas de uso, datos, internet, enviar, envia, subir, nube, "
                       "servidor, salen, telemetria, espia",
                       "privacy, private, data, internet, send, upload, cloud, server, leave, telemetry, "
                       "track, spy"}},
         {.id = "segura",
          .question = {"¿Es segura? ¿Está firmada por Apple?", "Is it safe? Is it signed by Apple?"},
          .answer = {"Está hecha para que no pierdas nada sin querer: solo borra dentro de tu carpeta "
                     "personal, pregunta antes de cada limpieza que pides, y lo tuyo espera 7 días en el "
                     "Apartado. Si el equipo se apaga a mitad de una limpieza, lo que estaba apartando sigue "
                     "a salvo y se puede devolver a su sitio. No está firmada por Apple: por ahora la "
                     "compilas tú en tu propio equipo, a partir de su código.",
                     "It is built so that you lose nothing by accident: it only deletes inside your home "
                     "folder, asks before every cleanup you start, and keeps your own files for 7 days in "
                     "Recently Cleaned. If the computer shuts down in the middle of a cleanup, what was "
                     "being set aside is safe and can be put back in its place. It isn't signed by Apple: "
                     "for now you build it on your own computer, from its source code."},
          .keywords = {"segura, seguro, firmada, mis documentos, apple, un virus, malware, puede romper "
                       "algo, peligrosa, se va la luz, mientras limpia, se apaga",
                       "is this safe, secure, signed, documents deleted, apple, a virus, malware, break "
                       "something, dangerous, power goes out, while cleaning, shuts down"}},
         {.id = "compartir",
          .question = {"¿Puedo compartir lo que he limpiado?", "Can I share what I cleaned?"},
          .answer = {"Sí. Tras una limpieza que libera medio gigabyte o más aparece una tarjeta con lo que "
                     "has ganado; puedes guardarla como imagen en el Escritorio o copiarla y pegarla donde "
                     "quieras. La tarjeta solo lleva cantidades y categorías, como cachés o compilaciones: "
                     "nunca nombres de archivos, de carpetas ni de proyectos. Nada se publica solo.",
                     "Yes. After a cleanup that frees half a gigabyte or more, a card shows what you gained; "
                     "you can save it as an image on the Desktop, or copy it and paste it wherever you like. "
                     "The card only carries amounts and categories, such as caches or builds: never the "
                     "names of files, folders or projects. Nothing is posted by itself."},
          .keywords = {"compartir, comparto, tarjeta, imagen, publicar, redes sociales, presumir, ensenar a "
                       "otros, logro",
                       "share, sharing, card, image, post, social media, brag, show off, achievement"}},
         {.id = "ia",
          .question = {"¿Cuánto me puedo fiar de las explicaciones de la IA?",
                       "How much can I trust the AI's explanations?"},
          .answer =
              {"Son una orientación, no una orden. La IA solo ve el nombre de una carpeta, dónde está, "
               "cuánto ocupa y los nombres y tipos de lo más grande que contiene, nunca lo que dicen tus "
               "archivos, y puede equivocarse. Por eso no decide qué es seguro: solo se da por seguro lo que "
               "está en la carpeta de cachés; lo demás queda, como mucho, en «revisar». Lo que escribe la IA "
               "va señalado, y no borra nada. Sin IA verás una explicación aproximada, hecha con reglas "
               "fijas. En Linux la enciendes en los Ajustes, diciendo qué modelo de tu propio equipo hay que "
               "usar.",
               "They are guidance, not orders. The AI only sees a folder's name, where it is, how big it is "
               "and the names and types of the largest things in it, never what your files say, and it can "
               "be wrong. So it doesn't decide what is safe: only what lies in the caches folder counts as "
               "safe; the rest is “review” at best. What the AI writes is marked as such, and it deletes "
               "nothing. Without AI you see an approximate explanation made from fixed rules. On Linux you "
               "switch it on in the Settings, by naming a model that runs on your own computer."},
          .keywords = {"inteligencia artificial, explicacion, explicaciones, explica, modelo, fiar, fiable, "
                       "se equivoca, inventa cosas, ollama, apple intelligence",
                       "artificial intelligence, explanation, explain, model, trust, reliable, wrong, makes "
                       "things up, ollama, apple intelligence"}},
         {.id = "bloqueado",
          .question = {"¿Por qué no puedo marcar algunas cosas?", "Why can't I select some things?"},
          .answer = {"Porque ahora no conviene limpiarlas, y al lado pone el motivo: su app está abierta y "
                     "hay que cerrarla antes, es de un proyecto en el que has trabajado hace poco, está en "
                     "una carpeta que protegiste en los Ajustes, o tienes que elegir a mano qué quitar. Lo "
                     "gris son datos tuyos y lo que está sin clasificar solo se enseña: eso no se marca. "
                     "Cuando el motivo ya no exista, vuelve a analizar y podrás marcarlas.",
                     "Because it isn't a good moment to clean them, and the reason stands beside each: its "
                     "app is open and has to be quit first, it belongs to a project you worked on recently, "
                     "it is in a folder you protected in the Settings, or you have to choose by hand what to "
                     "remove. Gray means your data, and what is unclassified is only shown: those can't be "
                     "selected. Once the reason is gone, analyze again and you can select them."},
          .keywords = {
              "marcar, marco, seleccionar, elegir, sale un candado, bloqueado, bloqueada, no me deja, "
              "motivo, protegida, casilla",
              "select, tick, choose, lock, locked, blocked, not allowed, reason, protected, checkbox"}}});
    return rows;
}

} // namespace lumo::HelpCatalog
