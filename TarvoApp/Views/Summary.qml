import QtQuick
import QtQuick.Layouts
import Tarvo

// The disk in a few sentences.
RowLayout {
    id: summary

    property bool compact: false
    // Something else needs its room.
    property bool crowded: false

    spacing: 8
    visible: App.explaining.summary.length > 0 && !crowded

    Line {
        Accessible.description: App.explaining.summaryByAI ? Words.byAIHelp : ""
        Accessible.name: App.explaining.summary
        Accessible.role: Accessible.StaticText
        Layout.fillWidth: true
        font.pixelSize: summary.compact ? Theme.body : Theme.strong
        lineHeight: summary.compact ? 1.1 : 1.25
        maximumLineCount: 3
        text: Words.unbroken(App.explaining.summary)
        wrapMode: Text.WordWrap
    }
    Rectangle {
        Layout.alignment: Qt.AlignTop
        Layout.topMargin: 2
        color: Theme.raised
        implicitHeight: mark.implicitHeight + 6
        implicitWidth: mark.implicitWidth + 14
        radius: height / 2
        visible: App.explaining.summaryByAI

        Line {
            id: mark

            anchors.centerIn: parent
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            font.weight: Font.DemiBold
            text: Words.byAI
        }
    }
}
