#include "TarvoApp/Views/Desktop.h"

#include "LumoCore/Basics/Language.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoApp/Views/WindowPlace.h"
#include "TarvoModel/Showing/DiskMap.h"

#include <QClipboard>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QDesktopServices>
#include <QEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QQmlEngine>
#include <QScreen>
#include <QUrl>
#include <QWindow>

namespace tarvo {

namespace {

// The settings that desktops share through org.freedesktop.portal.Settings.
const auto portal = QStringLiteral("org.freedesktop.portal.Desktop");
const auto portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const auto portalSettings = QStringLiteral("org.freedesktop.portal.Settings");
const auto appearanceArea = QStringLiteral("org.freedesktop.appearance");
const auto colorScheme = QStringLiteral("color-scheme");
const auto reducedMotion = QStringLiteral("reduced-motion");
const auto gnomeArea = QStringLiteral("org.gnome.desktop.interface");
const auto animations = QStringLiteral("enable-animations");

/// A file name that is not in the locale's encoding survives as an encoded address.
QByteArray addressOf(const std::string& path) {
    return "file://" + QByteArray::fromStdString(path).toPercentEncoding(QByteArrayLiteral("/"));
}

} // namespace

Desktop* Desktop::create(QQmlEngine* engine, QJSEngine*) {
    auto* const desktop = qobject_cast<Desktop*>(engine->property(property).value<QObject*>());
    QJSEngine::setObjectOwnership(desktop, QJSEngine::CppOwnership);
    return desktop;
}

Desktop::Desktop(AppModel& app, QObject* parent) : QObject(parent), app_(app) {
    connect(app.settings(), &Settings::changed, this, &Desktop::changed);
    qGuiApp->installEventFilter(this);
    if (app.isCapturing()) {
        // Pictures look the same wherever they are taken.
        return;
    }
    QDBusConnection::sessionBus().connect(portal, portalPath, portalSettings,
                                          QStringLiteral("SettingChanged"), this,
                                          SLOT(takeSetting(QString, QString, QDBusVariant)));
    askPortal(appearanceArea, colorScheme);
    askPortal(appearanceArea, reducedMotion);
    askPortal(gnomeArea, animations);
    panel_ = new PanelWatch(QDBusConnection::sessionBus(), this);
    connect(panel_, &PanelWatch::changed, this, &Desktop::changed);
}

void Desktop::askPortal(const QString& area, const QString& key) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(portal, portalPath, portalSettings, QStringLiteral("Read"));
    call << area << key;
    auto* const answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, area, key, answer] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (!reply.isError()) {
            takeSetting(area, key, reply.value());
        }
        answer->deleteLater();
    });
}

void Desktop::takeSetting(const QString& area, const QString& key, const QDBusVariant& value) {
    QVariant setting = value.variant();
    // Old portals wrap what they read a second time.
    if (setting.canConvert<QDBusVariant>()) {
        setting = setting.value<QDBusVariant>().variant();
    }
    if (area == appearanceArea && key == colorScheme) {
        hasDesktopSaid_ = setting.toUInt() != 0;
        isDesktopDark_ = setting.toUInt() == 1;
    } else if (area == appearanceArea && key == reducedMotion) {
        hasAnimations_ = setting.toUInt() == 0;
    } else if (area == gnomeArea && key == animations) {
        hasAnimations_ = setting.toBool();
    } else {
        return;
    }
    emit changed();
}

bool Desktop::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) {
        emit changed();
    }
    return QObject::eventFilter(watched, event);
}

void Desktop::setAppearance(const QString& appearance) {
    appearance_ = appearance;
    emit changed();
}

QString Desktop::language() const {
    return lumo::currentLanguage() == lumo::Language::es ? QStringLiteral("es") : QStringLiteral("en");
}

bool Desktop::isDark() const {
    const QString wanted = appearance_.isEmpty() ? app_.settings()->appearance() : appearance_;
    if (wanted == QLatin1String("dark") || wanted == QLatin1String("light")) {
        return wanted == QLatin1String("dark");
    }
    const QPalette palette = QGuiApplication::palette();
    return hasDesktopSaid_ ? isDesktopDark_
                           : palette.color(QPalette::Window).lightnessF() <
                                 palette.color(QPalette::WindowText).lightnessF();
}

bool Desktop::reducesMotion() const {
    return !hasAnimations_ || app_.isCapturing();
}

QColor Desktop::accent() const {
    return QGuiApplication::palette().color(QPalette::Highlight);
}

bool Desktop::accentWantsDarkInk() const {
    const QColor color = accent();
    return DiskMap::wantsDarkInk({color.redF(), color.greenF(), color.blueF()});
}

bool Desktop::hasPlace(const QString& key) const {
    return !app_.isDemo() && !app_.places()->pathOf(key).empty();
}

void Desktop::showInFiles(const QString& key) {
    const std::string path = app_.places()->pathOf(key);
    if (path.empty()) {
        return;
    }
    const QByteArray encoded = addressOf(path);
    const QUrl folder = QUrl::fromEncoded(encoded.left(encoded.lastIndexOf('/') + 1));
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("/org/freedesktop/FileManager1"),
        QStringLiteral("org.freedesktop.FileManager1"), QStringLiteral("ShowItems"));
    call << QStringList{QString::fromLatin1(encoded)} << QString();
    auto* const answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(call), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [answer, folder] {
        if (answer->isError()) {
            QDesktopServices::openUrl(folder);
        }
        answer->deleteLater();
    });
}

void Desktop::open(const QString& key) {
    const std::string path = app_.places()->pathOf(key);
    if (!path.empty()) {
        QDesktopServices::openUrl(QUrl::fromEncoded(addressOf(path)));
    }
}

void Desktop::copyPaths(const QStringList& keys) {
    QStringList paths;
    for (const std::string& path : app_.places()->pathsOf(keys)) {
        paths.push_back(shown(path));
    }
    copyText(paths.join('\n'));
}

void Desktop::copyText(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
}

void Desktop::placeOver(QWindow* window, QWindow* over) const {
    if (window == nullptr || over == nullptr || over->screen() == nullptr) {
        return;
    }
    QList<QPoint> taken;
    for (const QWindow* const other : QGuiApplication::topLevelWindows()) {
        if (other != window && other->isVisible()) {
            taken.push_back(other->position());
        }
    }
    window->setGeometry(
        WindowPlace::over(over->geometry(), window->size(), over->screen()->availableGeometry(), taken));
}

void Desktop::bringBack(QWindow* window) {
    // `show` would make one smaller that filled the screen.
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->setVisible(true);
    window->raise();
    window->requestActivate();
}

void Desktop::protectFolder(const QUrl& folder) {
    app_.settings()->protectPaths({pathOf(folder)});
}

} // namespace tarvo
