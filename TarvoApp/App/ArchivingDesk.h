#pragma once

#include "TarvoApp/App/Ground.h"
#include "TarvoApp/App/PlacesDesk.h"
#include "TarvoApp/App/ScanningDesk.h"
#include "TarvoModel/Flows/Archiving.h"

#include <QObject>
#include <QString>

#include <expected>
#include <string>

namespace tarvo {

/// Replaces one item by its archive.
class ArchivingDesk final : public QObject {
    Q_OBJECT

  public:
    ArchivingDesk(const Ground& ground, const PlacesDesk& places, ScanningDesk& scanning,
                  QObject* parent = nullptr);

    /// Finds out what archiving the row's or tile's one path would save; then asks, or says why not.
    Q_INVOKABLE void requestArchive(const QString& key);

  private:
    void archive(const asked::Archive& agreed);
    void archived(const std::string& path, const std::expected<Archived, NotArchived>& result);

    Ground ground_;
    const PlacesDesk& places_;
    ScanningDesk& scanning_;
};

} // namespace tarvo
