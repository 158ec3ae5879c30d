pragma Singleton
import QtQuick

// The fixed words of the help, of the card after a cleanup and of the release notes, of the history and of growth, of
// the photos and of the explorer.
QtObject {
    function pick(es: string, en: string): string {
        return Qt.uiLanguage === "es" ? es : en;
    }

    readonly property string searchHelp: pick("Buscar en la ayuda", "Search the help")
    readonly property string nothingFound: pick("Nada coincide. Pregúntalo abajo con tus palabras.",
                                                "Nothing matches. Ask it below in your own words.")
    readonly property string showInList: pick("Ver en la lista", "Show in the List")
    readonly property string notInList: pick("Esto no está en la lista: no es nada que se pueda limpiar.",
                                             "This is not in the list: it is nothing that can be cleaned.")
    readonly property string question: pick("Tu pregunta", "Your question")
    readonly property string questionExample: pick("Pregunta con tus palabras", "Ask in your own words")
    readonly property string ask: pick("Preguntar", "Ask")
    readonly property string thinking: pick("Buscando la respuesta…", "Looking for the answer…")
    readonly property string related: pick("En la ayuda", "In the help")
    readonly property string closeAnswer: pick("Quitar la respuesta", "Close the answer")
    readonly property string shown: pick("desplegada", "expanded")
    readonly property string hidden: pick("plegada", "collapsed")

    readonly property string looking: pick("Mirando…", "Looking…")
    readonly property string contents: pick("Contenido", "Contents")
    readonly property string gone: pick("Ya no está.", "It isn't there any more.")
    readonly property string noPreview: pick("De este tipo de archivo no hay vista previa.",
                                             "There is no preview of this kind of file.")

    readonly property string history: pick("Historial", "History")
    readonly property string historyHelp: pick("Qué hizo cada limpieza; devuelve cosas sueltas a su sitio",
                                               "What each cleanup did; puts single things back")
    readonly property string cleanups: pick("Limpiezas", "Cleanups")
    readonly property string whatBecame: pick("Qué fue de cada cosa", "What became of each thing")
    readonly property string putBack: pick("Devolver", "Put Back")
    readonly property string putBackHelp: pick("Vuelve al sitio donde estaba", "It goes back where it was")
    readonly property string growth: pick("Crecimiento", "Growth")
    readonly property string growthLink: pick("Ver su evolución", "Show over Time")
    readonly property string growthHelp: pick("Cuánto ha cambiado cada cosa desde el primer análisis guardado",
                                              "How much each thing has changed since the first stored scan")
    readonly property string nowTakes: pick("ahora %1", "now %1")

    readonly property string photos: pick("Repasar fotos", "Review Photos")
    readonly property string chapters: pick("Apartados", "Chapters")
    readonly property string otherFolder: pick("Otra carpeta…", "Other Folder…")
    readonly property string chooseRest: pick("Elegir el resto", "Choose the Rest")
    readonly property string chooseRestHelp: pick("Elige todas las de este apartado menos las que se propone conservar",
                                                  "Chooses all of this chapter but those that are proposed to stay")
    readonly property string chooseNone: pick("No elegir ninguna", "Choose None")
    readonly property string setAside: pick("Apartar…", "Set Aside…")
    readonly property string setAsideMarked: pick("Apartar los %1 marcados…", "Set Aside the %1 Marked…")
    readonly property string wholeAsideHelp: pick("Lo aparta entero 7 días, tras preguntar",
                                                  "Sets all of it aside for 7 days, after a question")
    readonly property string proposed: pick("se propone conservar", "proposed to stay")
    readonly property string chosenToGo: pick("elegida para apartar", "chosen to be set aside")
    readonly property string film: pick("vídeo", "video")

    readonly property string explore: pick("Explorar", "Explore")
    readonly property string exploreHelp: pick("Recorre las carpetas junto al mapa; cada uno sigue al otro",
                                               "Walk through folders beside the map; each follows the other")
    readonly property string homeFolder: pick("Tu carpeta", "Home")
    readonly property string filter: pick("Filtrar por nombre", "Filter by name")
    readonly property list<string> entryOrders: [pick("Tamaño", "Size"), pick("Nombre", "Name"), pick("Fecha", "Date"),
        pick("Elementos", "Items")]
    readonly property list<string> entryOrderHelps: [
        pick("lo más grande primero", "the largest first"),
        pick("por su nombre", "by name"),
        pick("lo que cambió más tarde primero", "what changed last first"),
        pick("lo que más elementos tiene primero", "the fullest first")
    ]
    readonly property string age: pick("Ver solo lo antiguo", "Show only the old")
    readonly property string ageHelp: pick("Solo lo que no ha cambiado en ese tiempo; la tecla A pasa a la siguiente edad",
                                           "Only what did not change for that long; the A key goes to the next age")
    readonly property string anyAge: pick("Mostrar todo", "Show All")
    readonly property string folder: pick("carpeta", "folder")
    readonly property string mark: pick("Marcar", "Mark")
    readonly property string unmark: pick("Desmarcar", "Unmark")
    readonly property string clearMarks: pick("Quitar marcas", "Clear Marks")
    readonly property string goIn: pick("Entrar", "Go In")
    readonly property string markFirst: pick("Marca antes algo: con la barra espaciadora o con su círculo",
                                             "Mark something first: with the space bar or its circle")
    readonly property string setAsideHelp: pick("Aparta lo marcado 7 días, tras preguntar",
                                                "Sets aside what is marked for 7 days, after a question")

    readonly property string celebration: pick("Limpieza terminada", "Cleanup finished")
    readonly property string saveImage: pick("Guardar imagen", "Save Image")
    readonly property string copyImage: pick("Copiar imagen", "Copy Image")
    readonly property string post: pick("Publicar en X", "Share on X")
    readonly property string postHelp: pick("Abre el navegador con un texto que puedes cambiar",
                                            "Opens the browser with a text that you can change")

    readonly property string news: pick("Novedades", "What's New")
}
