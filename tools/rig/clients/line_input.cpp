#include "tools/rig/clients/line_input.hpp"

#include <array>
#include <unistd.h>

namespace orvel::rig {

bool LineInput::read(const Obey& obey) {
    std::array<char, 4096> bytes{};
    const ssize_t size = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (size <= 0) return false;
    unfinished_.append(bytes.data(), static_cast<std::size_t>(size));
    for (auto end = unfinished_.find('\n'); end != std::string::npos;
         end = unfinished_.find('\n')) {
        const std::string line = unfinished_.substr(0, end);
        unfinished_.erase(0, end + 1);
        obey(line);
    }
    return true;
}

}  // namespace orvel::rig
