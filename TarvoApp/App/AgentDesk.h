#pragma once

#include "TarvoApp/App/Background.h"
#include "TarvoModel/Flows/AgentLinks.h"

#include <QObject>
#include <QString>

#include <functional>
#include <string>

namespace tarvo {

/// The links with the user's coding agents as the settings show and change them, one change at a time. What
/// is linked is known after the first `refresh`.
class AgentDesk final : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isInClaudeCode READ isInClaudeCode NOTIFY changed)
    Q_PROPERTY(bool isInClaudeDesktop READ isInClaudeDesktop NOTIFY changed)
    Q_PROPERTY(bool busy READ isBusy NOTIFY changed)
    /// What came of the last change; empty when there was none.
    Q_PROPERTY(QString message READ message NOTIFY changed)
    Q_PROPERTY(bool hasFailed READ hasFailed NOTIFY changed)
    Q_PROPERTY(QString codexCommand READ codexCommand CONSTANT)
    Q_PROPERTY(QString jsonSnippet READ jsonSnippet CONSTANT)

  public:
    /// Without access no settings are read or written, and every change is answered with the demo's notice.
    enum class Access { full, none };

    AgentDesk(std::string home, Access access, QObject* parent = nullptr);

    /// Reads the agents' settings in the background.
    Q_INVOKABLE void refresh();
    Q_INVOKABLE void connectClaudeCode();
    Q_INVOKABLE void disconnectClaudeCode();
    Q_INVOKABLE void connectClaudeDesktop();
    Q_INVOKABLE void disconnectClaudeDesktop();
    /// To the clipboard.
    Q_INVOKABLE void copy(const QString& text);

    [[nodiscard]] bool isInClaudeCode() const { return links_.code; }
    [[nodiscard]] bool isInClaudeDesktop() const { return links_.desktop; }
    [[nodiscard]] bool isBusy() const { return isBusy_; }
    [[nodiscard]] QString message() const;
    [[nodiscard]] bool hasFailed() const { return !result_; }
    [[nodiscard]] QString codexCommand() const;
    [[nodiscard]] QString jsonSnippet() const;

  signals:
    void changed();

  private:
    struct Links {
        bool code = false;
        bool desktop = false;
    };
    using Change = std::function<AgentLinks::LinkResult(const std::string& home, const std::stop_token&)>;
    void change(const Change& change);
    static Links linksIn(const std::string& home);

    std::string home_;
    Access access_;
    Links links_;
    AgentLinks::LinkResult result_;
    bool isBusy_ = false;
    Background background_; ///< Goes first, since its work uses the rest.
};

} // namespace tarvo
