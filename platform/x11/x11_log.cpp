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

bool X11Log::isTracing() const { return withheld_ && std::this_thread::get_id() == mainThread_; }

void X11Log::trace(std::string_view text) {
    if (isTracing()) withheld_->add(std::string(text), text.size());
}

void X11Log::startTracing(const std::filesystem::path& path, const TypedSecrecy& secrecy) {
    constexpr std::size_t mostHeld = 1U << 18U;
    file_.emplace(path);
    withheld_.emplace(secrecy, mostHeld, [this](std::string& line) { file_->write(line); });
}

void X11Log::release() {
    if (withheld_) withheld_->release();
}

}  // namespace orvel::x11
