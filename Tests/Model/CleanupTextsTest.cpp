#include "TarvoModel/Showing/CleanupTexts.h"

#include <gtest/gtest.h>

using namespace lumo;
using namespace tarvo;

TEST(CleanupTexts, TheConfirmationTellsApartWhatIsDeletedRunByAToolAndSetAside) {
    const auto action = [](Safety safety, Method how, std::int64_t bytes) {
        return CleanupAction{.safety = safety, .estimatedBytes = bytes, .method = std::move(how)};
    };
    const CleanupAction cache = action(Safety::safe, method::TrashItems{}, 1000);
    const CleanupAction tool = action(Safety::safe, method::Command{}, 2000);
    const CleanupAction images = action(Safety::review, method::Command{}, 4000000);
    const CleanupAction letter = action(Safety::review, method::TrashContents{}, 8000000);
    const CleanupAction cloud = action(Safety::review, method::EvictFromICloud{}, 16000);
    EXPECT_EQ(sharesOf({cache, tool, images, letter, cloud}),
              (CleanupShares{.total = 12019000, .trash = 8000000, .tool = 4000000}));
    EXPECT_EQ(
        confirmationMessage({cache, tool}, Language::en),
        "Everything selected recreates itself: it's deleted right away and the space is freed instantly.");
    EXPECT_EQ(
        confirmationMessage({images}, Language::en),
        "What recreates itself is deleted right away. 4 MB is deleted by its own tool (Docker, Ollama…): "
        "freed right away and can't be undone.");
    EXPECT_EQ(
        confirmationMessage({cache, images, letter}, Language::es),
        "Lo que se regenera solo se borra ya. 4 MB los borra su propia herramienta (Docker, Ollama…): se "
        "liberan ya y no se pueden deshacer. 8 MB de lo tuyo se apartan 7 días: se pueden recuperar hasta "
        "entonces.");
}

TEST(CleanupTexts, TheConfirmationSaysWhatMayHoldADatabase) {
    // The list warned of it, the question did not; and of a volume whose size nobody tells it said that it
    // recreates itself.
    const auto command = [](std::string id, std::string title) {
        return CleanupAction{.id = std::move(id),
                             .title = std::move(title),
                             .safety = Safety::review,
                             .method = method::Command{}};
    };
    const std::vector actions{command("docker:docker:volume:data", "data"),
                              command("docker:podman:image:volume:x", "image"),
                              command("docker:podman:volume:a\nb", "a\nb")};
    EXPECT_EQ(
        confirmationMessage(actions, Language::es),
        "Lo que se regenera solo se borra ya. 0 MB los borra su propia herramienta (Docker, Ollama…): se "
        "liberan ya y no se pueden deshacer.\nPuede guardar una base de datos: data, a\\nb.");
    EXPECT_TRUE(confirmationMessage(actions, Language::en).ends_with("\nMay hold a database: data, a\\nb."));
}

TEST(CleanupTexts, TellWhatWasDoneAndTheFirstFailure) {
    EXPECT_EQ(cleanupDone({.freed = 3000000, .trashed = 0}, Language::en),
              "Cleanup done: 3 MB freed and 0 MB in Recently Cleaned (deleted automatically in 7 days)");
    // A tool that was done and had left its cache was told of nowhere in the window.
    EXPECT_FALSE(
        remarkText({{.title = "uv"}, {.title = "a", .status = CleanupStatus::failed, .message = "b"}}));
    EXPECT_EQ(remarkText({{.title = "uv"}, {.title = "pip", .message = "left", .freedBytes = 1}}),
              "pip: left");
    EXPECT_EQ(
        remarkText({{.title = "npm", .message = "nothing"}}, Language::es),
        "npm: nothing. Ya no está marcado: cierra el programa que lo usa y prueba otra vez, o déjalo como "
        "está.");
    EXPECT_EQ(restoredText({.done = 2}, Language::es), "Recuperados 2 elementos de lo apartado");
    EXPECT_EQ(restoredText({.done = 2, .failures = {"a: x", "b: y"}}, Language::en),
              "Restored 2 items from Recently Cleaned · 2 couldn't be restored: a: x");
    EXPECT_EQ(emptiedText({.freed = 3000000}, Language::en), "Freed 3 MB: Recently Cleaned was emptied");
    EXPECT_EQ(emptiedText({.freed = 1, .failures = {"a: x"}}, Language::es, System::macos),
              "Vaciado con 1 errores: a: x");
    // One was spoken of as of several.
    EXPECT_EQ(emptiedText({.freed = 1, .failures = {"a: x"}}, Language::es, System::linux),
              "Vaciado con 1 error: a: x");
    EXPECT_EQ(restoredText({.done = 1, .failures = {"a: x"}}, Language::es, System::linux),
              "Recuperado 1 elemento de lo apartado · 1 no se pudo recuperar: a: x");
}

TEST(CleanupTexts, TheHelpWarnsOfWhatCannotBeTakenBackFirst) {
    EXPECT_EQ(cleanHelp({.total = 9}, Language::es),
              "Se libera al momento: todo lo marcado se regenera solo");
    // The keys of a Mac were replaced by hand in one window, and stood as they were everywhere else.
    EXPECT_EQ(cleanHelp({.total = 9, .trash = 4}, Language::en, System::macos),
              "Clean what's selected (⌘⌫). It always asks you to confirm.");
    EXPECT_EQ(cleanHelp({.total = 9, .trash = 4}, Language::es, System::linux),
              "Limpiar lo marcado (Ctrl+Retroceso). Siempre te pide confirmación.");
    EXPECT_EQ(cleanHelp({.total = 9, .trash = 4, .tool = 4}, Language::en),
              "Freed right away; Docker and Ollama items can't be undone");
    EXPECT_EQ(totalsOf({}), HeldTotals{});
    EXPECT_EQ(emptyBannerQuestion({.bytes = 3000000}, Language::en),
              "Permanently delete 3 MB from Recently Cleaned?");
}
