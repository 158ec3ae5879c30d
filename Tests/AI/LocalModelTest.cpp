#include "LumoAI/LocalModel.h"

#include "LumoAI/Instructions.h"
#include "LumoAI/WithTimeout.h"
#include "Tests/AI/FakeModelService.h"
#include "Tests/support/TempHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

using namespace lumo;
using namespace tarvo::testing;
using namespace testing;

namespace {

using namespace std::chrono_literals;

constexpr auto bothInterfaces = {ChatInterface::ollama, ChatInterface::openAI};

LocalModel modelOf(const FakeModelService& service) {
    return LocalModel(LocalModelPlace::parse(service.place()).value());
}

httplib::Server::Handler say(const std::string& reply, int status = 200) {
    return [=](const httplib::Request&, httplib::Response& response) {
        response.status = status;
        response.set_content(reply, "application/json");
    };
}

/// What the model says to a plain question; "failed" when it fails.
std::string answer(LocalModel& model, const std::stop_token& stop = {}) {
    return model.respond({.instructions = "Sé breve.", .prompt = "¿Qué?"}, stop).value_or("failed");
}

} // namespace

TEST(LocalModel, IsAskedInTheWordsOfEitherInterface) {
    setenv("http_proxy", "http://127.0.0.1:1", 1);
    const AnswerSchema schema = folderAnswerSchema(Language::es);
    const std::string form = dumpJson(schema.json(), JsonLayout::line);
    EXPECT_LT(form.find("\"que_es\":{"), form.find("\"pertenece_a\":{"));
    EXPECT_LT(form.find("\"pertenece_a\":{"), form.find("\"riesgo\":{"));
    EXPECT_LT(form.find("\"riesgo\":{"), form.find("\"motivo\":{"));
    EXPECT_LT(form.find("\"motivo\":{"), form.find("\"accion\":{"));
    const std::string begin = R"({"model":"llama3.2","messages":[{"role":"system","content":"A     B"},)"
                              R"({"role":"user","content":"ñ"}],"stream":false,)";
    const std::vector<std::string> expected{
        begin + R"("options":{"temperature":0,"seed":1,"num_predict":512},"think":false,"format":)" + form +
            "}",
        begin +
            R"("temperature":0,"seed":1,"max_tokens":512,"response_format":{"type":"json_schema",)"
            R"("json_schema":{"name":"ExplicacionCarpeta","strict":true,"schema":)" +
            form + "}}}"};
    for (const ChatInterface chat : bothInterfaces) {
        FakeModelService service(chat);
        service.reply = say(service.wrapped("{\"x\":1}"));
        LocalModel model = modelOf(service);
        EXPECT_EQ(model.unavailableReason(Language::es), std::nullopt);
        EXPECT_EQ(model.respond({"A     B", "ñ", schema}, {}), "{\"x\":1}");
        EXPECT_THAT(service.questions(), ElementsAre(expected[static_cast<std::size_t>(chat)]));
    }
    unsetenv("http_proxy");
}

TEST(LocalModel, FailsOnEveryReplyButACompleteAnswer) {
    for (const ChatInterface chat : bothInterfaces) {
        FakeModelService service(chat);
        LocalModel model = modelOf(service);
        service.reply = say(service.wrapped(" <think>hm</think>\nBien,\n\tasí. "));
        EXPECT_EQ(answer(model), "Bien, así.");
        const auto replaced = [&](std::string_view part, std::string_view by) {
            std::string reply = service.wrapped("Bien.");
            return reply.replace(reply.find(part), part.size(), by);
        };
        for (const std::string& reply :
             {std::string(), std::string("{"), std::string("[]"), std::string("{\"choices\":[]}"),
              replaced("\"Bien.\"", "7"), replaced("\"stop\"", "\"length\""), replaced("Bien.", "\\u001b[2J"),
              replaced("Bien.", "\\udc00"), replaced("Bien.", std::string(4001, 'x')),
              replaced("{", "{\"remote_host\":\"https://elsewhere\",")}) {
            service.reply = say(reply);
            EXPECT_EQ(answer(model), "failed") << reply.substr(0, 200);
        }
        for (const int status : {201, 404, 500, 503}) {
            service.reply = say(service.wrapped("Bien."), status);
            EXPECT_EQ(answer(model), "failed") << status;
        }
        service.reply = say(std::string(2000000, ' ') + service.wrapped("Bien."));
        EXPECT_EQ(answer(model), "failed") << "a huge reply";
        service.reply = [](const httplib::Request&, httplib::Response& response) {
            response.set_content_provider(100, "application/json", [](auto, auto, httplib::DataSink& sink) {
                sink.write("{}", 2);
                return false;
            });
        };
        EXPECT_EQ(answer(model), "failed") << "a reply cut off by its end";
        const std::size_t asked = service.questions().size();
        service.reply = [](const httplib::Request&, httplib::Response& response) {
            response.set_redirect("/elsewhere", 307);
        };
        EXPECT_EQ(answer(model), "failed");
        EXPECT_THAT(service.questions(), SizeIs(asked + 1)) << "the redirection was followed";
    }
}

TEST(LocalModel, NeverSendsAnythingToAModelOnAnotherMachine) {
    for (const char* where :
         {R"("remote_host":"https://elsewhere:443")", R"("remote_model":"big")", R"("remote_host":7)"}) {
        FakeModelService service(ChatInterface::ollama);
        service.models =
            std::string(R"({"models":[{"name":"other"},{"name":"llama3.2:latest",)") + where + "}]}";
        service.reply = say(service.wrapped("Bien."));
        LocalModel model = modelOf(service);
        EXPECT_THAT(model.unavailableReason(Language::en).value_or(""), HasSubstr("another machine"));
        EXPECT_EQ(answer(model), "failed");
        EXPECT_THAT(service.questions(), IsEmpty());
    }
}

TEST(LocalModel, SaysWhyItCannotBeUsed) {
    FakeModelService service(ChatInterface::ollama);
    LocalModel model = modelOf(service);
    service.models = R"({"models":[{"name":"llama3.2:1b"}]})";
    EXPECT_THAT(model.unavailableReason(Language::es).value_or(""),
                HasSubstr("no tiene el modelo «llama3.2»"));
    for (const char* models : {"", "[]", R"({"models":7})", R"({"models":[],"data":[]})"}) {
        service.models = models;
        EXPECT_EQ(model.unavailableReason(Language::es), "el modelo no está disponible") << models;
    }
    // Nobody listens on the port of a service that is gone.
    const auto gone = std::make_unique<FakeModelService>(ChatInterface::ollama)->place();
    LocalModel nobody(LocalModelPlace::parse(gone).value());
    EXPECT_EQ(nobody.unavailableReason(Language::en), "the model isn't available");
}

TEST(LocalModel, IsGivenUpWhenTheTimeRunsOut) {
    for (const ChatInterface chat : bothInterfaces) {
        FakeModelService service(chat);
        service.reply = [&](const httplib::Request&, httplib::Response&) { service.waitForTheEnd(); };
        LocalModel model = modelOf(service);
        EXPECT_EQ(withTimeout(100ms, [&](const std::stop_token& stop) { return answer(model, stop); }),
                  std::nullopt);
        EXPECT_THAT(service.questions(), SizeIs(1));
    }
}

TEST(LocalModelPlace, IsLiterallyThisMachineAndNothingElse) {
    using platform::LoopbackFamily;
    EXPECT_EQ(LocalModelPlace::parse("http://127.0.0.1:11434 llama3.2"),
              (LocalModelPlace{{LoopbackFamily::ipv4, 11434}, "llama3.2"}));
    EXPECT_EQ(LocalModelPlace::parse("http://[::1]:65535 /my models/a.gguf"),
              (LocalModelPlace{{LoopbackFamily::ipv6, 65535}, "/my models/a.gguf"}));
    for (const std::string& refused : wordsIn(R"(http://127.0.0.1 http://127.0.0.1: http://127.0.0.1:0
            http://127.0.0.1:65536 http://127.0.0.1:080 http://127.0.0.1:+80 http://127.0.0.1:80/
            http://127.0.0.1:80/v1 http://127.0.0.1:80?a http://127.0.0.1:80#a http://u@127.0.0.1:80
            http://127.0.0.1:80@example.com:80 https://127.0.0.1:80 HTTP://127.0.0.1:80 127.0.0.1:80
            http://localhost:80 http://127.0.0.2:80 http://127.1:80 http://0x7f000001:80 http://0.0.0.0:80
            http://[::]:80 http://[0:0:0:0:0:0:0:1]:80 http://[::ffff:127.0.0.1]:80 http://::1:80
            http://[::1%lo]:80 http://192.168.1.2:80)")) {
        EXPECT_EQ(LocalModelPlace::parse(refused + " m"), std::nullopt) << refused;
    }
    for (const char* refused :
         {"", "http://127.0.0.1:11434", "http://127.0.0.1:11434 ", "http://127.0.0.1:11434  m",
          "http://127.0.0.1:80 m\n", "http://127.0.0.1:80 \xFF"}) {
        EXPECT_EQ(LocalModelPlace::parse(refused), std::nullopt) << refused;
    }
}
