#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace orvel {

/// A log file that only its user can read. At its limit it becomes `NAME.1` and begins anew.
/// Nothing is opened before the first line.
class PrivateLogFile {
public:
    explicit PrivateLogFile(std::filesystem::path path, std::uintmax_t limit = 1U << 20);
    ~PrivateLogFile();
    PrivateLogFile(const PrivateLogFile&) = delete;
    PrivateLogFile& operator=(const PrivateLogFile&) = delete;

    /// One line. What cannot be written is dropped.
    void write(std::string_view line);

private:
    bool open();
    void close();
    void rotate();

    std::filesystem::path path_;
    std::uintmax_t limit_;
    std::uintmax_t size_ = 0;
    int file_ = -1;
};

}  // namespace orvel
