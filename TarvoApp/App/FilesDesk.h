#pragma once

#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoApp/App/TickedDesk.h"
#include "TarvoModel/Flows/SavedFiles.h"

#include <QObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <string>

namespace tarvo {

/// Reports and plans in files: what is shown or ticked is saved, and what was saved is opened again. An
/// opened report takes the place of the one that is shown; an opened plan is asked about as a cleanup is.
class FilesDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool mayOpen READ mayOpen NOTIFY changed)
    Q_PROPERTY(bool maySaveReport READ maySaveReport NOTIFY changed)
    Q_PROPERTY(bool maySavePlan READ maySavePlan NOTIFY changed)

  public:
    FilesDesk(const Ground& ground, ScanningDesk& scanning, const TickedDesk& ticked,
              QObject* parent = nullptr);

    /// Each of a file that a dialog of the desktop chose; where it may not be done now nothing happens.
    Q_INVOKABLE void open(const QUrl& file);
    Q_INVOKABLE void saveReport(const QUrl& file);
    /// Saves what is ticked.
    Q_INVOKABLE void savePlan(const QUrl& file);
    /// What the files are called unless the user says otherwise.
    Q_INVOKABLE [[nodiscard]] QString reportName() const;
    Q_INVOKABLE [[nodiscard]] QString planName() const;

    [[nodiscard]] bool mayOpen() const { return !ground_.activity.isBusy(); }
    [[nodiscard]] bool maySaveReport() const { return mayOpen() && scanning_.hasReport(); }
    [[nodiscard]] bool maySavePlan() const { return mayOpen() && ticked_.hasTicked(); }

  signals:
    void changed();

  private:
    void opened(const lumo::Result<OpenedFile>& file, const std::string& path);
    void askAbout(const OpenedPlan& plan, const std::string& name);
    void save(const QUrl& file, const std::function<lumo::Result<void>(const std::string& path)>& write);

    Ground ground_;
    ScanningDesk& scanning_;
    const TickedDesk& ticked_;
};

} // namespace tarvo
