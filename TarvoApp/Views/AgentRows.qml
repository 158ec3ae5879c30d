import QtQuick
import QtQuick.Layouts
import Tarvo

// The agents that the application offers itself to.
SettingsCard {
    id: card

    explanation: SettingsWords.agentsMore.arg(ModelWords.retentionDays)
    heading: SettingsWords.agents

    component Said: Line {
        Accessible.role: Accessible.AlertMessage
        Layout.fillWidth: true
        color: App.agents.hasFailed ? Theme.danger : Theme.text
        font.pixelSize: Theme.small
        font.weight: Font.DemiBold
        visible: text.length > 0
        wrapMode: Text.Wrap
    }
    component Link: ColumnLayout {
        id: link

        required property bool isLinked
        required property string title
        required property string more
        required property bool busy
        required property string message

        signal connectWanted
        signal disconnectWanted

        Layout.fillWidth: true
        spacing: 4

        SettingRow {
            more: link.more
            title: link.title

            PlainButton {
                Accessible.description: link.title
                enabled: !App.agents.busy
                text: link.isLinked ? SettingsWords.disconnect : SettingsWords.connect

                onClicked: link.isLinked ? link.disconnectWanted() : link.connectWanted()
            }
        }
        Said {
            text: link.busy ? SettingsWords.connecting : link.message
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
        busy: App.agents.isCodeBusy
        isLinked: App.agents.isInClaudeCode
        message: App.agents.codeMessage
        more: SettingsWords.claudeCodeMore
        title: SettingsWords.claudeCode

        onConnectWanted: App.agents.connectClaudeCode()
        onDisconnectWanted: App.agents.disconnectClaudeCode()
    }
    Link {
        busy: App.agents.isDesktopBusy
        isLinked: App.agents.isInClaudeDesktop
        message: App.agents.desktopMessage
        more: SettingsWords.claudeDesktopMore
        title: SettingsWords.claudeDesktop

        onConnectWanted: App.agents.connectClaudeDesktop()
        onDisconnectWanted: App.agents.disconnectClaudeDesktop()
    }
    Said {
        text: App.agents.copyMessage
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
