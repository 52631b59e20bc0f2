#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace orvel::x11 {

/// A log file that only its user can read. At its limit it becomes `NAME.1` and begins anew.
class TraceFile {
public:
    explicit TraceFile(std::filesystem::path path, std::uintmax_t limit = 1U << 20);
    ~TraceFile();
    TraceFile(const TraceFile&) = delete;
    TraceFile& operator=(const TraceFile&) = delete;

    /// One line. What cannot be written is dropped.
    void write(std::string_view line);

    /// `$XDG_STATE_HOME/orvel/trace.log`, or its place in the home folder.
    [[nodiscard]] static std::filesystem::path defaultPath();

private:
    bool open();
    void close();
    void rotate();

    std::filesystem::path path_;
    std::uintmax_t limit_;
    std::uintmax_t size_ = 0;
    int file_ = -1;
};

}  // namespace orvel::x11
