#pragma once

#include "TarvoApp/App/PanelWatch.h"

#include <QColor>
#include <QDBusVariant>
#include <QObject>
#include <QString>
#include <QUrl>
#include <QWindow>
#include <QtQmlIntegration/qqmlintegration.h>

class QJSEngine;
class QQmlEngine;

namespace tarvo {

class AppModel;

/// What a window takes from the desktop around it: language, appearance, motion, the accent color, and the
/// way to the file manager and the clipboard. Answers of the desktop arrive later and are told by `changed`.
class Desktop : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString language READ language CONSTANT)
    Q_PROPERTY(bool isDark READ isDark NOTIFY changed)
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY changed)
    Q_PROPERTY(bool hasPanel READ hasPanel NOTIFY changed)
    /// True when the application was started to be in the panel alone.
    Q_PROPERTY(bool beginsInPanel READ beginsInPanel CONSTANT)
    Q_PROPERTY(QColor accent READ accent NOTIFY changed)
    Q_PROPERTY(bool accentWantsDarkInk READ accentWantsDarkInk NOTIFY changed)

  public:
    /// The name under which whoever made the engine has left the object there.
    static constexpr const char* property = "desktop";
    static Desktop* create(QQmlEngine* engine, QJSEngine*);

    explicit Desktop(AppModel& app, QObject* parent = nullptr);

    /// "light" or "dark" whatever the preferences say; empty goes by them again.
    void setAppearance(const QString& appearance);

    [[nodiscard]] QString language() const;
    [[nodiscard]] bool isDark() const;
    [[nodiscard]] bool reducesMotion() const;
    /// True when the desktop has a panel that shows items of applications (StatusNotifierItem).
    [[nodiscard]] bool hasPanel() const { return panel_ != nullptr && panel_->isThere(); }
    [[nodiscard]] bool beginsInPanel() const { return beginsInPanel_; }
    void setBeginsInPanel(bool isSo) { beginsInPanel_ = isSo; }
    [[nodiscard]] QColor accent() const;
    [[nodiscard]] bool accentWantsDarkInk() const;

    /// True when the row or tile stands for one thing on the disk that can be shown and copied.
    Q_INVOKABLE [[nodiscard]] bool hasPlace(const QString& key) const;
    /// Opens the file manager with the item selected, or its folder where the file manager cannot do that.
    Q_INVOKABLE void showInFiles(const QString& key);
    /// Opens it with the desktop's program for such things.
    Q_INVOKABLE void open(const QString& key);
    /// Copies the paths that these stand for, a line each.
    Q_INVOKABLE void copyPaths(const QStringList& keys);
    Q_INVOKABLE void copyText(const QString& text);
    /// Gives a window that was not shown yet its place over the middle of another one.
    Q_INVOKABLE void placeOver(QWindow* window, QWindow* over) const;
    /// Brings a window before the others, as large as it was when it was hidden or minimised.
    Q_INVOKABLE static void bringBack(QWindow* window);
    /// Protects the folder that a dialog of the desktop chose.
    Q_INVOKABLE void protectFolder(const QUrl& folder);

  signals:
    void changed();

  private Q_SLOTS:
    void takeSetting(const QString& area, const QString& key, const QDBusVariant& value);

  private:
    void askPortal(const QString& area, const QString& key);
    bool eventFilter(QObject* watched, QEvent* event) override;

    AppModel& app_;
    QString appearance_;
    bool isDesktopDark_ = false;
    bool hasDesktopSaid_ = false;
    bool hasAnimations_ = true;
    PanelWatch* panel_ = nullptr; ///< Null while pictures are taken.
    bool beginsInPanel_ = false;
};

} // namespace tarvo
