#pragma once

#include <gio/gio.h>
#include <memory>
#include <string>

namespace orvel::x11 {

template <typename T>
struct GObjectDeleter {
    void operator()(T* object) const { g_object_unref(object); }
};
/// Owns one reference of a GObject.
template <typename T>
using GObjectHolder = std::unique_ptr<T, GObjectDeleter<T>>;

struct GErrorDeleter {
    void operator()(GError* error) const { g_error_free(error); }
};
using GErrorHolder = std::unique_ptr<GError, GErrorDeleter>;

struct GVariantDeleter {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using GVariantHolder = std::unique_ptr<GVariant, GVariantDeleter>;

struct GFreeDeleter {
    void operator()(void* memory) const { g_free(memory); }
};
using GText = std::unique_ptr<char, GFreeDeleter>;

/// A text that GLib lends; null is empty.
inline std::string lent(const char* text) { return text == nullptr ? std::string() : text; }
/// A text that GLib gave away; null is empty.
inline std::string given(char* text) {
    const GText owner(text);
    return lent(text);
}
/// What went wrong; empty without an error.
inline std::string messageOf(const GErrorHolder& error) {
    return error == nullptr ? std::string() : lent(error->message);
}

}  // namespace orvel::x11
