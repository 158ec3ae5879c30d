#include "TarvoApp/App/Notifier.h"
#include "TarvoApp/App/PanelWatch.h"
#include "Tests/App/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QVariantMap>

#include <gtest/gtest.h>

#include <csignal>

using tarvo::Notification;
using tarvo::Notifier;
using tarvo::PanelWatch;
using tarvo::RunMode;
using tarvo::testing::PrivateBus;

/// The desktop's side, as far as it matters here.
class FakeDesktop final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

  public:
    explicit FakeDesktop(const QDBusConnection& bus) : bus_(bus) {
        bus_.registerObject("/org/freedesktop/Notifications", this,
                            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        bus_.registerService("org.freedesktop.Notifications");
    }
    ~FakeDesktop() override { bus_.unregisterService("org.freedesktop.Notifications"); }
    FakeDesktop(const FakeDesktop&) = delete;
    FakeDesktop& operator=(const FakeDesktop&) = delete;

    QStringList shown; ///< "number: title" of each call.

  public Q_SLOTS:
    QString GetServerInformation(QString& vendor, QString& version, QString& names) {
        vendor = version = names = "x";
        return "Fake";
    }
    uint Notify(const QString& /*program*/, uint replaced, const QString& /*icon*/, const QString& title,
                const QString& /*body*/, const QStringList& /*actions*/, const QVariantMap& /*hints*/,
                int /*timeout*/) {
        const uint number = replaced != 0 ? replaced : ++last_;
        shown << QString("%1: %2").arg(number).arg(title);
        return number;
    }

  Q_SIGNALS:
    void ActionInvoked(uint number, const QString& action);
    void NotificationClosed(uint number, uint reason);

  private:
    QDBusConnection bus_;
    uint last_ = 6;
};

/// The desktop's service that knows items of applications, and whatever shows them.
class FakePanel final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER isShown_)

  public:
    explicit FakePanel(const QDBusConnection& bus) : bus_(bus) {
        bus_.registerObject("/StatusNotifierWatcher", this,
                            QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSignals);
        bus_.registerService("org.kde.StatusNotifierWatcher");
    }
    void end() { bus_.unregisterService("org.kde.StatusNotifierWatcher"); }
    void show() {
        isShown_ = true;
        emit StatusNotifierHostRegistered();
    }

  Q_SIGNALS:
    void StatusNotifierHostRegistered();

  private:
    QDBusConnection bus_;
    bool isShown_ = false;
};

namespace {

const RunMode forReal;

Notification notice(const std::string& id, const std::string& title) {
    return {.id = id, .title = title, .body = "Body"};
}

/// Lets everything arrive that was sent on the bus before.
void settle(const QDBusConnection& bus) {
    const auto ping = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                     "org.freedesktop.DBus", "GetId");
    const QDBusPendingCall call = bus.asyncCall(ping);
    ASSERT_TRUE(QTest::qWaitFor([&] { return call.isFinished(); }));
    QCoreApplication::processEvents();
}

} // namespace

TEST(Notifier, ReplacesAnEarlierNoticeByItsIdAndTellsOfClicks) {
    const PrivateBus bus;
    FakeDesktop desktop(bus.connection("desktop"));
    Notifier notifier(bus.connection("app"), forReal);
    QSignalSpy clicks(&notifier, &Notifier::activated);
    ASSERT_TRUE(QTest::qWaitFor([&] { return notifier.isAvailable(); }));
    // The second and the third come before the first was answered: the second is never worth showing.
    notifier.send(notice("low", "One"));
    notifier.send(notice("low", "Two"));
    notifier.send(notice("low", "Three"));
    notifier.send(notice("weekly", "Four"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.shown.size() == 3; }));
    settle(bus.connection("app"));
    EXPECT_EQ(desktop.shown, (QStringList{"7: One", "8: Four", "7: Three"}));

    Q_EMIT desktop.ActionInvoked(9, "default");
    Q_EMIT desktop.ActionInvoked(8, "snooze");
    Q_EMIT desktop.ActionInvoked(8, "default");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !clicks.isEmpty(); }));
    Q_EMIT desktop.NotificationClosed(7, 2);
    Q_EMIT desktop.ActionInvoked(7, "default");
    settle(bus.connection("desktop"));
    settle(bus.connection("app"));
    notifier.send(notice("low", "Five"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return desktop.shown.size() == 4; }));
    EXPECT_EQ(desktop.shown.last(), "9: Five") << "what was closed is not replaced";
    EXPECT_EQ(clicks.size(), 1);
}

TEST(Notifier, ForgetsItsNumbersWhenTheServiceChanges) {
    // The new service may have given the number to another program's notice.
    const PrivateBus bus;
    Notifier notifier(bus.connection("app"), forReal);
    for (const char* name : {"first", "second"}) {
        FakeDesktop desktop(bus.connection(name));
        ASSERT_TRUE(QTest::qWaitFor([&] { return notifier.isAvailable(); }));
        notifier.send(notice("low", name));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !desktop.shown.isEmpty(); }));
        EXPECT_TRUE(desktop.shown.first().startsWith("7: "));
        settle(bus.connection("app"));
        bus.connection(name).unregisterService("org.freedesktop.Notifications");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !notifier.isAvailable(); }));
    }
}

TEST(Notifier, SendsNothingInTheDemoOrWhileTakingPictures) {
    const PrivateBus bus;
    FakeDesktop desktop(bus.connection("desktop"));
    for (const RunMode& mode : {RunMode{.isDemo = true}, RunMode{.isCapturing = true}}) {
        Notifier notifier(bus.connection("app"), mode);
        notifier.send(notice("low", "One"));
        settle(bus.connection("app"));
        settle(bus.connection("desktop"));
        EXPECT_FALSE(notifier.isAvailable());
    }
    EXPECT_TRUE(desktop.shown.isEmpty());
}

TEST(Notifier, TellsOnceTheServiceHasANoticeAndNeverWhenNobodyTookIt) {
    const PrivateBus bus;
    Notifier notifier(bus.connection("app"), forReal);
    int taken = 0;
    const auto send = [&] { notifier.send(notice("low", "One"), [&] { ++taken; }); };
    send();
    settle(bus.connection("app"));
    EXPECT_EQ(taken, 0);
    FakeDesktop desktop(bus.connection("desktop"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return notifier.isAvailable(); }));
    send();
    ASSERT_TRUE(QTest::qWaitFor([&] { return taken > 0; }));
    settle(bus.connection("app"));
    EXPECT_EQ(taken, 1);
    EXPECT_EQ(desktop.shown, QStringList{"7: One"});
}

TEST(Notifier, DropsWhatNobodyTakesAndHoldsNobodyUp) {
    const PrivateBus bus;
    const auto sendAll = [](Notifier& notifier) {
        notifier.send(notice("low", "One"));
        notifier.send(notice("low", "Two"));
    };
    Notifier withoutService(bus.connection("app"), forReal);
    sendAll(withoutService);
    settle(bus.connection("app"));
    EXPECT_FALSE(withoutService.isAvailable());
    Notifier withoutBus(QDBusConnection("none"), forReal);
    sendAll(withoutBus);
    EXPECT_FALSE(withoutBus.isAvailable());

    // A bus that answers nothing any more.
    const QDBusConnection frozen = bus.connection("frozen");
    bus.signal(SIGSTOP);
    QElapsedTimer timer;
    timer.start();
    Notifier stuck(frozen, forReal);
    sendAll(stuck);
    EXPECT_LT(timer.elapsed(), 2000);
    bus.signal(SIGCONT);
}

// An item that was made before anything could show it was lost for as long as the application ran.
TEST(PanelWatch, WaitsForWhatShowsTheItems) {
    const PrivateBus bus;
    const PanelWatch watch(bus.connection("app"));
    QSignalSpy changes(&watch, &PanelWatch::changed);
    FakePanel panel(bus.connection("panel"));
    EXPECT_FALSE(changes.wait(200)) << "nobody shows them";
    panel.show();
    EXPECT_TRUE(changes.wait());
    EXPECT_TRUE(watch.isThere());
    panel.end();
    EXPECT_TRUE(changes.wait());
    EXPECT_FALSE(watch.isThere());
}

#include "NotifierTest.moc"
