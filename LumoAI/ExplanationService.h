#pragma once

#include "LumoAI/LanguageModel.h"
#include "LumoCore/Basics/System.h"
#include "LumoCore/Explaining/Explanation.h"
#include "LumoCore/Inventories/Installed.h"
#include "LumoCore/Scanning/FileTree.h"

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace lumo {

/// What explaining folders takes besides the folders and the model.
struct ExplanationSettings {
    std::string home;      ///< In which the folders lie; a report may have brought its own.
    std::string cacheHome; ///< The user's home, among whose caches the answers are kept.
    Installed installed;   ///< To tell whose a folder is.
    Date now = {};
    Language language = currentLanguage();
    System system = currentSystem();
    std::chrono::milliseconds modelTime = std::chrono::seconds(20); ///< For one folder.
    /// Told after each folder how many of them are done.
    std::function<void(std::size_t done, std::size_t total)> progress = {};
    FileTree::Watch watch = {}; ///< Of the measuring; its stop ends the rest, too.
};

namespace ExplanationService {

/// An explanation of each folder, by path, one folder at a time: what is certain of its place, about which no
/// model is asked, else a recent one by a model if there is one that still fits and is in that language, else
/// the model's, which is kept for the next time, else one by rule of thumb, which is not. Whether the model
/// can be used is asked once, and nothing is asked without folders. After a stop the folders that are not
/// done are missing. Never fails; that explanations could not be kept goes unsaid.
std::map<std::string, Explanation> explain(const std::vector<std::string>& folders, LanguageModel& model,
                                           const ExplanationSettings& settings);

} // namespace ExplanationService

} // namespace lumo
