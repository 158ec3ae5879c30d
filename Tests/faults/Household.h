#pragma once

#include "Tests/faults/Manifest.h"
#include "Tests/faults/Scenario.h"

namespace tarvo::faults {

enum class Fault { loss, unrestorable, crash, hang, broken };

/// One thing that must never happen and did.
struct Finding {
    Fault fault;
    std::string text;
};

/// Fails the running test for each.
void expectNone(const std::vector<Finding>& found);

/// A home folder as a scenario wants it, what stands beside it, and what was there before anything ran.
class Household final {
  public:
    /// Furnishes and prepares. The scenario must outlive it.
    explicit Household(const Scenario& scenario);

    /// The folder that holds all of it.
    [[nodiscard]] const std::string& slot() const { return slot_.path(); }
    [[nodiscard]] const std::string& home() const { return home_; }
    [[nodiscard]] std::string path(std::string_view name) const { return home_ + "/" + std::string(name); }
    [[nodiscard]] std::string canary() const { return slot_.path("canary"); }
    /// Where the tracer writes.
    [[nodiscard]] std::string traceFile() const { return slot_.path("trace"); }

    /// Puts everything back as it was when the preparation had ended.
    void reset() const;
    /// Runs a script in the folder that holds everything; "template/home" is the home as it is after a reset.
    void runShell(const std::string& script) const;

    /// A command of the program for this home, with the words put before it.
    [[nodiscard]] Arguments words(const Arguments& command, const Arguments& before = {}) const;
    [[nodiscard]] Child start(const Arguments& command, const Arguments& before = {}) const;
    Ran run(const Arguments& command, const Arguments& before = {}) const {
        return start(command, before).wait();
    }
    /// The same for the command under test.
    [[nodiscard]] Child startScenario(const Arguments& before = {}) const {
        return start(scenario_.command, before);
    }
    [[nodiscard]] Arguments environment() const;

    /// What a run says about itself that is not so. What a signal ended says nothing.
    [[nodiscard]] std::vector<Finding> lies(const Ran& ended) const;

    /// Starts the next command, takes everything back, and tells what is not as it must be then.
    [[nodiscard]] std::vector<Finding> settle() const;
    /// What differs from the beginning in the home, the state of the program left aside.
    [[nodiscard]] std::vector<Difference> changes() const;
    /// The same for what stands beside the home.
    [[nodiscard]] std::vector<Finding> canaryFindings() const;

  private:
    void takeBack(std::vector<Finding>& found) const;

    const Scenario& scenario_;
    testing::TempHome slot_;
    std::string home_;
    Manifest homeBefore_;
    Manifest canaryBefore_;
    Tolerance tolerance_;
};

} // namespace tarvo::faults
