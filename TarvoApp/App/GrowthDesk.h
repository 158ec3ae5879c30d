#pragma once

#include "LumoCore/History/GrowthTracker.h"

#include <QObject>
#include <QString>
#include <QVariantList>

namespace tarvo {

/// What grew since an earlier look at the disk.
class GrowthDesk final : public QObject {
    Q_OBJECT
    /// Each with its "key", "name", "delta" and "now".
    Q_PROPERTY(QVariantList growth READ growth NOTIFY changed)
    Q_PROPERTY(QString growthSince READ growthSince NOTIFY changed)

  public:
    explicit GrowthDesk(QObject* parent) : QObject(parent) {}

    void take(lumo::Growth growth);

    [[nodiscard]] QVariantList growth() const;
    [[nodiscard]] QString growthSince() const;

  signals:
    void changed();

  private:
    lumo::Growth growth_;
};

} // namespace tarvo
