#include "platform/x11/x11_log.hpp"

#include <cstdio>
#include <string>
#include <utility>

namespace orvel::x11 {

void X11Log::line(std::string_view text) {
    const std::string whole = std::string(text) + '\n';
    const std::lock_guard lock(lineMutex_);
    std::fwrite(whole.data(), 1, whole.size(), stdout);
    std::fflush(stdout);
}

bool X11Log::isTracing() const {
    return file_ && std::this_thread::get_id() == mainThread_ && !isSecretTyped_();
}

void X11Log::trace(std::string_view text) {
    if (isTracing()) file_->write(text);
}

void X11Log::startTracing(const std::filesystem::path& path, std::function<bool()> isSecretTyped) {
    isSecretTyped_ = std::move(isSecretTyped);
    file_.emplace(path);
}

}  // namespace orvel::x11
