#pragma once

#include "LumoAI/LanguageModel.h"
#include "LumoCore/Explaining/DiskSummary.h"
#include "LumoCore/Explaining/HelpAssistant.h"

#include <chrono>

/// A model in the place that summaries and the help keep for one. Empty when the model cannot be used, which
/// is asked here. The functions give no text when the model fails, takes longer than the limit or is told to
/// stop; what they give is still to be checked against the facts. The model must outlive them.
namespace lumo {

AISummaryWriter::Write summaryWriter(LanguageModel& model, const std::stop_token& stop = {},
                                     Language language = currentLanguage(),
                                     std::chrono::milliseconds limit = std::chrono::seconds(15));

HelpWriter::Write helpWriter(LanguageModel& model, const std::stop_token& stop = {},
                             Language language = currentLanguage(),
                             std::chrono::milliseconds limit = std::chrono::seconds(20));

} // namespace lumo
