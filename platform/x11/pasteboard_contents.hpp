#pragma once

#include "platform/pasteboard.hpp"
#include "platform/x11/image_codec.hpp"
#include "platform/x11/service_connection.hpp"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace orvel::x11 {

/// A picture that another thread makes ready. Any thread.
class PendingPicture {
public:
    /// `told` is called on the thread that made it ready.
    explicit PendingPicture(std::function<void()> told) : told_(std::move(told)) {}

    /// Once; null when there is no picture after all.
    void settle(std::shared_ptr<const PictureForms> forms) {
        {
            const std::lock_guard lock(mutex_);
            forms_ = std::move(forms);
            isSettled_ = true;
        }
        settled_.notify_all();
        told_();
    }
    [[nodiscard]] bool isSettled() const {
        const std::lock_guard lock(mutex_);
        return isSettled_;
    }
    /// Null when there is none, or none within the limit.
    [[nodiscard]] std::shared_ptr<const PictureForms> wait(Milliseconds limit) const {
        std::unique_lock lock(mutex_);
        settled_.wait_for(lock, limit, [this] { return isSettled_; });
        return forms_;
    }

private:
    std::function<void()> told_;
    mutable std::mutex mutex_;
    mutable std::condition_variable settled_;
    std::shared_ptr<const PictureForms> forms_;
    bool isSettled_ = false;
};

/// What lies on the pasteboard, as far as it could be read in time.
struct PasteboardContents {
    PasteboardMarks marks;
    std::optional<std::string> text;
    std::shared_ptr<PendingPicture> picture;
};

}  // namespace orvel::x11
