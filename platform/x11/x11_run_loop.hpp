#pragma once

#include "platform/qt/qt_run_loop.hpp"

#include <memory>

namespace orvel::x11 {

/// The run loop of an X11 session: Qt's, since Qt's windows live in it.
[[nodiscard]] std::unique_ptr<qt::QtRunLoop> makeRunLoop();

}  // namespace orvel::x11
