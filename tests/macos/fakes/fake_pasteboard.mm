#include "fake_support.hpp"

#include <condition_variable>
#include <mutex>

namespace fake {
std::string nameOf(NSImage* image);
}

namespace {

using fake::world;

/// Longer than anybody may wait, yet not for ever: the test that hangs ends.
constexpr auto kHangTime = std::chrono::seconds(2);

void hangIfOwnerHangs() {
    if (!world().pasteboardHangs) return;
    std::mutex mutex;
    std::condition_variable never;
    std::unique_lock lock(mutex);
    never.wait_for(lock, kHangTime, [] { return false; });
}

}  // namespace

extern "C" {
NSPasteboardType const NSPasteboardTypeString = @"public.utf8-plain-text";
NSPasteboardType const NSPasteboardTypeFileURL = @"public.file-url";
}

@implementation NSPasteboard
+ (NSPasteboard*)generalPasteboard {
    static NSPasteboard* general = [NSPasteboard new];
    return general;
}
- (NSInteger)changeCount {
    return world().pasteboardCount;
}
- (NSArray*)types {
    ++world().slowCalls;
    NSMutableArray* types = [NSMutableArray array];
    for (const auto& [type, contents] : world().pasteboard) [types addObject:fake::text(type)];
    return types;
}
- (NSInteger)clearContents {
    world().pasteboard.clear();
    return ++world().pasteboardCount;
}
- (BOOL)setString:(NSString*)text forType:(NSPasteboardType)type {
    world().pasteboard.emplace_back(fake::bytes(type), fake::bytes(text));
    return YES;
}
- (NSString*)stringForType:(NSPasteboardType)wanted {
    hangIfOwnerHangs();
    for (const auto& [type, contents] : world().pasteboard) {
        if (type == fake::bytes(wanted)) return fake::text(contents);
    }
    return nil;
}
- (BOOL)writeObjects:(NSArray*)objects {
    for (NSImage* image in objects) {
        world().pasteboard.emplace_back("public.tiff", fake::nameOf(image));
    }
    return YES;
}
@end
