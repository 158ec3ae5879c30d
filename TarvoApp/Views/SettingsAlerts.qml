import QtQuick
import Tarvo

// When the application speaks up by itself.
SettingsPage {
    SettingsCard {
        SwitchRow {
            checked: App.settings.notifyLowSpace
            more: SettingsWords.notifyMore
            text: SettingsWords.notify

            onToggled: App.settings.notifyLowSpace = checked
        }
        SettingRow {
            enabled: App.settings.notifyLowSpace
            more: SettingsWords.lowSpaceMore
            opacity: enabled ? 1 : 0.45
            title: SettingsWords.lowSpace

            Stepper {
                from: 1
                name: SettingsWords.lowSpace
                to: 1000
                unit: SettingsWords.gigabytes
                value: App.settings.lowSpaceGB

                onValueModified: App.settings.lowSpaceGB = value
            }
        }
    }
}
