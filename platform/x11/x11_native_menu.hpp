#pragma once

#include "platform/qt/qt_native_menus.hpp"

namespace orvel::x11 {

/// An X11 desktop has no menus of its own to offer: Qt draws them.
using X11NativeMenus = qt::QtNativeMenus;

}  // namespace orvel::x11
