import QtQuick
import Tarvo

// What just happened or went wrong.
Banner {
    id: bar

    Accessible.role: Accessible.AlertMessage
    message: App.notice
    shape: "info"
    visible: App.notice.length > 0

    signal detailsWanted

    PlainButton {
        text: Words.details
        visible: App.noticeHasDetails

        onClicked: bar.detailsWanted()
    }
    IconButton {
        name: Words.close
        shape: "close"

        onClicked: App.dismissNotice()
    }
}
