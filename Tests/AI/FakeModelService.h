#pragma once

#include "LumoAI/ChatInterface.h"

#include <httplib.h>

#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tarvo::testing {

/// A model service on this machine, which says what a test tells it to and keeps what it was asked.
class FakeModelService final {
  public:
    explicit FakeModelService(lumo::ChatInterface chat);
    ~FakeModelService();
    FakeModelService(const FakeModelService&) = delete;
    FakeModelService& operator=(const FakeModelService&) = delete;

    /// As the preference names it; the model is "llama3.2".
    [[nodiscard]] std::string place() const;
    /// The bodies of the questions that came, in their order.
    [[nodiscard]] std::vector<std::string> questions() const;
    /// The reply in which the service wraps what a model wrote.
    [[nodiscard]] std::string wrapped(const std::string& written) const;

    /// What there is to be said; to be set before the first question.
    std::string models;
    httplib::Server::Handler reply;

    /// Blocks until the service ends: for replies that never come.
    void waitForTheEnd();

  private:
    lumo::ChatInterface chat_;
    mutable std::mutex mutex_;
    std::vector<std::string> questions_;
    std::stop_source end_;
    httplib::Server server_;
    int port_ = 0;
    std::thread thread_;
};

} // namespace tarvo::testing
