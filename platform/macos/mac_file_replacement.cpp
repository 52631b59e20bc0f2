#include "platform/macos/mac_file_replacement.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace orvel::macos {

namespace {

Failure failure(const std::string& path) {
    return {path + ": " + std::generic_category().message(errno)};
}

class File {
public:
    explicit File(int descriptor) : descriptor_(descriptor) {}
    ~File() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }

    [[nodiscard]] bool write(std::span<const std::byte> bytes) const {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR) continue;
            if (written < 0) return false;
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
        return true;
    }

    /// A plain fsync leaves the bytes in the cache of the drive.
    [[nodiscard]] bool reachDrive() const {
#ifdef F_FULLFSYNC
        if (::fcntl(descriptor_, F_FULLFSYNC) == 0) return true;
#endif
        return ::fsync(descriptor_) == 0;
    }

private:
    int descriptor_;
};

}  // namespace

Result<> replaceFile(const std::string& path, std::span<const std::byte> bytes) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::string draft = (folder / ".orvel-XXXXXX").string();
    const File file(::mkstemp(draft.data()));
    if (!file.isOpen()) return failure(path);
    if (!file.write(bytes) || !file.reachDrive() || std::rename(draft.c_str(), path.c_str()) != 0) {
        const Failure why = failure(path);
        ::unlink(draft.c_str());
        return why;
    }
    const File directory(::open(folder.c_str(), O_RDONLY | O_CLOEXEC));
    if (directory.isOpen()) static_cast<void>(directory.reachDrive());
    return {};
}

}  // namespace orvel::macos
