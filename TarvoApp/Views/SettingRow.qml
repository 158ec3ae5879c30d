import QtQuick
import QtQuick.Layouts
import Tarvo

// A setting with what changes it at its right.
RowLayout {
    id: row

    required property string title
    property string more: ""

    Layout.fillWidth: true
    spacing: 16

    SettingText {
        Layout.fillWidth: true
        more: row.more
        title: row.title
    }
}
