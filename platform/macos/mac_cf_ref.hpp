#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <utility>

namespace orvel::macos {

/// Owns one reference to a Core Foundation object; Foundation objects travel in it bridged.
/// Copies share the object.
template <typename Ref>
class CfRef {
public:
    CfRef() = default;
    /// Takes over the reference that a function named Create or Copy returned.
    explicit CfRef(Ref owned) : ref_(owned) {}
    /// Adds a reference to an object that belongs to somebody else.
    static CfRef retaining(Ref borrowed) {
        if (borrowed != nullptr) CFRetain(borrowed);
        return CfRef(borrowed);
    }

    CfRef(const CfRef& other) : CfRef(retaining(other.ref_)) {}
    CfRef(CfRef&& other) noexcept : ref_(std::exchange(other.ref_, nullptr)) {}
    CfRef& operator=(CfRef other) noexcept {
        std::swap(ref_, other.ref_);
        return *this;
    }
    ~CfRef() {
        if (ref_ != nullptr) CFRelease(ref_);
    }

    [[nodiscard]] Ref get() const { return ref_; }
    explicit operator bool() const { return ref_ != nullptr; }

    /// Where a function puts the reference that it gives away; what was held is let go first.
    Ref* receive() {
        *this = CfRef();
        return &ref_;
    }

private:
    Ref ref_ = nullptr;
};

}  // namespace orvel::macos
