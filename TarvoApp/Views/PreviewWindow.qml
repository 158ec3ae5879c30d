import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// What one thing holds, without another program.
SideWindow {
    id: window

    readonly property int kind: App.preview.kind

    first: close
    height: 620
    title: App.preview.title.length > 0 ? App.preview.title : Words.preview

    onVisibleChanged: if (!visible) App.preview.forget()

    component Quiet: Line {
        anchors.centerIn: parent
        color: Theme.secondaryText
        horizontalAlignment: Text.AlignHCenter
        width: Math.min(parent.width - 48, Math.round(360 * Theme.scale))
        wrapMode: Text.WordWrap
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        ColumnLayout {
            Layout.bottomMargin: 12
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 16
            spacing: 4

            RowLayout {
                spacing: 16

                Line {
                    Layout.fillWidth: true
                    elide: Text.ElideMiddle
                    font.pixelSize: Theme.title
                    font.weight: Font.DemiBold
                    text: App.preview.title
                }
                Line {
                    elide: Text.ElideNone
                    font.pixelSize: Theme.title
                    text: App.preview.bytes
                }
            }
            Line {
                Layout.fillWidth: true
                color: Theme.secondaryText
                elide: Text.ElideMiddle
                text: App.preview.place
                visible: text.length > 0
            }
            Line {
                Layout.fillWidth: true
                color: Theme.secondaryText
                text: App.preview.facts
                visible: text.length > 0
                wrapMode: Text.WordWrap
            }
        }
        Rectangle {
            Layout.fillHeight: true
            Layout.fillWidth: true
            color: Theme.surface

            PreviewContents {
                anchors.fill: parent
                anchors.bottomMargin: 12
                anchors.leftMargin: 24
                anchors.rightMargin: 12
                anchors.topMargin: 12
                focus: true
                visible: window.kind === PreviewKinds.Folder
            }
            ScrollView {
                anchors.fill: parent
                anchors.bottomMargin: 12
                anchors.leftMargin: 18
                anchors.rightMargin: 12
                anchors.topMargin: 12
                clip: true
                visible: window.kind === PreviewKinds.Text

                TextArea {
                    Accessible.name: App.preview.title
                    background: null
                    color: Theme.text
                    font.family: "monospace"
                    font.pixelSize: Theme.body
                    readOnly: true
                    selectByMouse: true
                    selectedTextColor: Theme.accentInk
                    selectionColor: Theme.accent
                    text: App.preview.text + (App.preview.isCut ? "…" : "")
                    textFormat: TextEdit.PlainText
                    wrapMode: TextEdit.Wrap
                }
            }
            CardPicture {
                // Never larger than it is.
                readonly property size whole: App.preview.pictureSize
                readonly property real share: Math.max(0, Math.min(1, (parent.width - 24) / Math.max(1, whole.width),
                                                                   (parent.height - 24) / Math.max(1, whole.height)))

                Accessible.name: App.preview.title
                Accessible.role: Accessible.Graphic
                anchors.centerIn: parent
                height: whole.height * share
                image: App.preview.picture
                visible: window.kind === PreviewKinds.Picture
                width: whole.width * share
            }
            Quiet {
                text: App.preview.isBusy ? SideWords.looking : window.kind === PreviewKinds.Missing ? SideWords.gone
                                                                                         : SideWords.noPreview
                visible: window.kind === PreviewKinds.Unknown || window.kind === PreviewKinds.File || window.kind === PreviewKinds.Other
                         || window.kind === PreviewKinds.Missing
            }
        }
        Rectangle {
            Layout.fillWidth: true
            color: Theme.hairline
            implicitHeight: 1
        }
        RowLayout {
            Layout.bottomMargin: 12
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 12
            spacing: 8

            Item {
                Layout.fillWidth: true
            }
            PlainButton {
                readonly property var row: App.places.previewedRow

                enabled: row.tick === true && !App.activity.isBusy
                help: row.reason || ""
                text: Words.tickText(row.ticked === true, row.part ? row.title : "")
                visible: row.tick === true || (row.reason || "").length > 0

                onClicked: App.places.toggle(row.key)
            }
            PlainButton {
                enabled: App.cleaning.mayClean
                help: SideWords.wholeAsideHelp
                text: SideWords.setAside
                visible: App.places.offers([App.preview.key]).aside === true && window.kind !== PreviewKinds.Missing

                onClicked: {
                    // The question is the main window's.
                    const key = App.preview.key;
                    window.close();
                    App.places.setAside([key]);
                }
            }
            PlainButton {
                enabled: Desktop.hasPlace(App.preview.key)
                text: Words.showInFiles

                onClicked: Desktop.showInFiles(App.preview.key)
            }
            PlainButton {
                id: close

                text: Words.close

                onClicked: window.close()
            }
        }
    }
}
