#pragma once

#include "platform/base/typed_secrecy.hpp"
#include "platform/log.hpp"
#include "platform/x11/trace_file.hpp"

#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace orvel::x11 {

/// Standard output, and the trace file while the user asked for one. Trace lines wait in memory
/// until it is known that they hold no secret; none is taken from other threads, where that cannot
/// be asked.
class X11Log final : public Log {
public:
    X11Log() = default;

    void line(std::string_view text) override;
    [[nodiscard]] bool isTracing() const override;
    void trace(std::string_view text) override;

    /// From now on traces into `path` what is no secret.
    void startTracing(const std::filesystem::path& path, const TypedSecrecy& secrecy);
    /// Writes what is known to be no secret by now. What never gets known is never written.
    void release();

private:
    std::mutex lineMutex_;
    std::optional<TraceFile> file_;
    std::optional<Withheld<std::string>> withheld_;
    std::thread::id mainThread_ = std::this_thread::get_id();
};

}  // namespace orvel::x11
