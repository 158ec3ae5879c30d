import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// What this version brings.
SideWindow {
    id: window

    title: SideWords.news

    onVisibleChanged: if (visible) close.forceActiveFocus(Qt.OtherFocusReason)

    ColumnLayout {
        anchors.bottomMargin: 12
        anchors.fill: parent
        anchors.leftMargin: 24
        anchors.rightMargin: 24
        anchors.topMargin: 20
        spacing: 16

        Flickable {
            Layout.fillHeight: true
            Layout.fillWidth: true
            boundsBehavior: Flickable.StopAtBounds
            clip: true
            contentHeight: notes.implicitHeight
            contentWidth: width

            ScrollBar.vertical: ScrollBar {
                policy: notes.implicitHeight > parent.height ? ScrollBar.AlwaysOn : ScrollBar.AlwaysOff
                width: 8
            }

            Line {
                id: notes

                lineHeight: 1.25
                text: ReleaseNotes.text
                // Ours, not from the disk.
                textFormat: Text.MarkdownText
                width: parent.width - 12
                wrapMode: Text.WordWrap
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.leftMargin: -24
            Layout.rightMargin: -24
            Layout.topMargin: -16
            color: Theme.hairline
            implicitHeight: 1
        }
        PlainButton {
            id: close

            Layout.alignment: Qt.AlignRight
            Layout.topMargin: -4
            focus: true
            kind: PlainButton.Primary
            text: Words.close

            onClicked: window.close()
        }
    }
}
