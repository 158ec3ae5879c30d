#pragma once

#include "TarvoApp/App/Ground.h"

#include <QObject>
#include <QString>

#include <string>

namespace tarvo {

/// Whether the application starts with the user's session. It is known after the first `refreshLogin`.
class LoginDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool launchAtLogin READ launchesAtLogin WRITE setLaunchAtLogin NOTIFY changed)
    /// Why it could not be changed; empty when it was.
    Q_PROPERTY(QString launchAtLoginError READ launchAtLoginError NOTIFY changed)

  public:
    explicit LoginDesk(const Ground& ground, QObject* parent = nullptr);

    /// Looks at it again, in the background.
    Q_INVOKABLE void refreshLogin();

    [[nodiscard]] bool launchesAtLogin() const { return isOn_; }
    /// In the background, too.
    void setLaunchAtLogin(bool isOn);
    [[nodiscard]] QString launchAtLoginError() const;

  signals:
    void changed();

  private:
    Ground ground_;
    bool isOn_ = false;
    std::string error_;
};

} // namespace tarvo
