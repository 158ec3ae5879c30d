import QtQuick
import QtQuick.Layouts
import Tarvo

// What the user chose, a tab for each subject. Changes hold at once.
SideWindow {
    id: window

    property alias tab: tabs.current
    // What a change came to; what was said before the window was opened is the main window's.
    property string told: ""

    signal historyWanted
    signal newsWanted

    title: Words.settings

    onVisibleChanged: {
        told = "";
        if (visible) {
            App.holding.refreshHolding();
            App.agents.refresh();
            App.login.refreshLogin();
        }
    }

    Connections {
        function onNoticeChanged() {
            window.told = window.active ? App.activity.notice : "";
        }

        target: App.activity
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Choice {
            id: tabs

            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: 12
            Layout.topMargin: 16
            role: Accessible.PageTab
            words: SettingsWords.tabs

            onChosen: index => tabs.current = index
        }
        Banner {
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            message: App.settings.problem
            shape: "warning"
            visible: message.length > 0
        }
        Banner {
            Accessible.role: Accessible.AlertMessage
            Layout.fillWidth: true
            message: window.told
            shape: "info"
            visible: message.length > 0
        }
        Rectangle {
            Layout.fillWidth: true
            color: Theme.hairline
            implicitHeight: 1
        }
        StackLayout {
            Layout.fillHeight: true
            Layout.fillWidth: true
            currentIndex: tabs.current

            SettingsGeneral {}
            SettingsCleaning {
                onHistoryWanted: window.historyWanted()
            }
            SettingsAlerts {}
            SettingsAI {}
            SettingsAbout {
                onNewsWanted: window.newsWanted()
            }
        }
    }
    Question {
        asks: App.question.isOpenInSettings
    }
}
