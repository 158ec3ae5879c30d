import QtQuick
import QtQuick.Layouts
import Tarvo

// The language model on this computer, and the agents that may use the application.
SettingsPage {
    SettingsCard {
        heading: SettingsWords.model

        SwitchRow {
            checked: App.settings.aiSummaryEnabled
            more: SettingsWords.aiSummaryMore
            text: SettingsWords.aiSummary

            onToggled: {
                App.settings.aiSummaryEnabled = checked;
                App.explaining.refreshSummary();
            }
        }
        SwitchRow {
            checked: App.settings.autoExplain
            more: SettingsWords.autoExplainMore
            text: SettingsWords.autoExplain

            onToggled: App.settings.autoExplain = checked
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: 6

            SettingText {
                Layout.fillWidth: true
                more: SettingsWords.placeMore
                title: SettingsWords.place
            }
            WordField {
                id: place

                Layout.fillWidth: true
                name: SettingsWords.place
                placeholderText: SettingsWords.placeExample
                text: App.settings.localModel

                // What is no place is refused, and the one that holds comes back.
                onEditingFinished: {
                    App.settings.localModel = text.trim();
                    text = Qt.binding(() => App.settings.localModel);
                    App.explaining.refreshSummary();
                }
            }
            Line {
                Layout.fillWidth: true
                color: Theme.secondaryText
                font.pixelSize: Theme.small
                text: SettingsWords.aiUnavailable.arg(App.explaining.aiUnavailableReason)
                visible: App.explaining.aiUnavailableReason.length > 0
                wrapMode: Text.WordWrap
            }
        }
    }
    AgentRows {}
}
