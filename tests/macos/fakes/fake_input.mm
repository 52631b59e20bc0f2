#include "fake_support.hpp"

#import <Carbon/Carbon.h>
#import <IOKit/IOKitLib.h>
#import <IOKit/hidsystem/IOHIDLib.h>
#import <IOKit/hidsystem/IOHIDShared.h>

@interface FakeInputSource : NSObject {
@public
    fake::InputSource _source;
}
@end
@implementation FakeInputSource
@end

namespace {

using fake::InputSource;
using fake::world;

FakeInputSource* make(const InputSource& source) {
    FakeInputSource* made = [[FakeInputSource new] autorelease];
    made->_source = source;
    return made;
}

bool matches(const InputSource& source, NSDictionary* filter) {
    for (NSString* key in filter) {
        id wanted = [filter objectForKey:key];
        if ([key isEqual:@"TISPropertyInputSourceID"] && ![wanted isEqual:fake::text(source.id)]) {
            return false;
        }
        if ([key isEqual:@"TISPropertyInputSourceIsSelectCapable"] &&
            [wanted boolValue] != source.isSelectable) {
            return false;
        }
    }
    return true;
}

constexpr io_service_t kHidService = 11;
constexpr io_connect_t kHidConnection = 12;

}  // namespace

extern "C" {

const CFStringRef kTISPropertyInputSourceID = CFSTR("TISPropertyInputSourceID");
const CFStringRef kTISPropertyInputSourceCategory = CFSTR("TISPropertyInputSourceCategory");
const CFStringRef kTISPropertyInputSourceIsASCIICapable =
    CFSTR("TISPropertyInputSourceIsASCIICapable");
const CFStringRef kTISPropertyInputSourceIsSelectCapable =
    CFSTR("TISPropertyInputSourceIsSelectCapable");
const CFStringRef kTISCategoryKeyboardInputSource = CFSTR("TISCategoryKeyboardInputSource");

TISInputSourceRef TISCopyCurrentKeyboardInputSource(void) {
    for (const InputSource& source : world().inputSources) {
        if (source.id == world().currentInputSource) {
            return fake::give<TISInputSourceRef>(make(source));
        }
    }
    return nullptr;
}
CFArrayRef TISCreateInputSourceList(CFDictionaryRef filter, Boolean) {
    NSMutableArray* found = [NSMutableArray array];
    for (const InputSource& source : world().inputSources) {
        if (matches(source, fake::object(filter))) [found addObject:make(source)];
    }
    return fake::give<CFArrayRef>(found);
}
void* TISGetInputSourceProperty(TISInputSourceRef ref, CFStringRef name) {
    const InputSource& source = ((FakeInputSource*)fake::object(ref))->_source;
    NSString* key = fake::object(name);
    if ([key isEqual:@"TISPropertyInputSourceID"]) return fake::text(source.id);
    if ([key isEqual:@"TISPropertyInputSourceCategory"]) return fake::text(source.category);
    if ([key isEqual:@"TISPropertyInputSourceIsASCIICapable"] && source.isAscii) {
        return [NSNumber numberWithBool:*source.isAscii];
    }
    return nullptr;
}
OSStatus TISSelectInputSource(TISInputSourceRef ref) {
    world().currentInputSource = ((FakeInputSource*)fake::object(ref))->_source.id;
    return 0;
}

const mach_port_t kIOMainPortDefault = 0;
mach_port_t mach_task_self_ = 7;
CFMutableDictionaryRef IOServiceMatching(const char* name) {
    NSMutableDictionary* matching = [NSMutableDictionary dictionary];
    [matching setObject:[NSString stringWithUTF8String:name] forKey:@"IOProviderClass"];
    return fake::give<CFMutableDictionaryRef>(matching);
}
io_service_t IOServiceGetMatchingService(mach_port_t, CFDictionaryRef matching) {
    NSString* name = [(NSDictionary*)fake::object(matching) objectForKey:@"IOProviderClass"];
    const bool isHid = [name isEqual:@"IOHIDSystem"] && world().hasHidService;
    CFRelease(matching);
    return isHid ? kHidService : 0;
}
kern_return_t IOServiceOpen(io_service_t service, task_port_t, uint32_t type,
                            io_connect_t* connection) {
    if (service != kHidService || type != kIOHIDParamConnectType || !world().hidServiceOpens)
        return -1;
    *connection = kHidConnection;
    ++world().openHidConnections;
    return kIOReturnSuccess;
}
kern_return_t IOServiceClose(io_connect_t) {
    --world().openHidConnections;
    return kIOReturnSuccess;
}
kern_return_t IOObjectRelease(io_object_t) { return kIOReturnSuccess; }
kern_return_t IOHIDSetModifierLockState(io_connect_t connection, int selector, bool on) {
    if (connection != kHidConnection || selector != kIOHIDCapsLockState) return -1;
    world().capsLock = on;
    return kIOReturnSuccess;
}
}
