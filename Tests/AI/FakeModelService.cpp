#include "Tests/AI/FakeModelService.h"

#include <condition_variable>

namespace tarvo::testing {

using lumo::ChatInterface;
using lumo::JsonValue;

FakeModelService::FakeModelService(ChatInterface chat)
    : models(chat == ChatInterface::ollama ? R"({"models":[{"name":"llama3.2:latest"}]})"
                                           : R"({"object":"list","data":[{"id":"/models/l.gguf"}]})"),
      chat_(chat), port_(server_.bind_to_any_port("127.0.0.1")) {
    const auto list = [this](const httplib::Request&, httplib::Response& response) {
        response.set_content(models, "application/json");
    };
    const auto answer = [this](const httplib::Request& request, httplib::Response& response) {
        {
            const std::scoped_lock lock(mutex_);
            questions_.push_back(request.body);
        }
        reply(request, response);
    };
    server_.Get(std::string(modelsPath(chat)), list);
    server_.Post(std::string(chatPath(chat)), answer);
    server_.Post("/elsewhere", answer);
    thread_ = std::thread([this] { server_.listen_after_bind(); });
    while (!server_.is_running()) {
        std::this_thread::yield();
    }
}

FakeModelService::~FakeModelService() {
    end_.request_stop();
    server_.stop();
    thread_.join();
}

std::string FakeModelService::place() const {
    return "http://127.0.0.1:" + std::to_string(port_) + " llama3.2";
}

std::vector<std::string> FakeModelService::questions() const {
    const std::scoped_lock lock(mutex_);
    return questions_;
}

std::string FakeModelService::wrapped(const std::string& written) const {
    const std::string message =
        R"({"role":"assistant","content":)" + dumpJson({written}, lumo::JsonLayout::line) + "}";
    return chat_ == ChatInterface::ollama
               ? R"({"model":"llama3.2","message":)" + message + R"(,"done":true,"done_reason":"stop"})"
               : R"({"choices":[{"index":0,"message":)" + message + R"(,"finish_reason":"stop"}]})";
}

void FakeModelService::waitForTheEnd() {
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any().wait(lock, end_.get_token(), [] { return false; });
}

} // namespace tarvo::testing
