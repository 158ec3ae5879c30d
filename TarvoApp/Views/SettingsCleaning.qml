import QtQuick
import QtQuick.Layouts
import Tarvo

// What cleanups leave alone, what happens by itself, and what was set aside.
SettingsPage {
    id: page

    signal historyWanted

    SettingsCard {
        SettingRow {
            more: SettingsWords.activeDaysMore
            title: SettingsWords.activeDays

            Stepper {
                from: 0
                name: SettingsWords.activeDays
                oneUnit: SettingsWords.day
                to: 36500
                unit: SettingsWords.days
                value: App.settings.activeProjectDays

                onValueModified: App.settings.activeProjectDays = value
            }
        }
    }
    ProtectedFolders {}
    SettingsCard {
        SwitchRow {
            checked: App.settings.autoCleanWeekly
            more: SettingsWords.weeklyMore
            text: SettingsWords.weekly

            onToggled: App.monitor.setAutoCleanWeekly(checked)
        }
        Line {
            Layout.fillWidth: true
            Layout.topMargin: -8
            font.pixelSize: Theme.small
            text: App.monitor.autoCleanStatus
            visible: text.length > 0
            wrapMode: Text.WordWrap
        }
        Line {
            Accessible.name: text
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            Layout.topMargin: -8
            color: Theme.secondaryText
            font.pixelSize: Theme.small
            text: App.monitor.autoCleanProblem
            visible: text.length > 0
            wrapMode: Text.WordWrap
        }
    }
    SettingsCard {
        heading: SettingsWords.held

        SettingRow {
            more: App.holding.holdingBytes > 0 ? App.holding.holdingText : ""
            title: App.holding.holdingBytes > 0 ? App.holding.holdingTitle : SettingsWords.heldEmpty

            PlainButton {
                help: SideWords.historyHelp
                kind: PlainButton.Link
                text: SideWords.history

                onClicked: page.historyWanted()
            }
            PlainButton {
                enabled: !App.activity.isBusy
                text: Words.emptyNow
                visible: App.holding.holdingBytes > 0

                onClicked: App.holding.requestEmpty(true)
            }
        }
    }
}
