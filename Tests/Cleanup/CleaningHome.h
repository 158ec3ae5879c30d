#pragma once

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Cleanup/CleanupExecutor.h"
#include "LumoCore/Cleanup/HistoryLog.h"
#include "LumoCore/Cleanup/Holding.h"
#include "LumoCore/Cleanup/Undoing.h"
#include "Tests/support/TempHome.h"

#include <filesystem>
#include <string>
#include <vector>

namespace tarvo::testing {

inline const lumo::Date cleaningTime = lumo::dateFromIsoText("2026-03-14T09:30:05Z").value();

/// A home in which cleanups run.
class CleaningHome final {
  public:
    std::vector<std::string> protectedFolders; ///< Absolute.

    [[nodiscard]] const TempHome& files() const { return files_; }
    [[nodiscard]] const std::string& root() const { return files_.path(); }
    [[nodiscard]] std::string path(std::string_view name) const { return files_.path(name); }
    [[nodiscard]] lumo::PathGuard guard() const { return lumo::PathGuard(files_.path(), protectedFolders); }

    /// An action on those names with the bytes that they take now.
    [[nodiscard]] lumo::CleanupAction action(lumo::Safety safety, lumo::Method method,
                                             const std::vector<std::string>& names) const {
        lumo::CleanupAction action{
            .id = "id", .title = "Title", .safety = safety, .method = std::move(method)};
        for (const std::string& name : names) {
            action.measuredPaths.push_back(path(name));
        }
        action.estimatedBytes = lumo::CleanupExecutor::remaining(action);
        return action;
    }

    /// An action that takes the items of those names.
    [[nodiscard]] lumo::CleanupAction items(lumo::Safety safety,
                                            const std::vector<std::string>& names) const {
        lumo::CleanupAction made = action(safety, lumo::method::TrashItems{}, names);
        made.method = lumo::method::TrashItems{made.measuredPaths};
        return made;
    }

    [[nodiscard]] std::vector<lumo::CleanupOutcome> clean(const std::vector<lumo::CleanupAction>& actions,
                                                          lumo::CleanupExecutor::Control control = {},
                                                          lumo::Date now = cleaningTime) const {
        const lumo::PathGuard guard = this->guard();
        lumo::Mover mover(guard, lumo::Holding::newBatch(files_.path(), now));
        control.now = [now] { return now; };
        return lumo::CleanupExecutor::run(actions, guard, historyPath(), mover,
                                          lumo::CleanupExecutor::SafeItems::deletedAtOnce, control);
    }

    /// Sets one item aside and tells where it is.
    [[nodiscard]] lumo::TrashedItem setAside(const std::string& name, lumo::Date now = cleaningTime) const {
        return clean({items(lumo::Safety::review, {name})}, {}, now).front().restorable.value().front();
    }

    [[nodiscard]] std::string historyPath() const { return lumo::OwnFiles::historyLog(files_.path()); }
    /// The log's lines as the cleanups told of them, which leave out what the log adds.
    [[nodiscard]] std::vector<lumo::CleanupOutcome> history() const {
        std::vector<lumo::CleanupOutcome> outcomes = lumo::HistoryLog::outcomes(historyPath()).value();
        for (lumo::CleanupOutcome& outcome : outcomes) {
            outcome.cleanup.reset();
        }
        return outcomes;
    }

    [[nodiscard]] lumo::TrashOperationResult undo() const {
        return lumo::Undoing::undo(history(), guard(), cleaningTime);
    }

    /// As if the log and the intents had been written while the home had another name, "self" in it.
    void respell() const {
        const std::string spelled = path("self") + "/";
        if (!std::filesystem::is_symlink(path("self"))) {
            files_.link("self", files_.path());
        }
        for (const std::string& file : {historyPath(), lumo::OwnFiles::intents(files_.path())}) {
            std::string content = contentOf(file);
            for (std::size_t at = 0; (at = content.find(root() + "/", at)) != std::string::npos;
                 at += spelled.size()) {
                content.replace(at, root().size() + 1, spelled);
            }
            if (!content.empty()) {
                files_.fileWith(file.substr(root().size() + 1), content);
            }
        }
    }

  private:
    TempHome files_;
};

} // namespace tarvo::testing
