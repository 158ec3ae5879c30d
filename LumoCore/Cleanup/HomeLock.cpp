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

std::optional<LockVisit> visitNow(const HomeLock::Request& request) {
    if (!request.boot) {
        return std::nullopt;
    }
    return LockVisit{.wall = request.now, .boot = request.boot->boot, .bootSeconds = request.boot->seconds};
}

/// True when the wall clock went faster or slower since the last visit than the one that nobody sets.
bool hasBeenSet(const std::optional<LockVisit>& last, const HomeLock::Request& request) {
    if (!last || !request.boot || last->boot != request.boot->boot) {
        return false;
    }
    const auto wall = std::chrono::duration<double>(request.now - last->wall);
    const auto boot = std::chrono::duration<double>(static_cast<double>(request.boot->seconds) -
                                                    static_cast<double>(last->bootSeconds));
    return std::chrono::abs(wall - boot) > purgePause;
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
    if (!file && !(isFull(file.error()) && platform::isMissing(path))) {
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
        lock.beginVisit(request);
    }
    lock.homePath_ = guard.home();
    lock.now_ = request.now;
    lock.unlogged_ = Recovery::recover(guard, request.now);
    return lock;
}

HomeLock::~HomeLock() {
    if (!unlogged_.empty()) {
        (void)Recovery::settleIntents(PathGuard(homePath_), now_);
    }
}

void HomeLock::beginVisit(const Request& request) {
    note_ = noteIn(file_->content());
    note_.holder = request.program;
    // A date further ahead was written by a clock that was wrong itself.
    if (note_.purgePutOff && *note_.purgePutOff - request.now > purgePause) {
        note_.purgePutOff.reset();
        note_.isPurgeDue.reset();
    }
    const bool isOver = !note_.purgePutOff || request.now >= *note_.purgePutOff;
    const bool isAbsence = file_->lastTouched() && request.now - *file_->lastTouched() > longAbsence;
    // Nobody here for that long, says the clock: it may just as well be wrong. Saying so again, after
    // somebody was here and an hour went by, it is right.
    const bool isNews = isAbsence && !(note_.isPurgeDue && isOver);
    if (isNews || hasBeenSet(note_.lastVisit, request)) {
        note_.purgePutOff = request.now + purgePause;
    }
    if (isNews) {
        note_.isPurgeDue = true;
    } else if (!isAbsence && isOver) {
        note_.isPurgeDue.reset();
    }
    note_.lastVisit = visitNow(request);
    write(*file_, note_);
}

bool HomeLock::mayPurge(Date now, std::chrono::seconds clockDrift) {
    if (!file_) {
        return false;
    }
    if (clockDrift > purgePause) {
        note_.purgePutOff = now + purgePause;
        write(*file_, note_);
    }
    if (note_.purgePutOff && now < *note_.purgePutOff) {
        return false;
    }
    if (note_.isPurgeDue) {
        note_.isPurgeDue.reset();
        write(*file_, note_);
    }
    return true;
}

} // namespace lumo
