#include "platform/macos/mac_qt_view.hpp"

#include <QWindow>

namespace orvel::macos {

CFTypeRef nativeViewOf(QWindow& window) { return reinterpret_cast<CFTypeRef>(window.winId()); }

}  // namespace orvel::macos
