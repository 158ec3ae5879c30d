#include "LumoCore/Cleanup/HomeLock.h"

#include "LumoCore/Basics/OwnFiles.h"
#include "LumoCore/Basics/Reason.h"
#include "LumoCore/Basics/Text.h"
#include "LumoCore/Basics/Words.h"
#include "LumoCore/Cleanup/ApplicationFolders.h"
#include "LumoCore/Cleanup/Recovery.h"
#include "Platform/StateFile.h"

#include <cerrno>

namespace lumo {

using platform::BaseFolder;
using platform::LockFile;
using platform::SystemError;
using platform::SystemResult;
using namespace std::chrono_literals;

namespace {

constexpr auto purgePause = 1h;
constexpr auto longAbsence = 30 * 24h;

LockNote noteIn(const std::string& content) {
    return decodeJson<LockNote>(content).value_or(LockNote());
}

void write(const LockFile& file, const LockNote& note) {
    file.write(dumpJson(encode(note), JsonLayout::line) + "\n");
}

bool isFull(const SystemError& error) {
    return error.code == ENOSPC || error.code == EDQUOT;
}

/// Who is at work, as far as it told.
Failure busy(const std::string& lockPath) {
    std::string holder;
    if (const auto content = platform::readWhole(lockPath, 4096)) {
        holder = printable(noteIn(*content).holder);
    }
    const std::string who = holder.empty() ? Words{"otro programa", "another program"}.in() : holder;
    return {Words{"{} está cambiando esta carpeta personal: espera a que acabe",
                  "{} is changing this home folder: wait until it has finished"}
                .with(who)};
}

Failure unlockable(const SystemError& error) {
    return {Words{"no puedo escribir en la carpeta de Tarvo AI ({}): comprueba sus "
                  "permisos",
                  "cannot write into Tarvo AI's folder ({}): check its permissions"}
                .with(reasonText(error))};
}

} // namespace

bool HomeLock::isForeign(const std::string& home) {
    constexpr unsigned root = 0;
    return platform::currentUser() == root && platform::ownerOf(home).value_or(root) != root;
}

std::string HomeLock::foreignText() {
    return Words{"esta carpeta personal es de otro usuario: ejecútalo con su cuenta",
                 "this home folder is another user's: run it as that user"}
        .in();
}

Result<HomeLock> HomeLock::take(const PathGuard& guard, const Request& request) {
    if (!guard.base()) {
        return failure(Words{"esta carpeta personal no se puede abrir: indica otra con --home",
                             "this home folder cannot be opened: name another with --home"}
                           .in());
    }
    if (isForeign(guard.home())) {
        return failure(foreignText());
    }
    const std::string path = OwnFiles::lock(guard.home());
    HomeLock lock;
    const SystemResult<BaseFolder> support = ApplicationFolders::makeSupport(*guard.base());
    SystemResult<LockFile> file =
        support ? LockFile::take(path, request.patience) : std::unexpected(support.error());
    if (!file && file.error().code == EWOULDBLOCK) {
        return std::unexpected(busy(path));
    }
    if (!file && !isFull(file.error())) {
        return std::unexpected(unlockable(file.error()));
    }
    // A disk that is too full even for the lock file is just the one to clean: those who meet on it are kept
    // apart by the home folder itself.
    SystemResult<LockFile> home = LockFile::takeFolder(guard.home(), request.patience);
    if (!home && (!file || home.error().code == EWOULDBLOCK)) {
        return std::unexpected(busy(path));
    }
    if (home) {
        lock.home_ = std::move(*home);
    }
    if (file) {
        lock.file_ = std::move(*file);
        lock.note_ = noteIn(lock.file_->content());
        lock.note_.holder = request.program;
        // Nobody here for that long, says the clock: it may just as well be wrong.
        if (lock.file_->lastTouched() && request.now - *lock.file_->lastTouched() > longAbsence) {
            lock.note_.purgePutOff = request.now + purgePause;
        }
        write(*lock.file_, lock.note_);
    }
    lock.unlogged_ = Recovery::recover(guard, request.now);
    return lock;
}

bool HomeLock::mayPurge(Date now, std::chrono::seconds clockDrift) {
    if (!file_) {
        return false;
    }
    if (clockDrift > purgePause) {
        note_.purgePutOff = now + purgePause;
        write(*file_, note_);
    }
    // A date further ahead was written by a clock that was wrong itself.
    const std::optional<Date>& putOff = note_.purgePutOff;
    return !putOff || now >= *putOff || *putOff - now > purgePause;
}

} // namespace lumo
