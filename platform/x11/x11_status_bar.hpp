#pragma once

#include "platform/qt/qt_status_bar.hpp"

namespace orvel::x11 {

/// The tray of an X11 desktop, whichever of its two protocols it speaks: Qt knows both.
using X11StatusBar = qt::QtStatusBar;

}  // namespace orvel::x11
