#pragma once

#include "Tests/support/Child.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace tarvo::testing {

/// A home folder of its own for one test, removed with everything in it afterwards. All names are relative to
/// it; folders on the way are made. Failing to make something ends the test program, since no test means
/// that.
class TempHome final {
  public:
    TempHome();
    ~TempHome();
    TempHome(const TempHome&) = delete;
    TempHome& operator=(const TempHome&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] std::string path(std::string_view name) const;

    std::string folder(std::string_view name) const;
    void folders(std::initializer_list<std::string_view> names) const;
    void files(std::initializer_list<std::string_view> names, std::size_t bytes = 0) const;
    /// A file of that many bytes, all of them written.
    std::string file(std::string_view name, std::size_t bytes = 0) const;
    std::string fileWith(std::string_view name, std::string_view content) const;
    /// A program that a shell runs.
    std::string program(std::string_view name, std::string_view script) const;
    /// A file with a length but no blocks.
    std::string sparseFile(std::string_view name, std::int64_t length) const;
    std::string link(std::string_view name, std::string_view target) const;
    std::string hardLink(std::string_view name, std::string_view existing) const;
    std::string fifo(std::string_view name) const;
    /// Sets the modification time, in seconds since 1970.
    void setModified(std::string_view name, std::int64_t seconds) const;
    void setMode(std::string_view name, unsigned mode) const;

  private:
    std::string path_;
};

/// Bytes that the one entry takes on disk, from its own status; links are not followed.
std::int64_t allocatedBytes(const std::string& path);

enum class Outcome { held, failed, notPossible };

/// Runs the work in a child process, whose rights, limits and mounts it may change.
Outcome inChild(const std::function<Outcome()>& work);

/// Runs the work in a child process without the rights of root and tells whether it returned true. The home
/// belongs to that user from then on.
Outcome asOrdinaryUser(const std::string& home, const std::function<bool()>& work);

/// Skips the running test where the work was not possible and fails it where it did not hold.
void expectHeld(Outcome outcome);

/// The bytes of the file; nothing where there is none.
std::string contentOf(const std::string& path);

/// The member of each record.
template <class Records, class Value, class Record>
std::vector<Value> eachOf(const Records& records, Value Record::* member) {
    std::vector<Value> values;
    std::ranges::transform(records, std::back_inserter(values), member);
    return values;
}

/// The words of a text, which blanks and line feeds separate: a table of samples.
Arguments wordsIn(std::string_view text);

} // namespace tarvo::testing
