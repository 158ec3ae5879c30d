#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

namespace tarvo::testing {

using Arguments = std::vector<std::string>;

/// How a program ended, and what it said.
struct Ran {
    int exitCode = -1; ///< Negative when a signal ended it.
    int signal = 0;
    bool hasHung = false; ///< It did not end by itself and was killed.
    std::string output;
    std::string error;
};

/// A program that takes longer hangs.
inline constexpr std::chrono::microseconds hangLimit = std::chrono::seconds(20);

/// A started program in a process group of its own, standard input empty, what it prints kept in memory.
class Child final {
  public:
    /// The first word is looked up in the search path; a program that is not there ends with 127.
    Child(const Arguments& words, const Arguments& environment);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void signal(int number) const;
    /// Waits for the end; kills the whole group when it does not come in time. To be called once.
    Ran wait(std::chrono::microseconds limit = hangLimit);

  private:
    pid_t process_ = -1;
    int output_ = -1;
    int error_ = -1;
};

/// Runs the program with those arguments and only the given environment ("NAME=value").
Ran runProgram(const std::string& program, const Arguments& arguments, const Arguments& environment = {});

/// Runs the program on a terminal of its own and types the text. Everything it shows, and the text, is in
/// `output`.
Ran runOnTerminal(const std::string& program, const Arguments& arguments, const Arguments& environment,
                  std::string_view typed);

/// The same; once the program has shown `question`, what `answer` gives is typed.
Ran answerOnTerminal(const std::string& program, const Arguments& arguments, const Arguments& environment,
                     std::string_view question, const std::function<std::string()>& answer);

/// The words as the system takes them, which last as long as these do.
std::vector<char*> pointersOf(Arguments& words);

/// The built command.
std::string tarvoProgram();

} // namespace tarvo::testing
