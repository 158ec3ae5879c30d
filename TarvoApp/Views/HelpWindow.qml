import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Tarvo

// The fixed questions with their answers, and a place to ask one's own.
SideWindow {
    id: window

    title: Words.help

    onVisibleChanged: if (visible) search.forceActiveFocus(Qt.OtherFocusReason)

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        WordField {
            id: search

            Layout.bottomMargin: 12
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 16
            name: SideWords.searchHelp
            placeholderText: SideWords.searchHelp
            shape: "search"
            text: App.help.helpSearch

            Keys.onEscapePressed: event => {
                event.accepted = text.length > 0;
                App.help.helpSearch = "";
            }
            Keys.onDownPressed: topics.goTo(0)
            onTextEdited: App.help.helpSearch = text
        }
        Rectangle {
            Layout.fillWidth: true
            color: Theme.hairline
            implicitHeight: 1
        }
        HelpTopics {
            id: topics

            Layout.fillHeight: true
            Layout.fillWidth: true

            onLeaveWanted: search.forceActiveFocus(Qt.BacktabFocusReason)
        }
        Rectangle {
            Layout.fillWidth: true
            color: Theme.hairline
            implicitHeight: 1
        }
        HelpAnswerCard {
            Layout.fillWidth: true
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 12
        }
        RowLayout {
            Layout.bottomMargin: 16
            Layout.leftMargin: 24
            Layout.rightMargin: 24
            Layout.topMargin: 12
            spacing: 8

            WordField {
                id: question

                Layout.fillWidth: true
                name: SideWords.question
                placeholderText: SideWords.questionExample
                text: App.help.helpQuestion

                onAccepted: App.help.ask()
                onTextEdited: App.help.helpQuestion = text
            }
            PlainButton {
                enabled: question.text.trim().length > 0
                kind: PlainButton.Primary
                text: SideWords.ask

                onClicked: App.help.ask()
            }
        }
    }
}
