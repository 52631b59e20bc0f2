#pragma once

#include <cassert>

namespace orvel {

/// Makes the object that holds it reachable as `T::shared()` for as long as it lives. Nothing is
/// ever created on access: the composition root builds the one instance, and many of them can
/// live one after another in a process.
template <typename T>
class SharedInstance {
public:
    explicit SharedInstance(T& instance) {
        assert(installed_ == nullptr && "another instance is installed");
        installed_ = &instance;
    }
    ~SharedInstance() { installed_ = nullptr; }
    SharedInstance(const SharedInstance&) = delete;
    SharedInstance& operator=(const SharedInstance&) = delete;

    /// The installed instance; one must be installed.
    static T& get() {
        assert(installed_ != nullptr && "no instance is installed");
        return *installed_;
    }

private:
    static inline T* installed_ = nullptr;
};

}  // namespace orvel
