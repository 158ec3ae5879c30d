import QtQuick
import Tarvo

// What just happened or went wrong.
Banner {
    id: bar

    Accessible.role: Accessible.AlertMessage
    message: App.notice
    shape: "info"
    visible: App.notice.length > 0

    IconButton {
        name: Words.close
        shape: "close"

        onClicked: App.dismissNotice()
    }
}
