#include "TarvoApp/App/VolumesDesk.h"

#include "LumoCore/Basics/ByteFormat.h"
#include "LumoCore/Basics/CheckedSum.h"
#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"

namespace tarvo {

using lumo::ByteFormat::string;

VolumesDesk::VolumesDesk(const Ground& ground, QObject* parent) : QObject(parent), ground_(ground) {
    connect(&ground.settings, &Settings::changed, this, &VolumesDesk::changed); // With the limit.
}

void VolumesDesk::take(const lumo::VolumeInfo& volume) {
    if (freeNow_ != volume.availableBytes || volume_ != volume) {
        volume_ = volume;
        freeNow_ = volume.availableBytes;
        emit changed();
    }
}

void VolumesDesk::refreshVolumes() {
    if (ground_.isDemo()) {
        return;
    }
    ground_.background.start(
        [this, mounted = ground_.services.mountedVolumes](const std::stop_token&) -> Background::Apply {
            return [this, volumes = otherVolumes(mounted()), space = lumo::SystemSpace::measure("/")] {
                others_ = volumes;
                systemSpace_ = space;
                emit othersChanged();
                emit changed();
            };
        });
}

void VolumesDesk::openVolume(int index) {
    if (index >= 0 && index < static_cast<int>(others_.size())) {
        emit openWanted(others_[static_cast<std::size_t>(index)]);
    }
}

QString VolumesDesk::freeNowText() const {
    return freeNow_ && volume_.totalBytes > 0 ? shown(string(*freeNow_)) : QString();
}

QString VolumesDesk::capacityText() const {
    return volume_.totalBytes > 0 ? shown(string(volume_.totalBytes)) : QString();
}

double VolumesDesk::usedShare() const {
    return volume_.totalBytes > 0
               ? 1 - static_cast<double>(freeNow_.value_or(0)) / static_cast<double>(volume_.totalBytes)
               : 0;
}

bool VolumesDesk::isSpaceLow() const {
    return volume_.totalBytes > 0 && freeNow_ &&
           *freeNow_ < lumo::checkedProduct(ground_.settings.lowSpaceGB(), std::int64_t{1'000'000'000});
}

QString VolumesDesk::systemSpaceText() const {
    if (!systemSpace_ || systemSpace_->purgeableBytes == 0) {
        return {};
    }
    return shown(lumo::Words{"El sistema libera solo {} más cuando hace falta",
                             "The system frees {} more by itself when needed"}
                     .with(string(systemSpace_->purgeableBytes)));
}

QVariantList VolumesDesk::otherVolumeList() const {
    QVariantList volumes;
    for (const Volume& volume : others_) {
        volumes.push_back(QVariantMap{{"name", shown(volume.name)},
                                      {"path", shown(volume.path)},
                                      {"total", shown(string(volume.total))},
                                      {"free", shown(string(volume.free))}});
    }
    return volumes;
}

} // namespace tarvo
