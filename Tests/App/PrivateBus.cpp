#include "Tests/App/PrivateBus.h"

#include <gtest/gtest.h>

#include <signal.h>

#include <string>

namespace tarvo::testing {

PrivateBus::PrivateBus() {
    const std::string settings =
        home_.fileWith("bus.conf", "<busconfig><type>session</type><listen>unix:path=" + home_.path("bus") +
                                       "</listen><policy context=\"default\">"
                                       "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
                                       "<allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                                       "</policy></busconfig>");
    // It goes into the background once it listens, and leaves the number of its process.
    const Ran ran =
        runProgram("dbus-daemon", {"--config-file=" + settings, "--fork", "--nopidfile", "--print-pid"});
    if (ran.exitCode != 0) {
        ADD_FAILURE() << ran.error;
        return;
    }
    process_ = std::stoi(ran.output);
}

PrivateBus::~PrivateBus() {
    for (const QString& name : connections_) {
        QDBusConnection::disconnectFromBus(name);
    }
    if (process_ > 0) {
        kill(process_, SIGTERM);
    }
}

QDBusConnection PrivateBus::connection(const QString& name) const {
    if (!connections_.contains(name)) {
        connections_ << name;
        return QDBusConnection::connectToBus("unix:path=" + QString::fromStdString(home_.path("bus")), name);
    }
    return QDBusConnection(name);
}

void PrivateBus::signal(int number) const {
    if (process_ > 0) {
        kill(process_, number);
    }
}

} // namespace tarvo::testing
