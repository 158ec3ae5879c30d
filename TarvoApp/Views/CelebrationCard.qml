import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Tarvo

// What a cleanup freed, once, with the picture that may be shown to others.
T.Dialog {
    id: card

    readonly property real room: (card.parent?.width ?? 900) - 48

    anchors.centerIn: T.Overlay.overlay
    closePolicy: T.Popup.CloseOnEscape
    focus: true
    modal: true
    padding: 24
    implicitHeight: contentHeight + topPadding + bottomPadding
    parent: T.Overlay.overlay
    title: SideWords.celebration
    visible: App.celebrating.celebration
    width: Math.min(Math.max(680, buttons.implicitWidth + 2 * padding), room)

    onClosed: if (App.celebrating.celebration) App.celebrating.closeCelebration()
    onOpened: close.forceActiveFocus(Qt.TabFocusReason)

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        border.color: Theme.hairline
        color: Theme.surface
        radius: Theme.cardRadius
    }
    contentItem: ColumnLayout { // qmllint disable deferred-property-id
        spacing: 16

        // Whatever is pressed closes, except the keys that lead to the other buttons and press them.
        Keys.onPressed: event => {
            const leads = [Qt.Key_Tab, Qt.Key_Backtab, Qt.Key_Space, Qt.Key_Return, Qt.Key_Enter, Qt.Key_Shift,
                           Qt.Key_Control, Qt.Key_Alt, Qt.Key_Meta];
            if (!leads.includes(event.key)) {
                event.accepted = true;
                App.celebrating.closeCelebration();
            }
        }

        CardPicture {
            Accessible.name: App.celebrating.celebrationText
            Accessible.role: Accessible.Graphic
            Layout.alignment: Qt.AlignHCenter
            Layout.preferredHeight: width * 630 / 1200
            Layout.preferredWidth: 632
            image: Theme.dark ? App.celebrating.darkImage : App.celebrating.celebrationImage
        }
        Line {
            Layout.fillWidth: true
            color: Theme.secondaryText
            lineHeight: 1.2
            text: App.celebrating.celebrationText
            wrapMode: Text.WordWrap
        }
        RowLayout {
            id: buttons

            Layout.alignment: Qt.AlignRight
            spacing: 8

            PlainButton {
                text: SideWords.saveImage

                onClicked: App.celebrating.saveShareImage(Theme.dark)
            }
            PlainButton {
                text: SideWords.copyImage

                onClicked: App.celebrating.copyCelebrationImage(Theme.dark)
            }
            PlainButton {
                help: SideWords.postHelp
                text: SideWords.post

                onClicked: Qt.openUrlExternally("https://x.com/intent/post?text="
                                                + encodeURIComponent(App.celebrating.celebrationText))
            }
            PlainButton {
                id: close

                focus: true
                kind: PlainButton.Primary
                text: Words.close

                onClicked: App.celebrating.closeCelebration()
            }
        }
    }
}
