import QtQuick
import Tarvo

// Asks where reports and plans are, or are to be.
Item {
    id: files

    function open(): void {
        choice.ask(FileChoice.Opening, Words.openFile, "", place => App.files.open(place));
    }
    function saveReport(): void {
        choice.ask(FileChoice.Saving, Words.saveReport, App.files.reportName(), place => App.files.saveReport(place));
    }
    function savePlan(): void {
        choice.ask(FileChoice.Saving, Words.savePlan, App.files.planName(), place => App.files.savePlan(place));
    }
    function leave(): void {
        choice.close();
    }

    readonly property bool asks: choice.visible

    FileChoice {
        id: choice
    }
}
