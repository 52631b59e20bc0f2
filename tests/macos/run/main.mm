#include <gmock/gmock.h>

#include <QGuiApplication>

#include <cstdlib>

/// Qt draws into memory, where no window system is.
int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    ::setenv("QT_QUICK_BACKEND", "software", 1);
    const QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
