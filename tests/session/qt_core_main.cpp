#include "tests/session/own_home.hpp"

#include <QCoreApplication>
#include <gmock/gmock.h>

/// For tests that need Qt's event loop and none of its windows.
int main(int argc, char** argv) {
    const orvel::test::OwnHome home;
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
