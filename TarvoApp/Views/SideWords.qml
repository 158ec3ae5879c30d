pragma Singleton
import QtQuick

// The fixed words of the help, of the card after a cleanup and of the release notes.
QtObject {
    function pick(es: string, en: string): string {
        return Qt.uiLanguage === "es" ? es : en;
    }

    readonly property string searchHelp: pick("Buscar en la ayuda", "Search the help")
    readonly property string nothingFound: pick("Nada coincide. Pregúntalo abajo con tus palabras.",
                                                "Nothing matches. Ask it below in your own words.")
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

    readonly property string celebration: pick("Limpieza terminada", "Cleanup finished")
    readonly property string saveImage: pick("Guardar imagen", "Save Image")
    readonly property string copyImage: pick("Copiar imagen", "Copy Image")
    readonly property string post: pick("Publicar en X", "Share on X")
    readonly property string postHelp: pick("Abre el navegador con un texto que puedes cambiar",
                                            "Opens the browser with a text that you can change")

    readonly property string news: pick("Novedades", "What's New")
}
