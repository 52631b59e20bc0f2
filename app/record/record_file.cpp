#include "app/record/record_file.hpp"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvel {

Result<> makeRecordFile(const std::string& path) {
    constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW;
    const int file = ::open(path.c_str(), flags, S_IRUSR | S_IWUSR);
    if (file < 0) return Failure{"cannot write '" + path + "': " + std::strerror(errno)};
    ::fchmod(file, S_IRUSR | S_IWUSR);
    ::close(file);
    return {};
}

}  // namespace orvel
