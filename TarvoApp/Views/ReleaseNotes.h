#pragma once

#include <QObject>
#include <QString>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace tarvo {

class AppModel;

/// What the running version brings, told once to everybody who has used an earlier one.
class ReleaseNotes : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString version READ version CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)

  public:
    static ReleaseNotes* create(QQmlEngine* engine, QJSEngine*);

    explicit ReleaseNotes(AppModel& app, QObject* parent = nullptr);

    /// True when the notes are to be shown now; they count as seen from then on. Whoever meets the welcome
    /// for the first time is told nothing, then or later: all of it is new to them.
    Q_INVOKABLE bool takeDue();

    [[nodiscard]] static QString version();
    /// In Markdown and the interface language; empty when there are none.
    [[nodiscard]] static QString text();

  private:
    AppModel& app_;
};

} // namespace tarvo
