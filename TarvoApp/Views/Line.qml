import QtQuick
import Tarvo

// A text of the window. Names from the disk are never read as markup.
Text {
    color: Theme.text
    elide: Text.ElideRight
    font.pixelSize: Theme.body
    textFormat: Text.PlainText
}
