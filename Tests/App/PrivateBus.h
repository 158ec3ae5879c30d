#pragma once

#include "Tests/support/TempHome.h"

#include <QDBusConnection>
#include <QStringList>

#include <sys/types.h>

namespace tarvo::testing {

/// A message bus of its own for one test, which knows no services of this machine and starts none.
class PrivateBus final {
  public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    /// The connection of that name, made when there is none yet.
    [[nodiscard]] QDBusConnection connection(const QString& name) const;

    void signal(int number) const;

  private:
    TempHome home_;
    pid_t process_ = -1;
    mutable QStringList connections_;
};

} // namespace tarvo::testing
