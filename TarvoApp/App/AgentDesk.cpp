#include "TarvoApp/App/AgentDesk.h"

#include "LumoCore/Basics/Words.h"
#include "TarvoApp/App/QtText.h"
#include "TarvoModel/Showing/DemoDisk.h"

#include <QClipboard>
#include <QGuiApplication>

#include <utility>

namespace tarvo {

AgentDesk::AgentDesk(std::string home, Access access, QObject* parent)
    : QObject(parent), home_(std::move(home)), access_(access), background_(1) {}

AgentDesk::Links AgentDesk::linksIn(const std::string& home) {
    return {.code = AgentLinks::isInClaudeCode(home), .desktop = AgentLinks::isInClaudeDesktop(home)};
}

void AgentDesk::refresh() {
    background_.start([this, home = home_, access = access_](const std::stop_token&) -> Background::Apply {
        const Snippets snippets{.codex = AgentLinks::codexCommand(), .json = AgentLinks::jsonSnippet()};
        return [this, snippets, links = access == Access::full ? linksIn(home) : Links()] {
            links_ = links;
            snippets_ = snippets;
            emit changed();
        };
    });
}

void AgentDesk::change(About about, const Change& change) {
    if (isBusy_) {
        return;
    }
    about_ = about;
    if (access_ == Access::none) {
        result_ = std::string(DemoDisk::notice());
        emit changed();
        return;
    }
    isBusy_ = true;
    result_ = {};
    emit changed();
    background_.start([this, change, home = home_](const std::stop_token& end) -> Background::Apply {
        const AgentLinks::LinkResult result = change(home, end);
        return [this, result, links = linksIn(home)] {
            isBusy_ = false;
            result_ = result;
            links_ = links;
            emit changed();
        };
    });
}

void AgentDesk::connectClaudeCode() {
    change(About::claudeCode, [](const std::string& home, const std::stop_token& end) {
        return AgentLinks::connectClaudeCode(home, end);
    });
}

void AgentDesk::disconnectClaudeCode() {
    change(About::claudeCode, [](const std::string& home, const std::stop_token& end) {
        return AgentLinks::disconnectClaudeCode(home, end);
    });
}

void AgentDesk::connectClaudeDesktop() {
    change(About::claudeDesktop, [](const std::string& home, const std::stop_token&) {
        return AgentLinks::setInClaudeDesktop(home, true);
    });
}

void AgentDesk::disconnectClaudeDesktop() {
    change(About::claudeDesktop, [](const std::string& home, const std::stop_token&) {
        return AgentLinks::setInClaudeDesktop(home, false);
    });
}

void AgentDesk::copy(const QString& text) {
    QGuiApplication::clipboard()->setText(text);
    if (!isBusy_) {
        about_ = About::clipboard;
    }
    result_ = lumo::Words{"Copiado", "Copied"}.in();
    emit changed();
}

QString AgentDesk::message() const {
    return shownLines(result_ ? *result_ : result_.error().message);
}

QString AgentDesk::codexCommand() const {
    return shown(snippets_.codex);
}

QString AgentDesk::jsonSnippet() const {
    return shown(snippets_.json);
}

} // namespace tarvo
