#include "LumoAI/ModelWriters.h"
#include "LumoCore/Basics/Words.h"
#include "Platform/Clock.h"
#include "TarvoCLI/Commands.h"
#include "TarvoCLI/DiskFacts.h"
#include "TarvoCLI/Paragraph.h"
#include "TarvoCLI/UsersModel.h"

#include <memory>

namespace tarvo {

using lumo::Words;

namespace {

/// The summary as other programs read it.
struct ShownSummary {
    std::string text;
    bool byAI = false;
    std::vector<std::string> facts;

    static constexpr auto fields =
        std::tuple{lumo::field("text", &ShownSummary::text), lumo::field("byAI", &ShownSummary::byAI),
                   lumo::field("facts", &ShownSummary::facts)};
};

ExitCode runSummary(const ReportSource& source, const Invocation& invocation) {
    const auto disk = measuredDisk(source, invocation);
    if (!disk) {
        return disk.error();
    }
    const lumo::Date now = lumo::platform::now();
    lumo::DiskSummaryText summary;
    const auto write = [&](const lumo::AISummaryWriter::Write& writer) {
        summary = lumo::SummaryService::summary(*disk->report, disk->recoverable, now, writer);
    };
    if (const auto model = usersModel(invocation); !model) {
        write({});
    } else if (!watchModel(invocation,
                           [&](const std::stop_token& stop) { write(lumo::summaryWriter(*model, stop)); })) {
        return ExitCode::interrupted;
    }
    if (invocation.isJson) {
        const ShownSummary shown{summary.text, summary.byAI,
                                 lumo::DiskSummary::facts(*disk->report, disk->recoverable, now)};
        return print(lumo::dumpJson(lumo::encode(shown), lumo::JsonLayout::indented) + "\n");
    }
    std::string shown = paragraph(summary.text, readingColumns());
    if (summary.byAI) {
        shown +=
            tinted(Words{"Lo ha escrito la IA de tu equipo. Cada tamaño es uno de los medidos, pero lo que "
                         "dice de él puede estar equivocado.",
                         "Written by the AI on your computer. Each size is one of those measured, but "
                         "what it says about it may be wrong."}
                       .in(),
                   Tint::faint, invocation) +
            "\n";
    }
    return print(shown);
}

} // namespace

void addSummaryCommand(CLI::App& app, Action& chosen) {
    CLI::App* command = addCommand(app, "resumen", "summary", "cuánto puedes recuperar, en dos frases",
                                   "how much you can recover, in two sentences");
    const auto source = std::make_shared<ReportSource>();
    addReportOption(*command, *source);
    command->callback([source, &chosen] {
        chosen = [source](const Invocation& invocation) { return runSummary(*source, invocation); };
    });
}

} // namespace tarvo
