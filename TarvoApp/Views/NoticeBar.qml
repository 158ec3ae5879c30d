import QtQuick
import Tarvo

// What just happened or went wrong.
Banner {
    id: bar

    Accessible.role: Accessible.AlertMessage
    message: App.activity.notice
    shape: "info"
    visible: App.activity.notice.length > 0

    signal detailsWanted

    PlainButton {
        text: Words.details
        visible: App.activity.noticeHasDetails

        onClicked: bar.detailsWanted()
    }
    IconButton {
        name: Words.close
        shape: "close"

        onClicked: App.activity.dismissNotice()
    }
}
