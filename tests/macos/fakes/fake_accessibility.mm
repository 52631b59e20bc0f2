#include "fake_support.hpp"

#include <condition_variable>
#include <mutex>

/// An application, one of its windows, the system or its focused text.
@interface FakeElement : NSObject {
@public
    int _pid;
    int _window;  // -1: the application itself
    bool _isSystem, _isText;
    float _timeout;
}
@end
@implementation FakeElement
@end

@interface FakeValue : NSObject {
@public
    AXValueType _type;
    CGRect _value;  // large enough for all of them
}
@end
@implementation FakeValue
@end

namespace {

using fake::Application;
using fake::Window;
using fake::world;

constexpr float kSystemLimit = 6;

FakeElement* elementFrom(AXUIElementRef element) { return fake::object(element); }

FakeElement* makeElement(int pid, int window) {
    FakeElement* element = [[FakeElement new] autorelease];
    element->_pid = pid;
    element->_window = window;
    element->_timeout = kSystemLimit;
    return element;
}

Application* applicationOf(FakeElement* element) {
    const auto found = world().applications.find(element->_pid);
    return found == world().applications.end() ? nullptr : &found->second;
}

Window* windowOf(FakeElement* element) {
    Application* application = applicationOf(element);
    const auto index = static_cast<std::size_t>(element->_window);
    if (application == nullptr || element->_window < 0) return nullptr;
    return index < application->windows.size() ? &application->windows[index] : nullptr;
}

/// Waits as long as the caller allows, as a call to a hung application does.
bool isHung(FakeElement* element) {
    const Application* application = applicationOf(element);
    if (application == nullptr || !application->isHung) return false;
    std::mutex mutex;
    std::condition_variable never;
    std::unique_lock lock(mutex);
    never.wait_for(lock, std::chrono::duration<float>(element->_timeout), [] { return false; });
    return true;
}

FakeValue* makeValue(AXValueType type, CGRect value) {
    FakeValue* made = [[FakeValue new] autorelease];
    made->_type = type;
    made->_value = value;
    return made;
}
FakeValue* point(double x, double y) {
    return makeValue(kAXValueTypeCGPoint, CGRect{{x, y}, {0, 0}});
}
FakeValue* size(double width, double height) {
    return makeValue(kAXValueTypeCGSize, CGRect{{width, height}, {0, 0}});
}

id applicationAttribute(FakeElement* element, NSString* name) {
    Application* application = applicationOf(element);
    if (application == nullptr) return nil;
    if ([name isEqual:@"AXEnhancedUserInterface"] && application->enhancedMode) {
        return [NSNumber numberWithBool:*application->enhancedMode];
    }
    if ([name isEqual:@"AXFocusedWindow"] && application->focusedWindow >= 0) {
        return makeElement(element->_pid, application->focusedWindow);
    }
    if (![name isEqual:@"AXWindows"]) return nil;
    NSMutableArray* windows = [NSMutableArray array];
    for (int i = 0; i < static_cast<int>(application->windows.size()); ++i) {
        [windows addObject:makeElement(element->_pid, i)];
    }
    return windows;
}

id windowAttribute(FakeElement* element, NSString* name) {
    const Window* window = windowOf(element);
    if (window == nullptr) return nil;
    if ([name isEqual:@"AXRole"]) return fake::text(window->role);
    if ([name isEqual:@"AXTitle"]) return fake::text(window->title);
    if ([name isEqual:@"AXPosition"]) return point(window->x, window->y);
    if ([name isEqual:@"AXSize"]) return size(window->width, window->height);
    if ([name isEqual:@"AXMinimized"]) return [NSNumber numberWithBool:window->isMinimized];
    return nil;
}

id attribute(FakeElement* element, NSString* name) {
    if (element->_isSystem) {
        if (![name isEqual:@"AXFocusedUIElement"] || !world().caret) return nil;
        FakeElement* text = makeElement(world().frontmost, -1);
        text->_isText = true;
        return text;
    }
    if (element->_isText) {
        return [name isEqual:@"AXSelectedTextRange"] ? makeValue((AXValueType)4, {}) : nil;
    }
    return element->_window < 0 ? applicationAttribute(element, name)
                                : windowAttribute(element, name);
}

AXError setWindow(Window& window, NSString* name, CFTypeRef value) {
    id it = fake::object(value);
    if ([name isEqual:@"AXPosition"]) {
        window.x = ((FakeValue*)it)->_value.origin.x;
        window.y = ((FakeValue*)it)->_value.origin.y;
    } else if ([name isEqual:@"AXSize"]) {
        window.width = std::max<double>(window.minimumWidth, ((FakeValue*)it)->_value.origin.x);
        window.height = ((FakeValue*)it)->_value.origin.y;
    } else if ([name isEqual:@"AXMinimized"]) {
        window.isMinimized = [it boolValue];
    } else if ([name isEqual:@"AXMain"]) {
        window.isMain = [it boolValue];
    } else if ([name isEqual:@"AXFocused"]) {
        window.isFocused = [it boolValue];
    } else {
        return kAXErrorAttributeUnsupported;
    }
    return kAXErrorSuccess;
}

}  // namespace

extern "C" {

CFTypeID AXUIElementGetTypeID(void) { return 100; }
CFTypeID AXValueGetTypeID(void) { return 101; }

AXUIElementRef AXUIElementCreateApplication(pid_t pid) {
    return fake::give<AXUIElementRef>(makeElement(pid, -1));
}
AXUIElementRef AXUIElementCreateSystemWide(void) {
    FakeElement* element = makeElement(0, -1);
    element->_isSystem = true;
    return fake::give<AXUIElementRef>(element);
}
AXError AXUIElementSetMessagingTimeout(AXUIElementRef element, float seconds) {
    elementFrom(element)->_timeout = seconds == 0 ? kSystemLimit : seconds;
    return kAXErrorSuccess;
}
AXError AXUIElementGetPid(AXUIElementRef element, pid_t* pid) {
    *pid = elementFrom(element)->_pid;
    return kAXErrorSuccess;
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef name, CFTypeRef* value) {
    ++world().slowCalls;
    if (!world().session.isTrusted) return kAXErrorAPIDisabled;
    if (isHung(elementFrom(element))) return kAXErrorCannotComplete;
    id found = attribute(elementFrom(element), fake::object(name));
    if (found == nil) return kAXErrorNoValue;
    *value = fake::give<CFTypeRef>(found);
    return kAXErrorSuccess;
}

AXError AXUIElementCopyMultipleAttributeValues(AXUIElementRef element, CFArrayRef names,
                                               AXCopyMultipleAttributeOptions, CFArrayRef* values) {
    if (!world().session.isTrusted) return kAXErrorAPIDisabled;
    if (isHung(elementFrom(element))) return kAXErrorCannotComplete;
    if (windowOf(elementFrom(element)) == nullptr) return kAXErrorInvalidUIElement;
    NSMutableArray* found = [NSMutableArray array];
    for (NSString* name in (NSArray*)fake::object(names)) {
        id value = attribute(elementFrom(element), name);
        [found addObject:value == nil ? makeValue(kAXValueTypeAXError, {}) : value];
    }
    *values = fake::give<CFArrayRef>(found);
    return kAXErrorSuccess;
}

AXError AXUIElementCopyParameterizedAttributeValue(AXUIElementRef element, CFStringRef name,
                                                   CFTypeRef, CFTypeRef* value) {
    if (isHung(elementFrom(element))) return kAXErrorCannotComplete;
    if (!CFEqual(name, CFSTR("AXBoundsForRange")) || !world().caret) return kAXErrorNoValue;
    const fake::Caret& caret = *world().caret;
    *value = fake::give<CFTypeRef>(
        makeValue(kAXValueTypeCGRect, CGRect{{caret.x, caret.y}, {caret.width, caret.height}}));
    return kAXErrorSuccess;
}

AXError AXUIElementSetAttributeValue(AXUIElementRef element, CFStringRef name, CFTypeRef value) {
    ++world().slowCalls;
    if (isHung(elementFrom(element))) return kAXErrorCannotComplete;
    Application* application = applicationOf(elementFrom(element));
    if (application != nullptr && CFEqual(name, CFSTR("AXEnhancedUserInterface"))) {
        application->enhancedMode = [fake::object(value) boolValue];
        application->enhancedModeWrites.push_back(*application->enhancedMode);
        return kAXErrorSuccess;
    }
    Window* window = windowOf(elementFrom(element));
    if (window == nullptr) return kAXErrorInvalidUIElement;
    // In the enhanced mode a move is animated and ends somewhere on the way.
    if (application->enhancedMode.value_or(false)) return kAXErrorSuccess;
    return setWindow(*window, fake::object(name), value);
}

AXError AXUIElementPerformAction(AXUIElementRef element, CFStringRef action) {
    if (isHung(elementFrom(element))) return kAXErrorCannotComplete;
    Window* window = windowOf(elementFrom(element));
    if (window == nullptr || !CFEqual(action, CFSTR("AXRaise"))) return kAXErrorFailure;
    ++window->raised;
    return kAXErrorSuccess;
}

AXValueRef AXValueCreate(AXValueType type, const void* value) {
    FakeValue* made = makeValue(type, {});
    memcpy(&made->_value, value, type == kAXValueTypeCGRect ? sizeof(CGRect) : sizeof(CGPoint));
    return fake::give<AXValueRef>(made);
}
Boolean AXValueGetValue(AXValueRef value, AXValueType type, void* out) {
    FakeValue* it = fake::object(value);
    if (it->_type != type) return false;
    memcpy(out, &it->_value, type == kAXValueTypeCGRect ? sizeof(CGRect) : sizeof(CGPoint));
    return true;
}
}
