import QtQuick
import Tarvo

// Before a cleanup.
Question {
    acceptText: App.cleanTitle
    asks: App.confirming
    message: App.confirmationText
    title: Words.question.arg(App.cleanTitle)

    onAccepted: App.clean()
    onRefused: App.cancelClean()
}
