#include "platform/macos/mac_running_note.hpp"

#include "platform/base/json.hpp"
#include "platform/macos/mac_file_replacement.hpp"
#include "platform/macos/mac_text.hpp"
#include "platform/macos/mac_timer.hpp"
#include "platform/macos/mac_user_defaults.hpp"

#import <Foundation/Foundation.h>

#include <unistd.h>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <span>

namespace orvel::macos {

namespace {

/// The system sweeps what nobody touched for three days out of the temporary folder.
constexpr Duration kRenewalInterval = std::chrono::hours(12);

std::string notePath() {
    @autoreleasepool {
        std::string folder = utf8(NSTemporaryDirectory());
        if (!folder.ends_with('/')) folder += '/';
        return folder + kBundleIdentifier + ".running";
    }
}

bool lives(std::int64_t pid) {
    return pid > 0 && (::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM);
}

std::optional<ProcessId> processOf(const Json& note) {
    const Json* pid = note.member("pid");
    const std::int64_t* number = pid == nullptr ? nullptr : pid->asInteger();
    if (number == nullptr || !lives(*number)) return std::nullopt;
    return static_cast<ProcessId>(*number);
}

/// Absent when its writer has ended.
std::optional<Json> readNote() {
    std::ifstream file(notePath());
    const std::string text(std::istreambuf_iterator<char>(file), {});
    auto note = parseJson(text);
    if (!note || !processOf(note.value())) return std::nullopt;
    return std::move(note).value();
}

bool isTrue(const Json* value) {
    const bool* flag = value == nullptr ? nullptr : value->asBool();
    return flag != nullptr && *flag;
}

}  // namespace

RunningNote::RunningNote()
    : path_(notePath()),
      renewal_(startTimer(kRenewalInterval, kRenewalInterval, [this] { write(); })) {
    write();
}

RunningNote::~RunningNote() { ::unlink(path_.c_str()); }

void RunningNote::update(bool isOn, bool isPaused) {
    isOn_ = isOn;
    isPaused_ = isPaused;
    write();
}

void RunningNote::write() const {
    JsonWriter json;
    json.beginObject()
        .member("pid", static_cast<std::int64_t>(::getpid()))
        .member("isOn", isOn_)
        .member("isPaused", isPaused_)
        .endObject();
    const std::string& text = json.text();
    static_cast<void>(replaceFile(path_, std::as_bytes(std::span(text))));
}

std::optional<RunningEngine> readRunningNote() {
    const auto note = readNote();
    if (!note) return std::nullopt;
    return RunningEngine{.place = "this Mac",
                         .isOn = isTrue(note->member("isOn")),
                         .isPaused = isTrue(note->member("isPaused"))};
}

std::optional<ProcessId> runningProcess() {
    const auto note = readNote();
    if (!note) return std::nullopt;
    return processOf(*note);
}

}  // namespace orvel::macos
