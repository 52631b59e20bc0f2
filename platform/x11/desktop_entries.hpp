#pragma once

#include "platform/x11/application_index.hpp"

#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace orvel::x11 {

class GioThread;

/// The desktop files of this session, read once and again when one is installed or removed.
/// Any thread may ask for the index.
class DesktopEntries {
public:
    /// Without a thread the entries are read once and never again.
    explicit DesktopEntries(GioThread* watcher = nullptr);
    ~DesktopEntries();
    DesktopEntries(const DesktopEntries&) = delete;
    DesktopEntries& operator=(const DesktopEntries&) = delete;

    [[nodiscard]] std::shared_ptr<const ApplicationIndex> index() const;
    /// Desktop-file id of the default application for a content type; empty when there is none.
    [[nodiscard]] static std::string defaultFor(const char* contentType);
    /// `told` is called on the watcher's thread after the index was read again.
    void onChange(std::function<void()> told);

private:
    struct Monitor;

    void readAgain();

    mutable std::mutex mutex_;
    std::shared_ptr<const ApplicationIndex> index_;
    std::function<void()> told_;
    GioThread* watcher_;
    std::unique_ptr<Monitor> monitor_;
};

}  // namespace orvel::x11
