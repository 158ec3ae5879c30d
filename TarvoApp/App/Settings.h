#pragma once

#include "TarvoApp/App/Background.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Flows/Preferences.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
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
    /// "system", "es" or "en"; holds from the next start.
    Q_PROPERTY(QString language READ language WRITE setLanguage NOTIFY changed)
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

    [[nodiscard]] qint64 goalBytes() const { return value(preference::goalBytes); }
    [[nodiscard]] bool isWelcomeSeen() const { return value(preference::isWelcomeSeen); }
    [[nodiscard]] bool showWholeDisk() const { return value(preference::showWholeDisk); }
    [[nodiscard]] QString appearance() const { return shown(value(preference::appearance)); }
    [[nodiscard]] QString language() const { return shown(value(preference::language)); }
    [[nodiscard]] bool showInMenuBar() const { return value(preference::showInMenuBar); }
    [[nodiscard]] qint64 lowSpaceGB() const { return value(preference::lowSpaceGB); }
    [[nodiscard]] bool notifyLowSpace() const { return value(preference::notifyLowSpace); }
    [[nodiscard]] bool autoCleanWeekly() const { return value(preference::autoCleanWeekly); }
    [[nodiscard]] qint64 activeProjectDays() const { return value(preference::activeProjectDays); }
    /// For a person, with "~" for the home.
    [[nodiscard]] QStringList protectedFolders() const;
    [[nodiscard]] bool aiSummaryEnabled() const { return value(preference::aiSummaryEnabled); }
    [[nodiscard]] bool autoExplain() const { return value(preference::autoExplain); }
    [[nodiscard]] double textScale() const { return value(preference::textScale); }
    [[nodiscard]] QString localModel() const { return words(value(preference::localModel)); }
    [[nodiscard]] QString seenNews() const { return words(value(preference::seenNews)); }
    /// Why the preferences may not be what the user chose; empty when all is well.
    [[nodiscard]] QString problem() const;

    void setGoalBytes(qint64 bytes) { change(preference::goalBytes, bytes); }
    void setWelcomeSeen(bool isSeen) { note(preference::isWelcomeSeen, isSeen); }
    void setShowWholeDisk(bool isShown) { change(preference::showWholeDisk, isShown); }
    void setAppearance(const QString& appearance) { change(preference::appearance, bytesOf(appearance)); }
    void setLanguage(const QString& language) { change(preference::language, bytesOf(language)); }
    void setShowInMenuBar(bool isShown) { change(preference::showInMenuBar, isShown); }
    void setLowSpaceGB(qint64 gigabytes) { change(preference::lowSpaceGB, gigabytes); }
    void setNotifyLowSpace(bool isOn) { change(preference::notifyLowSpace, isOn); }
    void setAutoCleanWeekly(bool isOn) { change(preference::autoCleanWeekly, isOn); }
    void setActiveProjectDays(qint64 days) { change(preference::activeProjectDays, days); }
    /// Adds a folder by its absolute path, or takes the one at that place away.
    Q_INVOKABLE void protect(const QString& folder);
    /// The same of absolute paths; others are no folders. Written once, however many they are.
    void protectPaths(const std::vector<std::string>& paths);
    Q_INVOKABLE void unprotect(int index);
    void setAiSummaryEnabled(bool isOn) { change(preference::aiSummaryEnabled, isOn); }
    void setAutoExplain(bool isOn) { change(preference::autoExplain, isOn); }
    void setTextScale(double scale) { change(preference::textScale, scale); }
    /// An empty text goes back to none.
    void setLocalModel(const QString& place) { change(preference::localModel, textIn(place)); }
    void setSeenNews(const QString& version) { note(preference::seenNews, textIn(version)); }

    /// What holds now, for a key that no window shows.
    template <class Value>
    [[nodiscard]] Value value(const PreferenceKey<Value>& key) const {
        return preferences_.value(key);
    }
    /// An absent optional takes the key back. A value that the key does not allow is refused with `failed`.
    template <class Value>
    void set(const PreferenceKey<Value>& key, const std::type_identity_t<Value>& value) {
        write(key, [stored = Preferences::asJson(value)](const Preferences&) { return stored; });
    }

    /// The same for what the application notes for itself: nobody is told when that cannot be written down.
    template <class Value>
    void note(const PreferenceKey<Value>& key, const std::type_identity_t<Value>& noted) {
        if (value(key) != noted) {
            write(
                key, [stored = Preferences::asJson(noted)](const Preferences&) { return stored; },
                Telling::nobody);
        }
    }

    /// Takes over what other programs have stored, as soon as it is read.
    void reload();

  signals:
    void changed();
    /// What was changed has been written.
    void stored();
    /// Something could not be written; the text says what and why.
    void failed(const QString& reason);

  private:
    template <class Value>
    void change(const PreferenceKey<Value>& key, const std::type_identity_t<Value>& wanted) {
        if (value(key) != wanted) {
            set(key, wanted);
        }
    }
    /// Who hears of a failure.
    enum class Telling { user, nobody };

    [[nodiscard]] static QString words(const std::optional<std::string>& text);
    /// None for an empty text.
    [[nodiscard]] static std::optional<std::string> textIn(const QString& words);

    void changeFolders(const std::function<void(std::vector<std::string>&)>& change);
    /// Makes the value of what is known here and holds it, and has that one written that is made of what is
    /// stored by then.
    void write(const Preference& key,
               const std::function<std::optional<lumo::JsonValue>(const Preferences&)>& valueIn,
               Telling telling = Telling::user);
    void written(const Preference& key, const std::optional<lumo::JsonValue>& value,
                 const std::string& reason, Telling telling, const Preferences& now);
    void takeOver(Preferences stored);

    std::string home_;
    Keeping keeping_;
    Preferences preferences_;
    int unwritten_ = 0;
    std::map<const Preference*, std::optional<lumo::JsonValue>> unstored_; ///< What could not be written.
    Background writing_; ///< Goes first, since its work uses the rest.
};

} // namespace tarvo
