// A process that runs the event path with rules made for tests. It prints READY, then one line for
// each event that reached the handler, and obeys lines on its standard input.
//
//   tap-host [swallow KEY] [rewrite KEY TO FLAGS] [post KEY TO FLAGS] ...
//
// Standard input: "on", "off" (pass everything), "wheel on|off" (reverse it), "post KEY FLAGS",
// "caps on|off", "keepcaps" (sets the lock, as it is told, at each press of Caps Lock), "carets"
// (asks at each event where the caret is, and prints whether it was told), "quit".
#include "platform/x11/x11_event_path.hpp"
#include "platform/x11/x11_run_loop.hpp"
#include "platform/x11/x11_services.hpp"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>

namespace {

using namespace orvel;

struct Target {
    KeyCode code = 0;
    EventFlags flags = 0;
};

class Host {
public:
    Host(x11::X11EventPath& path, qt::QtRunLoop& loop) : path_(path), loop_(loop) {}

    void take(std::istringstream words) {
        for (std::string word; words >> word;) {
            KeyCode key = 0;
            Target target;
            words >> key;
            if (word == "swallow") swallowed_.insert(key);
            if (word == "rewrite" && words >> target.code >> target.flags) rewritten_[key] = target;
            if (word == "post" && words >> target.code >> target.flags) posted_[key] = target;
        }
    }
    EventVerdict handle(Event& event) {
        std::printf("event %d key %ld flags %lx button %ld delta %ld repeat %d\n",
                    static_cast<int>(event.type), static_cast<long>(event.keyCode),
                    static_cast<unsigned long>(event.flags), static_cast<long>(event.buttonNumber),
                    static_cast<long>(event.deltaAxis1), event.isAutorepeat ? 1 : 0);
        std::fflush(stdout);
        if (keepsCaps_ && event.keyCode == key::capsLock) {
            static_cast<void>(path_.capsLock().set((event.flags & flag::capsLock) != 0));
        }
        if (services_) askForCaret();
        if (!isOn_) return EventVerdict::pass;
        if (event.type == EventType::scrollWheel) return reverse(event);
        const KeyCode key = event.keyCode != 0 || event.buttonNumber == 0
                                ? event.keyCode
                                : 1000 + event.buttonNumber;
        if (swallowed_.contains(key)) return EventVerdict::swallow;
        if (const auto post = posted_.find(key); post != posted_.end()) {
            if (event.type == EventType::keyDown || event.type == EventType::otherMouseDown) {
                postKeystroke(post->second);
            }
            return EventVerdict::swallow;
        }
        const auto rewrite = rewritten_.find(key);
        if (rewrite == rewritten_.end()) return EventVerdict::pass;
        event.keyCode = rewrite->second.code;
        event.flags = rewrite->second.flags;
        return EventVerdict::modify;
    }
    void obeyInput() {
        std::array<char, 4096> bytes{};
        const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
        if (count <= 0) return loop_.quit();
        input_.append(bytes.data(), static_cast<std::size_t>(count));
        for (std::size_t end = 0; (end = input_.find('\n')) != std::string::npos;) {
            obey(std::istringstream(input_.substr(0, end)));
            input_.erase(0, end + 1);
        }
    }

private:
    void askForCaret() {
        services_->catchUp();
        std::puts(services_->textCaret().caretRect() ? "caret" : "no caret");
        std::fflush(stdout);
    }
    EventVerdict reverse(Event& event) const {
        if (!reversesWheel_) return EventVerdict::pass;
        event.deltaAxis1 = -event.deltaAxis1;
        return EventVerdict::modify;
    }
    void postKeystroke(Target target) {
        const std::array keys{PostedKey{EventType::keyDown, target.code, target.flags},
                              PostedKey{EventType::keyUp, target.code, std::nullopt},
                              PostedKey{EventType::flagsChanged, key::leftCommand, flag::none}};
        path_.poster().postKeys(EventSourceState::hidSystem, keys);
    }
    void obey(std::istringstream line) {
        std::string word;
        std::string setting;
        line >> word;
        if (word == "on" || word == "off") isOn_ = word == "on";
        if (word == "quit") loop_.quit();
        if (word == "post") {
            Target target;
            line >> target.code >> target.flags;
            postKeystroke(target);
        }
        if (word == "caps" && line >> setting) {
            static_cast<void>(path_.capsLock().set(setting == "on"));
        }
        if (word == "keepcaps") keepsCaps_ = true;
        if (word == "carets") {
            auto opened = x11::X11Services::open(loop_, {});
            if (opened) services_ = std::move(opened).value();
        }
        if (word == "wheel" && line >> setting) {
            reversesWheel_ = setting == "on";
            path_.tap().setWheelGrab(reversesWheel_);
        }
        std::printf("done %s\n", word.c_str());
        std::fflush(stdout);
    }

    x11::X11EventPath& path_;
    qt::QtRunLoop& loop_;
    std::unique_ptr<x11::X11Services> services_;
    std::set<KeyCode> swallowed_;
    std::map<KeyCode, Target> rewritten_;
    std::map<KeyCode, Target> posted_;
    bool isOn_ = true;
    bool reversesWheel_ = false;
    bool keepsCaps_ = false;
    std::string input_;
};

int fail(const std::string& message) {
    std::fprintf(stderr, "%s\n", message.c_str());
    return EXIT_FAILURE;
}

std::string joined(int argc, char** argv) {
    std::string words;
    for (int i = 1; i < argc; ++i) words += std::string(argv[i]) + ' ';
    return words;
}

}  // namespace

int main(int argc, char** argv) {
    auto guard = x11::GuardProcess::start();
    if (!guard) return fail(guard.error());
    x11::X11RunLoop runLoop(argc, argv);
    qt::QtRunLoop& loop = runLoop.get();
    auto path = x11::X11EventPath::open(loop, std::move(guard).value());
    if (!path) return fail(path.error());
    Host host(*path.value(), loop);
    host.take(std::istringstream(joined(argc, argv)));
    path.value()->onServerGone([&] { loop.quit(3); });
    path.value()->tap().onPanicChord([](bool isGivenBack) {
        std::puts(isGivenBack ? "given back" : "taken again");
        std::fflush(stdout);
    });
    if (!path.value()->tap().create({.mask = 0x6405C00},
                                    [&](Event& event) { return host.handle(event); })) {
        return fail("the tap was refused");
    }
    path.value()->tap().enable();
    path.value()->tap().processEvents();
    const auto input = loop.watchReadable(STDIN_FILENO, [&] { host.obeyInput(); });
    std::puts("READY");
    std::fflush(stdout);
    return loop.run();
}
