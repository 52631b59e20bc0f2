#include "platform/macos/mac_text.hpp"

#import <Foundation/Foundation.h>

namespace orvel::macos {

CfRef<CFStringRef> cfString(std::string_view utf8) {
    const auto* bytes = reinterpret_cast<const UInt8*>(utf8.data());
    const auto length = static_cast<CFIndex>(utf8.size());
    const auto read = [&](CFStringEncoding encoding) {
        return CfRef(CFStringCreateWithBytes(kCFAllocatorDefault, bytes, length, encoding, false));
    };
    CfRef<CFStringRef> text = read(kCFStringEncodingUTF8);
    return text ? text : read(kCFStringEncodingISOLatin1);
}

std::string utf8(CFStringRef text) {
    if (text == nullptr) return {};
    const CFRange whole{0, CFStringGetLength(text)};
    CFIndex size = 0;
    CFStringGetBytes(text, whole, kCFStringEncodingUTF8, '?', false, nullptr, 0, &size);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    CFStringGetBytes(text, whole, kCFStringEncodingUTF8, '?', false,
                     reinterpret_cast<UInt8*>(bytes.data()), size, nullptr);
    return bytes;
}

std::string utf8(NSString* text) { return utf8((__bridge CFStringRef)text); }

std::string utf8OfObject(CFTypeRef object) {
    if (object == nullptr || CFGetTypeID(object) != CFStringGetTypeID()) return {};
    return utf8(static_cast<CFStringRef>(object));
}

Failure failureOf(NSError* error) { return {utf8(error.localizedDescription)}; }

}  // namespace orvel::macos
