#include "LumoAI/ModelWriters.h"

#include "Tests/AI/Parrot.h"

#include <gtest/gtest.h>

using namespace lumo;
using tarvo::testing::Parrot;

TEST(ModelWriters, AskWithTheInstructionsOfTheLanguageAndGiveNothingLate) {
    using namespace std::chrono_literals;
    for (const Language language : {Language::es, Language::en}) {
        Parrot model;
        model.answer = "Bien.";
        EXPECT_EQ(summaryWriter(model, {}, language)({"A.", "B."}), "Bien.");
        EXPECT_EQ(model.last.instructions, AISummaryWriter::instructions(language));
        EXPECT_EQ(model.last.prompt, "A.\nB.");
        EXPECT_EQ(helpWriter(model, {}, language)("¿Q?", "AYUDA"), "Bien.");
        EXPECT_EQ(model.last.instructions, HelpWriter::instructions(language));
        EXPECT_EQ(model.last.prompt, HelpWriter::prompt("¿Q?", "AYUDA", language));
        EXPECT_FALSE(model.last.schema);
        model.isSlow = true;
        EXPECT_EQ(summaryWriter(model, {}, language, 1ms)({}), std::nullopt);
        EXPECT_EQ(helpWriter(model, {}, language, 1ms)("", ""), std::nullopt);
        model.reason = "no";
        EXPECT_FALSE(summaryWriter(model, {}, language));
        EXPECT_FALSE(helpWriter(model, {}, language));
    }
}
