#pragma once

#include "LumoCore/Basics/Codec.h"
#include "LumoCore/Basics/Date.h"
#include "TarvoApp/App/Background.h"
#include "TarvoModel/Flows/Preferences.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo {

/// The user's preferences as the windows show and change them. A change is there at once and is written at
/// once, on a thread of its own; whatever another program has stored meanwhile stays.
class Settings final : public QObject {
    Q_OBJECT
    Q_PROPERTY(qint64 goalBytes READ goalBytes WRITE setGoalBytes NOTIFY changed)
    Q_PROPERTY(bool isWelcomeSeen READ isWelcomeSeen WRITE setWelcomeSeen NOTIFY changed)
    Q_PROPERTY(bool showWholeDisk READ showWholeDisk WRITE setShowWholeDisk NOTIFY changed)
    Q_PROPERTY(QString appearance READ appearance WRITE setAppearance NOTIFY changed)
    Q_PROPERTY(bool showInMenuBar READ showInMenuBar WRITE setShowInMenuBar NOTIFY changed)
    Q_PROPERTY(qint64 lowSpaceGB READ lowSpaceGB WRITE setLowSpaceGB NOTIFY changed)
    Q_PROPERTY(bool notifyLowSpace READ notifyLowSpace WRITE setNotifyLowSpace NOTIFY changed)
    Q_PROPERTY(bool autoCleanWeekly READ autoCleanWeekly WRITE setAutoCleanWeekly NOTIFY changed)
    Q_PROPERTY(qint64 activeProjectDays READ activeProjectDays WRITE setActiveProjectDays NOTIFY changed)
    Q_PROPERTY(QStringList protectedFolders READ protectedFolders NOTIFY changed)
    Q_PROPERTY(bool aiSummaryEnabled READ aiSummaryEnabled WRITE setAiSummaryEnabled NOTIFY changed)
    Q_PROPERTY(bool autoExplain READ autoExplain WRITE setAutoExplain NOTIFY changed)
    Q_PROPERTY(double textScale READ textScale WRITE setTextScale NOTIFY changed)
    Q_PROPERTY(QString localModel READ localModel WRITE setLocalModel NOTIFY changed)
    Q_PROPERTY(QString seenNews READ seenNews WRITE setSeenNews NOTIFY changed)
    Q_PROPERTY(QString problem READ problem NOTIFY changed)

  public:
    /// Whether changes are written down.
    enum class Keeping { stored, inMemory };

    Settings(const std::string& home, Keeping keeping, QObject* parent = nullptr);
    /// Waits for what is being written.
    ~Settings() override;

    [[nodiscard]] const Preferences& preferences() const { return preferences_; }

    [[nodiscard]] qint64 goalBytes() const { return value<std::int64_t>("objetivoBytes"); }
    [[nodiscard]] bool isWelcomeSeen() const { return value<bool>("bienvenidaVista"); }
    [[nodiscard]] bool showWholeDisk() const { return value<bool>("verDiscoEntero"); }
    [[nodiscard]] QString appearance() const { return words("apariencia"); }
    [[nodiscard]] bool showInMenuBar() const { return value<bool>("barraDeMenus"); }
    [[nodiscard]] qint64 lowSpaceGB() const { return value<std::int64_t>("avisoGB"); }
    [[nodiscard]] bool notifyLowSpace() const { return value<bool>("avisoNotificacion"); }
    [[nodiscard]] bool autoCleanWeekly() const { return value<bool>("limpiezaSemanal"); }
    [[nodiscard]] qint64 activeProjectDays() const { return value<std::int64_t>("diasProyectoActivo"); }
    [[nodiscard]] QStringList protectedFolders() const;
    [[nodiscard]] bool aiSummaryEnabled() const { return value<bool>("resumenConIA"); }
    [[nodiscard]] bool autoExplain() const { return value<bool>("explicarAlAnalizar"); }
    [[nodiscard]] double textScale() const { return value<double>("tamanoTexto"); }
    [[nodiscard]] QString localModel() const { return words("modeloLocal"); }
    [[nodiscard]] QString seenNews() const { return words("novedadesVistas"); }
    /// Why the preferences may not be what the user chose; empty when all is well.
    [[nodiscard]] QString problem() const;

    void setGoalBytes(qint64 bytes) { change<std::int64_t>("objetivoBytes", bytes); }
    void setWelcomeSeen(bool isSeen) { change("bienvenidaVista", isSeen); }
    void setShowWholeDisk(bool isShown) { change("verDiscoEntero", isShown); }
    void setAppearance(const QString& appearance) { changeWords("apariencia", appearance); }
    void setShowInMenuBar(bool isShown) { change("barraDeMenus", isShown); }
    void setLowSpaceGB(qint64 gigabytes) { change<std::int64_t>("avisoGB", gigabytes); }
    void setNotifyLowSpace(bool isOn) { change("avisoNotificacion", isOn); }
    void setAutoCleanWeekly(bool isOn) { change("limpiezaSemanal", isOn); }
    void setActiveProjectDays(qint64 days) { change<std::int64_t>("diasProyectoActivo", days); }
    /// Adds a folder by its absolute path, or takes the one at that place away.
    Q_INVOKABLE void protect(const QString& folder);
    void protectPath(const std::string& path);
    Q_INVOKABLE void unprotect(int index);
    void setAiSummaryEnabled(bool isOn) { change("resumenConIA", isOn); }
    void setAutoExplain(bool isOn) { change("explicarAlAnalizar", isOn); }
    void setTextScale(double scale) { change("tamanoTexto", scale); }
    /// An empty text goes back to none.
    void setLocalModel(const QString& place) { changeWords("modeloLocal", place); }
    void setSeenNews(const QString& version) { changeWords("novedadesVistas", version); }

    /// The stored moment under the key; absent when there is none.
    [[nodiscard]] std::optional<lumo::Date> moment(std::string_view key) const;
    /// None takes the key back. A value that the key does not allow is refused with `failed`.
    void store(std::string_view key, const std::optional<lumo::JsonValue>& value);

    /// Takes over what other programs have stored.
    void reload();

  signals:
    void changed();
    /// What was changed has been written.
    void stored();
    /// Something could not be written; the text says what and why.
    void failed(const QString& reason);

  private:
    template <class Value>
    [[nodiscard]] Value value(std::string_view key) const {
        const std::optional<lumo::JsonValue> stored = preferences_.value(*preferenceKey(key));
        return stored ? lumo::decode<Value>(*stored).value_or(Value()) : Value();
    }
    [[nodiscard]] QString words(std::string_view key) const;

    template <class Value>
    void change(std::string_view key, Value wanted) {
        if (value<Value>(key) != wanted) {
            store(key, lumo::encode(wanted));
        }
    }
    void changeWords(std::string_view key, const QString& wanted);

    void changeFolders(const std::function<void(std::vector<std::string>&)>& change);
    /// Holds the value, and has the one written that the function makes of what is stored by then.
    void write(std::string_view name, const std::optional<lumo::JsonValue>& value,
               const std::function<std::optional<lumo::JsonValue>(const Preferences&)>& valueNow);
    void written(const PreferenceKey& key, const std::optional<lumo::JsonValue>& value,
                 const std::string& reason);

    std::string home_;
    Keeping keeping_;
    Preferences preferences_;
    int unwritten_ = 0;
    std::map<const PreferenceKey*, std::optional<lumo::JsonValue>> unstored_; ///< What could not be written.
    Background writing_; ///< Goes first, since its work uses the rest.
};

} // namespace tarvo
