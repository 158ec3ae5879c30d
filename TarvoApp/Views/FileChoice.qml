import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Tarvo

// Asks for a file to open, a file to save to, or a folder. Of our own make, since the desktop's dialog is often not
// there, and Qt's in its place knows neither our colors nor our language.
T.Dialog {
    id: choice

    // A dialog has names of its own for buttons, so these must be others.
    enum Kind { Opening, Saving, Folders }

    property int kind: FileChoice.Opening
    // What is done with the place.
    property var take: null
    // Kept until this is closed: what is asked then has the focus for itself.
    property var chosen: null
    readonly property var current: list.currentIndex >= 0 ? App.picking.entries[list.currentIndex] : undefined
    readonly property bool replaces: kind === FileChoice.Saving && App.picking.entries.length > 0 && App.picking.isTaken(name.text)
    readonly property bool ready: kind === FileChoice.Folders || (kind === FileChoice.Saving ? name.text.trim().length > 0
                                                                                        : current !== undefined)

    function ask(wanted: int, heading: string, suggested: string, then: var) {
        kind = wanted;
        title = heading;
        name.text = suggested;
        take = then;
        App.picking.begin(wanted === FileChoice.Folders ? "" : ".json");
        open();
    }
    function accept() {
        if (kind === FileChoice.Opening && current && current.isFolder) {
            App.picking.enter(current.key);
            return;
        }
        chosen = kind === FileChoice.Folders ? App.picking.here()
               : kind === FileChoice.Saving ? App.picking.placeNamed(name.text) : App.picking.placeOf(current.key);
        close();
    }
    // Return, or a second click.
    function goOn() {
        if (current && current.isFolder)
            App.picking.enter(current.key);
        else if (current && kind === FileChoice.Saving)
            name.text = current.name;
        else if (ready && kind === FileChoice.Opening)
            accept();
    }

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.CloseOnEscape
    dim: true
    focus: true
    implicitHeight: contentHeight + topPadding + bottomPadding
    modal: true
    padding: 24
    parent: T.Overlay.overlay
    width: Math.min(Math.round(560 * Theme.scale), (parent ? parent.width : 900) - 48)

    onAboutToShow: contentItem.parent.Accessible.name = title
    onClosed: {
        const place = chosen;
        chosen = null;
        if (place !== null)
            take(place);
    }
    onOpened: kind === FileChoice.Saving ? name.forceActiveFocus(Qt.TabFocusReason) : list.forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.surface
        radius: Theme.cardRadius
    }
    contentItem: ColumnLayout { // qmllint disable deferred-property-id
        spacing: 12

        Line {
            Layout.fillWidth: true
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            text: choice.title
        }
        RowLayout {
            spacing: 8

            IconButton {
                enabled: App.picking.hasFolderAbove
                name: Words.folderAbove
                shape: "up"

                onClicked: App.picking.leave()
            }
            Line {
                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: App.picking.folder
            }
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.preferredHeight: Math.max(100, Math.min(280 * Theme.scale, (choice.parent ? choice.parent.height : 600)
                                                          - 270 * Theme.scale))
            border.color: list.activeFocus ? Theme.accent : Theme.hairline
            border.width: list.activeFocus ? 2 : 1
            color: Theme.window
            radius: Theme.buttonRadius

            ListView {
                id: list

                Accessible.name: App.picking.folder
                Accessible.role: Accessible.List
                activeFocusOnTab: true
                anchors.fill: parent
                anchors.margins: 4
                boundsBehavior: Flickable.StopAtBounds
                clip: true
                highlightMoveDuration: 0
                keyNavigationEnabled: true
                model: App.picking.entries

                Keys.onBackPressed: App.picking.leave()
                Keys.onEnterPressed: choice.goOn()
                Keys.onPressed: event => {
                    const page = Math.max(1, Math.floor(height / Theme.controlHeight) - 1);
                    const steps = new Map([[Qt.Key_Home, -count], [Qt.Key_End, count], [Qt.Key_PageUp, -page],
                                           [Qt.Key_PageDown, page]]);
                    event.accepted = event.key === Qt.Key_Backspace || steps.has(event.key);
                    if (event.key === Qt.Key_Backspace && App.picking.hasFolderAbove)
                        App.picking.leave();
                    else if (steps.has(event.key) && count > 0)
                        currentIndex = Math.max(0, Math.min(count - 1, currentIndex + steps.get(event.key)));
                }
                Keys.onReturnPressed: choice.goOn()
                onModelChanged: currentIndex = count > 0 ? 0 : -1

                ScrollBar.vertical: ScrollBar {}
                delegate: FileChoiceRow {
                    isCurrent: ListView.isCurrentItem
                    width: list.width // qmllint disable unqualified

                    onPressed: {
                        list.currentIndex = index; // qmllint disable unqualified
                        list.forceActiveFocus(Qt.MouseFocusReason); // qmllint disable unqualified
                    }
                    onWanted: choice.goOn() // qmllint disable unqualified
                }
            }
            Line {
                anchors.centerIn: parent
                color: Theme.secondaryText
                text: App.picking.isBusy ? SideWords.looking : choice.kind === FileChoice.Folders ? Words.noFolders : Words.noFiles
                visible: list.count === 0
            }
        }
        WordField {
            id: name

            Layout.fillWidth: true
            name: Words.fileName
            visible: choice.kind === FileChoice.Saving

            Keys.onReturnPressed: if (choice.ready && !choice.replaces) choice.accept()
        }
        Line {
            Layout.fillWidth: true
            color: Theme.secondaryText
            text: Words.isTaken
            visible: choice.replaces
            wrapMode: Text.WordWrap
        }
        RowLayout {
            Layout.alignment: Qt.AlignRight
            spacing: 8

            PlainButton {
                text: Words.cancel

                onClicked: choice.close()
            }
            PlainButton {
                enabled: choice.ready
                kind: choice.replaces ? PlainButton.Danger : PlainButton.Primary
                text: choice.kind === FileChoice.Folders ? Words.thisFolder
                                                        : choice.replaces ? Words.replace
                                                                          : choice.kind === FileChoice.Saving ? Words.save : Words.openOutside

                onClicked: choice.accept()
            }
        }
    }
}
