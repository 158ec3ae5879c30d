import QtQuick
import QtQuick.Layouts
import Tarvo

// How the application looks and when it is there.
SettingsPage {
    SettingsCard {
        SettingRow {
            title: SettingsWords.appearance

            Choice {
                readonly property list<string> values: ["system", "light", "dark"]

                current: values.indexOf(App.settings.appearance)
                words: SettingsWords.appearances

                onChosen: index => App.settings.appearance = values[index]
            }
        }
        SettingRow {
            more: SettingsWords.languageLater
            title: SettingsWords.language

            Choice {
                readonly property list<string> values: ["system", "es", "en"]

                current: values.indexOf(App.settings.language)
                words: SettingsWords.languages

                onChosen: index => App.settings.language = values[index]
            }
        }
        SettingRow {
            title: SettingsWords.textSize

            ScaleSlider {
                Accessible.name: SettingsWords.textSize
                from: 0.8
                stepSize: 0.1
                to: 1.6
                value: App.settings.textScale

                // Whole tenths are stored as they are read.
                onMoved: App.settings.textScale = Math.round(value * 10) / 10
            }
            Line {
                Layout.preferredWidth: Math.round(46 * Theme.scale)
                horizontalAlignment: Text.AlignRight
                text: SettingsWords.percent.arg(Math.round(App.settings.textScale * 100))
            }
        }
    }
    SettingsCard {
        SwitchRow {
            checked: App.settings.showInMenuBar
            enabled: Desktop.hasPanel
            more: enabled ? SettingsWords.trayMore : SettingsWords.noTray
            text: SettingsWords.tray

            onToggled: App.settings.showInMenuBar = checked
        }
        SwitchRow {
            checked: App.login.launchAtLogin
            more: SettingsWords.loginMore
            text: SettingsWords.login

            onToggled: App.login.launchAtLogin = checked
        }
        Line {
            Accessible.name: text
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            Layout.topMargin: -8
            color: Theme.danger
            font.pixelSize: Theme.small
            text: App.login.launchAtLoginError
            visible: text.length > 0
            wrapMode: Text.WordWrap
        }
    }
}
