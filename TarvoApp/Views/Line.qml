import QtQuick
import Tarvo

// A text of the window, which a screen reader finds where it stands. What only repeats the name of a thing around it
// is ignored there. Names from the disk are never read as markup.
Text {
    Accessible.ignored: text.length === 0
    Accessible.name: text
    Accessible.role: Accessible.StaticText
    color: Theme.text
    elide: Text.ElideRight
    font.pixelSize: Theme.body
    textFormat: Text.PlainText
}
