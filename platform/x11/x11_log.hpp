#pragma once

#include "platform/log.hpp"
#include "platform/x11/trace_file.hpp"

#include <functional>
#include <mutex>
#include <optional>
#include <thread>

namespace orvel::x11 {

/// Standard output, and the trace file while the user asked for one. Nothing is traced while a
/// password may be typed, and nothing from other threads, where that cannot be asked.
class X11Log final : public Log {
public:
    X11Log() = default;

    void line(std::string_view text) override;
    [[nodiscard]] bool isTracing() const override;
    void trace(std::string_view text) override;

    /// From now on traces into `path`, except while `isSecretTyped` says yes.
    void startTracing(const std::filesystem::path& path, std::function<bool()> isSecretTyped);

private:
    std::mutex lineMutex_;
    std::optional<TraceFile> file_;
    std::function<bool()> isSecretTyped_;
    std::thread::id mainThread_ = std::this_thread::get_id();
};

}  // namespace orvel::x11
