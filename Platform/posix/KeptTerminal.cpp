#include "Platform/KeptTerminal.h"

#include <langinfo.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <clocale>
#include <csignal>
#include <cstring>

namespace lumo::platform {

namespace {

/// What a handler of signals may touch: nothing here is allocated.
struct Kept {
    termios settings = {};
    std::array<char, 256> leaving = {};
    std::atomic<std::size_t> leavingBytes = 0;
    std::atomic<bool> isKept = false;
};
Kept kept;

constexpr std::array crashes{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGSYS, SIGTRAP, SIGQUIT};

/// A stack that has overflown cannot hold the handler.
alignas(16) std::array<char, 16384> spareStack;

void giveBack(int signal) {
    if (kept.isKept.exchange(false)) {
        static_cast<void>(!write(STDOUT_FILENO, kept.leaving.data(), kept.leavingBytes));
        static_cast<void>(tcsetattr(STDIN_FILENO, TCSANOW, &kept.settings));
    }
    // The handler is gone by now (SA_RESETHAND), so that this ends the process as it would have without us.
    static_cast<void>(raise(signal));
}

void maskStops(int how) {
    sigset_t stops;
    sigemptyset(&stops);
    sigaddset(&stops, SIGTSTP);
    pthread_sigmask(how, &stops, nullptr);
}

} // namespace

bool speakLocalCharacters() {
    std::setlocale(LC_CTYPE, "");
    return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
}

KeptTerminal::KeptTerminal() {
    kept.leavingBytes = 0;
    kept.isKept = tcgetattr(STDIN_FILENO, &kept.settings) == 0;
    stack_t spare = {};
    spare.ss_sp = spareStack.data();
    spare.ss_size = spareStack.size();
    sigaltstack(&spare, nullptr);
    struct sigaction action = {};
    action.sa_handler = giveBack;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_ONSTACK | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    for (const int crash : crashes) {
        sigaction(crash, &action, nullptr);
    }
    maskStops(SIG_BLOCK);
}

KeptTerminal::~KeptTerminal() {
    if (kept.isKept.exchange(false)) {
        static_cast<void>(tcsetattr(STDIN_FILENO, TCSADRAIN, &kept.settings));
    }
    for (const int crash : crashes) {
        std::signal(crash, SIG_DFL);
    }
    maskStops(SIG_UNBLOCK);
}

void KeptTerminal::leaveWith(const std::string& bytes) {
    const std::size_t count = std::min(bytes.size(), kept.leaving.size());
    std::memcpy(kept.leaving.data(), bytes.data(), count);
    kept.leavingBytes = count;
}

StopsAllowed::StopsAllowed() {
    maskStops(SIG_UNBLOCK);
}

StopsAllowed::~StopsAllowed() {
    maskStops(SIG_BLOCK);
}

} // namespace lumo::platform
