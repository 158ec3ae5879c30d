#pragma once

#include "LumoCore/Inventories/SystemSpace.h"
#include "TarvoApp/App/Ground.h"

#include <QObject>
#include <QString>
#include <QVariantList>

#include <cstdint>
#include <optional>
#include <vector>

namespace tarvo {

/// How full the disk of the home is, and the other disks.
class VolumesDesk final : public QObject {
    Q_OBJECT
    /// For a person; empty while it is not known.
    Q_PROPERTY(QString freeNow READ freeNowText NOTIFY changed)
    Q_PROPERTY(QString capacity READ capacityText NOTIFY changed)
    /// From 0 to 1.
    Q_PROPERTY(double usedShare READ usedShare NOTIFY changed)
    /// True below the limit at which the user wants to be warned.
    Q_PROPERTY(bool spaceIsLow READ isSpaceLow NOTIFY changed)
    /// What the system frees by itself when it is needed; empty for nothing.
    Q_PROPERTY(QString systemSpace READ systemSpaceText NOTIFY changed)
    /// Each with its "name", "path", "total" and "free".
    Q_PROPERTY(QVariantList otherVolumes READ otherVolumeList NOTIFY othersChanged)

  public:
    explicit VolumesDesk(const Ground& ground, QObject* parent = nullptr);

    /// What was seen of the disk of the home just now.
    void take(const lumo::VolumeInfo& volume);
    /// Looks at what the system keeps, and at the other disks, in the background.
    Q_INVOKABLE void refreshVolumes();
    Q_INVOKABLE void openVolume(int index);

    /// As it was seen last.
    [[nodiscard]] lumo::VolumeInfo volume() const { return volume_; }
    /// Absent before the first look.
    [[nodiscard]] std::optional<std::int64_t> freeNow() const { return freeNow_; }
    [[nodiscard]] QString freeNowText() const;
    [[nodiscard]] QString capacityText() const;
    [[nodiscard]] double usedShare() const;
    [[nodiscard]] bool isSpaceLow() const;
    [[nodiscard]] QString systemSpaceText() const;
    [[nodiscard]] QVariantList otherVolumeList() const;

  signals:
    void changed();
    void othersChanged();
    /// The map is to show it.
    void openWanted(const tarvo::Volume& volume);

  private:
    Ground ground_;
    lumo::VolumeInfo volume_;
    std::optional<std::int64_t> freeNow_;
    std::optional<lumo::SystemSpace> systemSpace_;
    std::vector<Volume> others_;
};

} // namespace tarvo
