import QtQuick
import QtQuick.Layouts
import Tarvo

// What a setting is called, and what it does.
ColumnLayout {
    id: texts

    required property string title
    property string more: ""
    property color moreColor: Theme.secondaryText
    // Within what has the same name itself.
    property bool silent: false

    spacing: 2

    Line {
        Accessible.ignored: texts.silent || text.length === 0
        Layout.fillWidth: true
        text: texts.title
        wrapMode: Text.WordWrap
    }
    Line {
        Accessible.ignored: texts.silent || text.length === 0
        Layout.fillWidth: true
        color: texts.moreColor
        font.pixelSize: Theme.small
        lineHeight: 1.15
        text: texts.more
        visible: text.length > 0
        wrapMode: Text.WordWrap
    }
}
