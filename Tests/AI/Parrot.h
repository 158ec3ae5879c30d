#pragma once

#include "LumoAI/LanguageModel.h"

#include <thread>

namespace tarvo::testing {

/// A model that says what it was told to, and counts.
class Parrot final : public lumo::LanguageModel {
  public:
    std::optional<std::string> unavailableReason(lumo::Language) override {
        ++probes;
        return reason;
    }
    lumo::Result<std::string> respond(const lumo::ModelRequest& request,
                                      const std::stop_token& stop) override {
        ++questions;
        last = request;
        while (isSlow && !stop.stop_requested()) {
            std::this_thread::yield();
        }
        return answer;
    }

    std::optional<std::string> reason;
    std::string answer;
    lumo::ModelRequest last;
    bool isSlow = false;
    int probes = 0;
    int questions = 0;
};

} // namespace tarvo::testing
