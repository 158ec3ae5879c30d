#include "LumoAI/ModelWriters.h"

#include "Tests/AI/Parrot.h"

#include <gtest/gtest.h>

using lumo::Language;
using tarvo::testing::Parrot;

TEST(ModelWriters, AskWithTheInstructionsOfTheLanguageAndGiveNothingLate) {
    using namespace std::chrono_literals;
    for (const Language language : {Language::es, Language::en}) {
        Parrot model;
        model.answer = "Bien.";
        EXPECT_EQ(lumo::summaryWriter(model, {}, language)({"A.", "B."}), "Bien.");
        EXPECT_EQ(model.last.instructions, lumo::AISummaryWriter::instructions(language));
        EXPECT_EQ(model.last.prompt, "A.\nB.");
        EXPECT_EQ(lumo::helpWriter(model, {}, language)("¿Q?", "AYUDA"), "Bien.");
        EXPECT_EQ(model.last.instructions, lumo::HelpWriter::instructions(language));
        EXPECT_EQ(model.last.prompt, lumo::HelpWriter::prompt("¿Q?", "AYUDA", language));
        EXPECT_FALSE(model.last.schema);
        model.isSlow = true;
        EXPECT_EQ(lumo::summaryWriter(model, {}, language, 1ms)({}), std::nullopt);
        EXPECT_EQ(lumo::helpWriter(model, {}, language, 1ms)("", ""), std::nullopt);
        model.reason = "no";
        EXPECT_FALSE(lumo::summaryWriter(model, {}, language));
        EXPECT_FALSE(lumo::helpWriter(model, {}, language));
    }
}
