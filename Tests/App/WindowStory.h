#pragma once

#include "TarvoApp/App/QtText.h"
#include "TarvoApp/Views/MainWindow.h"
#include "TarvoApp/Views/ReleaseNotes.h"
#include "Tests/App/AppStory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAccessible>
#include <QMetaEnum>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::testing {

inline std::vector<std::string> warnings;

inline void keepWarnings(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg) {
        warnings.push_back(bytesOf(message));
    }
}

inline void visit(QAccessibleInterface* item, const std::function<void(QAccessibleInterface&)>& see) {
    if (item == nullptr || item->state().invisible) {
        return;
    }
    see(*item);
    for (int child = 0; child < item->childCount(); ++child) {
        visit(item->child(child), see);
    }
}

/// The main window as a person and a screen reader find it.
class MainWindowTest : public ::testing::Test {
  protected:
    explicit MainWindowTest(const RunMode& mode = {.isDemo = true}) : story(mode) {
        qputenv("QT_QUICK_BACKEND", "software");
        QAccessible::setActive(true);
        warnings.clear();
        previous_ = qInstallMessageHandler(keepWarnings);
    }
    ~MainWindowTest() override {
        windows_.reset();
        qInstallMessageHandler(previous_);
        EXPECT_THAT(warnings, ::testing::IsEmpty());
    }

    QQuickWindow& open() {
        QQuickWindow& window = begin();
        window.resize(1180, 760); // The screen that is none has no room for that.
        EXPECT_TRUE(story.waitUntil(
            [&] { return story.app().scanning()->hasReport() && !story.app().activity()->isBusy(); }));
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        return window;
    }

    /// The window with whatever goes on then.
    QQuickWindow& begin() {
        story.app().settings()->setWelcomeSeen(true);
        story.app().settings()->setSeenNews(ReleaseNotes::version());
        if (story.app().showsWelcome()) {
            story.app().finishWelcome();
        }
        windows_.reset(); // What it keeps is what the next one begins with.
        windows_ = std::make_unique<MainWindow>(story.app());
        return *windows_->window();
    }

    /// The first thing that can be seen and whose name begins so.
    QAccessibleInterface* named(const std::string& name) {
        QAccessibleInterface* found = nullptr;
        visit(QAccessible::queryAccessibleInterface(windows_->window()), [&](QAccessibleInterface& item) {
            if (found == nullptr && bytesOf(item.text(QAccessible::Name)).starts_with(name)) {
                found = &item;
            }
        });
        return found;
    }

    /// All that a screen reader finds, as "role|name".
    std::vector<std::string> told() {
        std::vector<std::string> items;
        visit(QAccessible::queryAccessibleInterface(windows_->window()), [&](QAccessibleInterface& item) {
            items.push_back(QMetaEnum::fromType<QAccessible::Role>().valueToKey(item.role()) +
                            std::string("|") + bytesOf(item.text(QAccessible::Name)));
        });
        return items;
    }

    void click(const std::string& name) {
        QAccessibleInterface* const item = named(name);
        ASSERT_NE(item, nullptr) << name;
        const QPoint middle = windows_->window()->mapFromGlobal(item->rect().center());
        QTest::mouseClick(windows_->window(), Qt::LeftButton, {}, middle);
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(windows_->window(), key, modifiers);
    }

    [[nodiscard]] std::string focused() const {
        QObject* const item = windows_->window()->activeFocusItem();
        QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(item);
        return told == nullptr ? "" : bytesOf(told->text(QAccessible::Name));
    }

    AppStory story;

  private:
    std::unique_ptr<MainWindow> windows_;
    QtMessageHandler previous_ = nullptr;
};

class MainWindowAtHomeTest : public MainWindowTest {
  protected:
    MainWindowAtHomeTest() : MainWindowTest(RunMode()) {}
};

} // namespace tarvo::testing
