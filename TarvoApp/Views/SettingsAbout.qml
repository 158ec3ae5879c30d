import QtQuick
import QtQuick.Layouts
import Tarvo

// Which program this is, and what it promises.
SettingsPage {
    id: page

    signal newsWanted

    SettingsCard {
        Line {
            Layout.fillWidth: true
            font.pixelSize: Theme.title
            font.weight: Font.DemiBold
            text: "Tarvo AI"
        }
        Line {
            Layout.fillWidth: true
            Layout.topMargin: -10
            color: Theme.secondaryText
            text: SettingsWords.version.arg(ReleaseNotes.version)
        }
        Line {
            Layout.fillWidth: true
            lineHeight: 1.25
            text: SettingsWords.privacy
            wrapMode: Text.WordWrap
        }
        PlainButton {
            text: SettingsWords.whatsNew

            onClicked: page.newsWanted()
        }
    }
}
