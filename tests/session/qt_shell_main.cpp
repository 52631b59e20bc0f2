#include "platform/x11/x11_application.hpp"
#include "tests/session/own_home.hpp"
#include "tests/session/shell_desktop.hpp"

#include <gmock/gmock.h>

/// For tests that show windows of ours: Qt finds the embedded desktop in this very process.
int main(int argc, char** argv) {
    const orvel::test::OwnHome home;
    testing::InitGoogleMock(&argc, argv);
    const orvel::test::ShellDesktop desktop;
    const orvel::x11::X11Application application(argc, argv, 1);
    return RUN_ALL_TESTS();
}
