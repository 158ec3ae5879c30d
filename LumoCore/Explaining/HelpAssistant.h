#pragma once

#include "LumoCore/Explaining/HelpCatalog.h"

#include <functional>

namespace lumo {

/// The language model's part in the help: what it is told, and how it is asked.
namespace HelpWriter {

/// Asks a model and gives its text; none when it failed or took too long. An empty function stands for no
/// model. It may take seconds and must not throw.
using Write =
    std::function<std::optional<std::string>(const std::string& question, const std::string& context)>;

/// What the model is told about its task, before anything else.
std::string instructions(Language language = currentLanguage(), System system = currentSystem());

/// What it is then asked.
std::string prompt(std::string_view question, std::string_view context,
                   Language language = currentLanguage());

} // namespace HelpWriter

/// What of a model's text reaches a person, and what is said instead.
namespace HelpGuard {

/// False for a text that is empty or long, that proposes paths through menus, addresses or shell commands, or
/// that names a figure which does not stand in the allowed text; a command that stands there may be repeated.
bool acceptable(std::string_view text, std::string_view allowedText);

/// That the help does not know, with the closest topics.
HelpAnswer fallback(std::string_view question, Language language = currentLanguage(),
                    System system = currentSystem());

} // namespace HelpGuard

/// Answers questions: from the catalogue when a topic clearly matches, else by a model that is shown the help
/// and some facts, else with the closest topics.
namespace HelpAssistant {

/// Gives sentences about this disk, as from `DiskSummary::facts`. Measuring for them may take long, so they
/// are only asked for when a model is about to see them.
using Facts = std::function<std::vector<std::string>()>;

/// What the model may use: the topics closest to the question, or the first six where none is close, and the
/// facts.
std::string context(std::string_view question, const std::vector<std::string>& facts,
                    Language language = currentLanguage(), System system = currentSystem());

/// Never fails. Asks the model at most once.
HelpAnswer answer(const std::string& question, const Facts& facts, const HelpWriter::Write& write,
                  Language language = currentLanguage(), System system = currentSystem());

} // namespace HelpAssistant

} // namespace lumo
