#include <QGuiApplication>

#include <gtest/gtest.h>

/// Windows and pictures are drawn into memory: a machine without a screen runs these tests all the same.
int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments);
    ::testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
