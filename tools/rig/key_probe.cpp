#include "tools/rig/key_probe.hpp"

#include "tools/rig/client_programs.hpp"
#include "tools/rig/rig_error.hpp"
#include "tools/rig/windows.hpp"

#include <algorithm>

namespace orvel::rig {
namespace {

using Kind = ProbeEvent::Kind;
using Events = KeyProbe::Events;

const char* modeName(KeyProbe::Mode mode) {
    switch (mode) {
        case KeyProbe::Mode::core: return "core";
        case KeyProbe::Mode::xinput: return "xinput";
        case KeyProbe::Mode::smooth: return "smooth";
    }
    return "";
}

bool isKey(const ProbeEvent& event) {
    return event.kind == Kind::keyPress || event.kind == Kind::keyRelease;
}

bool isFirstKey(const ProbeEvent& event) { return isKey(event) && !event.repeat; }

bool isButtonOrScroll(const ProbeEvent& event) {
    return event.kind == Kind::buttonPress || event.kind == Kind::buttonRelease ||
           event.kind == Kind::scroll;
}

Events only(Events events, bool (*wanted)(const ProbeEvent&)) {
    std::erase_if(events, [wanted](const ProbeEvent& event) { return !wanted(event); });
    return events;
}

}  // namespace

KeyProbe::KeyProbe(const Environment& environment, XConnection& x, const Options& options)
    : x_(x),
      process_({.arguments = {clientProgram("orvel-rig-key-probe"), options.title, options.geometry,
                              modeName(options.mode)},
                .environment = environment}),
      window_(waitForWindow(x, options.title)) {
    focus();
}

void KeyProbe::focus() {
    focusWindow(x_, window_);
    clear();
}

int KeyProbe::centreX() const { return frameOf(x_, window_).centre().x; }

int KeyProbe::centreY() const { return frameOf(x_, window_).centre().y; }

Events KeyProbe::drain() {
    const std::string token = std::to_string(++syncs_);
    process_.writeLine("sync " + token);
    if (!process_.out().waitForText("synced " + token, nextLine_)) {
        throw RigError("the key probe does not answer: " + process_.err().text());
    }
    const LineLog::Lines fresh = process_.out().lines(nextLine_);
    nextLine_ += fresh.size();
    for (const std::string& line : fresh) {
        if (const auto event = fromLine(line)) {
            events_.push_back(*event);
        }
    }
    return events_;
}

Events KeyProbe::keys() { return only(drain(), isKey); }

std::string KeyProbe::text() {
    std::string text;
    for (const ProbeEvent& event : keys()) {
        if (event.kind == Kind::keyPress) {
            text += event.text;
        }
    }
    return text;
}

void KeyProbe::clear() {
    drain();
    events_.clear();
}

Events KeyProbe::waitFor(const std::function<bool(const Events&)>& condition,
                         std::chrono::milliseconds limit) {
    return pollUntil([this] { return drain(); }, condition, limit).last;
}

Events KeyProbe::waitForKeys(std::size_t count, std::chrono::milliseconds limit) {
    return waitForSome(isFirstKey, count, limit);
}

Events KeyProbe::waitForButtonsAndScrolls(std::size_t count, std::chrono::milliseconds limit) {
    return waitForSome(isButtonOrScroll, count, limit);
}

Events KeyProbe::waitForSome(bool (*wanted)(const ProbeEvent&), std::size_t count,
                             std::chrono::milliseconds limit) {
    const auto enough = [&](const Events& seen) {
        return static_cast<std::size_t>(std::count_if(seen.begin(), seen.end(), wanted)) >= count;
    };
    return only(waitFor(enough, limit), wanted);
}

}  // namespace orvel::rig
