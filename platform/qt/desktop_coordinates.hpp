#pragma once

#include "platform/base/geometry.hpp"

#include <QPoint>
#include <QRect>

namespace orvel::qt {

// The desktop counts pixels from the bottom left of the main screen; Qt counts points of its own
// scale from the top left.

/// The rectangle of that size in Qt's points whose middle of the top edge is that of `frame`.
QRect toQt(ScreenRect frame);
QPoint toQt(ScreenPoint point);
ScreenRect fromQt(QRect rect);
ScreenPoint fromQt(QPoint point);

}  // namespace orvel::qt
