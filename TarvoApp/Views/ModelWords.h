#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

namespace tarvo {

/// Fixed words that the windows have from the model: other faces say them too, or they name keys, which each
/// system calls its own way.
class ModelWords : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString firstLook READ firstLook CONSTANT)
    Q_PROPERTY(QString scanAgainHelp READ scanAgainHelp CONSTANT)
    Q_PROPERTY(QString selectSafeHelp READ selectSafeHelp CONSTANT)
    Q_PROPERTY(QString homeFolder READ homeFolder CONSTANT)
    Q_PROPERTY(QString settingsHelp READ settingsHelp CONSTANT)
    Q_PROPERTY(QString previewHelp READ previewHelp CONSTANT)
    Q_PROPERTY(int retentionDays READ retentionDays CONSTANT)

  public:
    /// What the empty window says while the first pass of the first scan runs.
    [[nodiscard]] static QString firstLook();
    [[nodiscard]] static QString scanAgainHelp();
    [[nodiscard]] static QString selectSafeHelp();
    [[nodiscard]] static QString homeFolder();
    [[nodiscard]] static QString settingsHelp();
    [[nodiscard]] static QString previewHelp();
    /// How long what is set aside can be put back.
    [[nodiscard]] static int retentionDays();
};

} // namespace tarvo
