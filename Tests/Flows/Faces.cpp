#include "Tests/Flows/Faces.h"

#include "TarvoApp/App/QtText.h"
#include "TarvoMCP/Tools.h"
#include "Tests/MCP/FakeClient.h"
#include "Tests/support/Child.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tarvo::testing {

namespace {

class CommandFace final : public Face {
  public:
    using Face::Face;

    std::string clean(const std::function<void()>& whileAsking) override {
        return answerOnTerminal(tarvoProgram(), {"clean", "--include", "whisper"}, environment(), "[y/N]",
                                [&] {
                                    whileAsking();
                                    return "y\n";
                                })
            .output;
    }
    std::string undo() override {
        const Ran ran = runProgram(tarvoProgram(), {"undo"}, environment());
        return ran.output + ran.error;
    }

  private:
    [[nodiscard]] Arguments environment() const {
        return {"HOME=" + home_, "XDG_DATA_DIRS=/nowhere", "TERM=xterm-256color", "TARVO_IDIOMA=en"};
    }
};

class WindowFace final : public Face {
  public:
    explicit WindowFace(const std::string& home) : Face(home) {
        story_.services.desk.home = home;
        story_.setFree(0);
    }

    std::string clean(const std::function<void()>& whileAsking) override {
        AppModel& app = story_.app();
        app.scanning()->scan();
        EXPECT_TRUE(story_.waitUntilIdle());
        app.ticked()->toggle(AppStory::ownKey);
        app.cleaning()->requestClean();
        EXPECT_TRUE(app.question()->isConfirming());
        whileAsking();
        app.question()->accept();
        EXPECT_TRUE(story_.waitUntilIdle());
        return told();
    }
    std::string undo() override {
        story_.app().holding()->undoLastCleanup();
        EXPECT_TRUE(story_.waitUntilIdle());
        return told();
    }

  private:
    std::string told() {
        return bytesOf(story_.app().scanning()->statusText()) + "\n" +
               bytesOf(story_.app().activity()->notice()) + "\n" +
               bytesOf(story_.app().cleaning()->lastFailures().join('\n'));
    }

    AppStory story_;
};

class ToolServerFace final : public Face {
  public:
    explicit ToolServerFace(const std::string& home) : Face(home) {
        const auto workspace = std::make_shared<mcp::Workspace>(home);
        tools_ = mcp::lookingTools(workspace);
        std::ranges::move(mcp::changingTools(workspace), std::back_inserter(tools_));
    }

    std::string clean(const std::function<void()>& whileAsking) override {
        const mcp::ToolAnswer proposed = call("propose_cleanup", R"({"include":["whisper"]})", [] {});
        EXPECT_TRUE(proposed.structured) << proposed.text;
        return call("clean", R"({"plan":")" + at(*proposed.structured, "plan") + "\"}", whileAsking).text;
    }
    std::string undo() override {
        return call("restore", "{}", [] {}).text;
    }

  private:
    mcp::ToolAnswer call(const std::string& name, const std::string& arguments,
                         const std::function<void()>& whileAsking) {
        const auto tool = std::ranges::find(tools_, name, &mcp::Tool::name);
        return tool->run({.arguments = lumo::parseJson(arguments).value(),
                          .caller = "Agent",
                          .progress = [](const mcp::Progress&) {},
                          .ask =
                              [&](const std::string&, const std::string&) {
                                  whileAsking();
                                  return mcp::Consent::given;
                              }});
    }

    std::vector<mcp::Tool> tools_;
};

} // namespace

std::unique_ptr<Face> faceOf(FaceKind kind, const std::string& home) {
    switch (kind) {
    case FaceKind::command:
        return std::make_unique<CommandFace>(home);
    case FaceKind::window:
        return std::make_unique<WindowFace>(home);
    case FaceKind::toolServer:
        break;
    }
    return std::make_unique<ToolServerFace>(home);
}

} // namespace tarvo::testing
