#include "TarvoApp/Views/ReleaseNotes.h"

#include "LumoCore/Basics/Language.h"
#include "TarvoApp/App/AppModel.h"
#include "TarvoApp/Views/WindowTypes.h"

#include <QFile>
#include <QQmlEngine>

namespace tarvo {

ReleaseNotes* ReleaseNotes::create(QQmlEngine* engine, QJSEngine*) {
    auto* const app = qobject_cast<AppModel*>(engine->property(AppInWindows::property).value<QObject*>());
    return new ReleaseNotes(*app, engine);
}

ReleaseNotes::ReleaseNotes(AppModel& app, QObject* parent) : QObject(parent), app_(app) {}

bool ReleaseNotes::takeDue() {
    Settings& settings = *app_.settings();
    const bool isFirstTime = !settings.isWelcomeSeen();
    if (app_.isDemo() || app_.isCapturing() || settings.seenNews() == version() ||
        (app_.showsWelcome() && !isFirstTime)) {
        return false;
    }
    settings.setSeenNews(version());
    return !isFirstTime && !text().isEmpty();
}

QString ReleaseNotes::version() {
    return QStringLiteral(TARVO_VERSION);
}

QString ReleaseNotes::text() {
    const QString language =
        lumo::currentLanguage() == lumo::Language::es ? QStringLiteral("es") : QStringLiteral("en");
    QFile file(QStringLiteral(":/novedades/%1.%2.md").arg(version(), language));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace tarvo
