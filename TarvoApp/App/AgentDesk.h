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
    /// The same where the last change was of that agent, and whether it goes on.
    Q_PROPERTY(QString codeMessage READ codeMessage NOTIFY changed)
    Q_PROPERTY(QString desktopMessage READ desktopMessage NOTIFY changed)
    Q_PROPERTY(QString copyMessage READ copyMessage NOTIFY changed)
    Q_PROPERTY(bool isCodeBusy READ isCodeBusy NOTIFY changed)
    Q_PROPERTY(bool isDesktopBusy READ isDesktopBusy NOTIFY changed)
    /// What other agents are linked with; empty until the first `refresh`.
    Q_PROPERTY(QString codexCommand READ codexCommand NOTIFY changed)
    Q_PROPERTY(QString jsonSnippet READ jsonSnippet NOTIFY changed)

  public:
    /// Without access no settings are read or written, and every change is answered with the demo's notice.
    enum class Access { full, none };

    AgentDesk(std::string home, Access access, QObject* parent = nullptr);

    /// Reads the agents' settings, and looks where the tool server is, in the background.
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
    [[nodiscard]] QString codeMessage() const { return messageAbout(About::claudeCode); }
    [[nodiscard]] QString desktopMessage() const { return messageAbout(About::claudeDesktop); }
    [[nodiscard]] QString copyMessage() const { return messageAbout(About::clipboard); }
    [[nodiscard]] bool isCodeBusy() const { return isBusy_ && about_ == About::claudeCode; }
    [[nodiscard]] bool isDesktopBusy() const { return isBusy_ && about_ == About::claudeDesktop; }
    [[nodiscard]] QString codexCommand() const;
    [[nodiscard]] QString jsonSnippet() const;

  signals:
    void changed();

  private:
    enum class About { claudeCode, claudeDesktop, clipboard };
    struct Links {
        bool code = false;
        bool desktop = false;
    };
    /// What is copied for others; where the tool server is has to be looked for on the disk.
    struct Snippets {
        std::string codex;
        std::string json;
    };
    using Change = std::function<AgentLinks::LinkResult(const std::string& home, const std::stop_token&)>;
    void change(About about, const Change& change);
    [[nodiscard]] QString messageAbout(About about) const { return about == about_ ? message() : QString(); }
    static Links linksIn(const std::string& home);

    std::string home_;
    Access access_;
    Links links_;
    Snippets snippets_;
    AgentLinks::LinkResult result_;
    About about_ = About::clipboard;
    bool isBusy_ = false;
    Background background_; ///< Goes first, since its work uses the rest.
};

} // namespace tarvo
