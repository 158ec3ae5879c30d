import QtQuick
import QtQuick.Layouts
import Tarvo

// The agents that the application offers itself to.
SettingsCard {
    id: card

    explanation: SettingsWords.agentsMore.arg(ModelWords.retentionDays)
    heading: SettingsWords.agents

    component Link: SettingRow {
        id: link

        required property bool isLinked

        signal connectWanted
        signal disconnectWanted

        PlainButton {
            Accessible.description: link.title
            enabled: !App.agents.busy
            text: link.isLinked ? SettingsWords.disconnect : SettingsWords.connect

            onClicked: link.isLinked ? link.disconnectWanted() : link.connectWanted()
        }
    }
    component Snippet: ColumnLayout {
        id: snippet

        required property string title
        required property string words

        Layout.fillWidth: true
        spacing: 4

        RowLayout {
            spacing: 16

            Line {
                Layout.fillWidth: true
                text: snippet.title
            }
            PlainButton {
                Accessible.description: snippet.title
                text: SettingsWords.copy

                onClicked: App.agents.copy(snippet.words)
            }
        }
        Line {
            Layout.fillWidth: true
            color: Theme.secondaryText
            font.family: "monospace"
            font.pixelSize: Theme.small
            text: snippet.words
            wrapMode: Text.WrapAnywhere
        }
    }

    Link {
        isLinked: App.agents.isInClaudeCode
        more: SettingsWords.claudeCodeMore
        title: SettingsWords.claudeCode

        onConnectWanted: App.agents.connectClaudeCode()
        onDisconnectWanted: App.agents.disconnectClaudeCode()
    }
    Link {
        isLinked: App.agents.isInClaudeDesktop
        more: SettingsWords.claudeDesktopMore
        title: SettingsWords.claudeDesktop

        onConnectWanted: App.agents.connectClaudeDesktop()
        onDisconnectWanted: App.agents.disconnectClaudeDesktop()
    }
    Line {
        Accessible.name: text
        Accessible.role: Accessible.AlertMessage
        Layout.fillWidth: true
        color: App.agents.hasFailed ? Theme.danger : Theme.text
        font.pixelSize: Theme.small
        font.weight: Font.DemiBold
        text: App.agents.busy ? SettingsWords.connecting : App.agents.message
        visible: text.length > 0
        wrapMode: Text.WordWrap
    }
    Snippet {
        title: "Codex"
        words: App.agents.codexCommand
    }
    Snippet {
        title: SettingsWords.otherAgents
        words: App.agents.jsonSnippet
    }
}
