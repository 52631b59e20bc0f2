#include "fake_support.hpp"
#include "platform/macos/mac_qt_view.hpp"

#include <QWindow>

#include <map>

/// The view of a window of Qt: the window follows its size.
@interface FakeQtView : NSView {
@public
    QWindow* _window;
}
@end
@implementation FakeQtView
- (void)setFrame:(NSRect)frame {
    [super setFrame:frame];
    _window->resize(static_cast<int>(frame.size.width), static_cast<int>(frame.size.height));
}
@end

namespace orvel::macos {

CFTypeRef nativeViewOf(QWindow& window) {
    static std::map<QWindow*, FakeQtView*> views;
    FakeQtView*& view = views[&window];
    if (view == nil) {
        view = [FakeQtView new];
        view->_window = &window;
        // Windows of Qt may have the address of one that is gone.
        QObject::connect(&window, &QObject::destroyed, [&window] { views.erase(&window); });
    }
    return (CFTypeRef)(void*)view;
}

}  // namespace orvel::macos
