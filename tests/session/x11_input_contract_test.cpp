#include "platform/x11/x11_caps_lock.hpp"
#include "platform/x11/x11_essentials.hpp"
#include "platform/x11/x11_event_poster.hpp"
#include "platform/x11/x11_event_tap.hpp"
#include "platform/x11/x11_input_state.hpp"
#include "tests/platform/contract/caps_lock_contract.hpp"
#include "tests/platform/contract/essentials_contract.hpp"
#include "tests/platform/contract/event_poster_contract.hpp"
#include "tests/platform/contract/event_tap_contract.hpp"
#include "tests/platform/contract/input_state_contract.hpp"
#include "tests/session/service_session.hpp"
#include "tools/rig/key_probe.hpp"
#include "tools/rig/modifiers.hpp"

#include <functional>
#include <optional>
#include <thread>
#include <vector>

// The event path of an X11 session is held to what every desktop's does. The hardware is that of an
// embedded desktop, and what leaves is what an application there receives.

namespace orvel::contract {
namespace {

using rig::ProbeEvent;
using test::OpenServices;

rig::EmbeddedDesktop& sharedDesktop() {
    static rig::EmbeddedDesktop desktop;
    return desktop;
}

class X11InputHarness {
public:
    X11InputHarness() : services_(sharedDesktop()) {}
    ~X11InputHarness() {
        tap_.stop();
        EXPECT_TRUE(test::eventually([] { return sharedDesktop().state().keysDown(); },
                                     testing::IsEmpty()));
        EXPECT_FALSE(sharedDesktop().state().capsLock());
        sharedDesktop().state().releaseEverything();
    }

    EventTap& tap() { return tap_; }
    void send(const Event& event) {
        const rig::PhysicalKey key(hub_.map().keycodeOf(event.keyCode));
        const bool isDown = event.type == EventType::flagsChanged
                                ? event.flags != flag::none
                                : event.type == EventType::keyDown;
        isDown ? sharedDesktop().keyboard().press(key) : sharedDesktop().keyboard().release(key);
        settle();
    }
    /// Another client gives the keyboards back to the session, as some desktops' tools do.
    void switchOff() {
        for (const char* keyboard : {"kbd0", "kbd1"}) {
            rig::runTool({"xinput", "reattach", keyboard, "Virtual core keyboard"},
                         sharedDesktop().environment());
        }
        settle();
    }

    Essentials& essentials() { return essentials_; }

    InputState& state() {
        tapEverything();
        return inputState_;
    }
    void movePointer(ScreenPoint point) {
        const double height = services_->screens().screens().front().frame.height;
        sharedDesktop().state().warpPointer(
            {static_cast<int>(point.x), static_cast<int>(height - point.y)});
    }

    CapsLock& capsLock() { return capsLock_; }
    bool isLocked() {
        settle();
        return sharedDesktop().state().capsLock();
    }

    EventPoster& poster() {
        tapEverything();
        probe_.emplace(sharedDesktop().environment(), sharedDesktop().x());
        return poster_;
    }
    std::vector<Posted> posted(std::size_t count) {
        EXPECT_TRUE(test::eventually(
            services_, [this] { return strokes().size(); }, testing::Ge(count)));
        std::vector<Posted> all;
        for (const ProbeEvent& event : strokes()) all.push_back(asPosted(event));
        return all;
    }
    EventFlags flagsOf(std::size_t index) {
        const unsigned modifiers = strokes().at(index).modifiers;
        return (modifiers & rig::kControl ? flag::command : flag::none) |
               (modifiers & rig::kShift ? flag::shift : flag::none) |
               (modifiers & rig::kAlt ? flag::option : flag::none);
    }
    void onAnotherThread(const std::function<void()>& work) {
        std::thread(work).join();
        services_.settle();
    }
    void type(KeyCode keyCode) {
        send(test::keyDown(keyCode));
        send(test::keyUp(keyCode));
    }
    std::vector<std::int64_t> marks() {
        settle();
        return marks_;
    }

private:
    void tapEverything() {
        ASSERT_TRUE(tap_.create({.mask = ~EventMask{0}}, [this](Event& event) {
            marks_.push_back(event.userData);
            return EventVerdict::pass;
        }));
        tap_.enable();
        settle();
    }
    /// Everything that the server knows of has been through the tap and has left it.
    void settle() {
        for (int round = 0; round < 2; ++round) {
            EXPECT_EQ(x11::ErrorTrap(*session_).firstError(), 0);
            tap_.processEvents();
        }
        services_.settle();
    }
    /// What the application received, modifiers left out.
    rig::KeyProbe::Events strokes() {
        rig::KeyProbe::Events events = probe_->keys();
        std::erase_if(events, [this](const ProbeEvent& event) {
            const auto keycode = static_cast<x11::XKeycode>(event.detail);
            return hub_.map().modifierOf(keycode) || keycode == hub_.map().neutralKey();
        });
        return events;
    }
    Posted asPosted(const ProbeEvent& event) const {
        const bool isDown = event.kind == ProbeEvent::Kind::keyPress;
        if (event.keysym == "XF86AudioMute") return {isDown, 7, true};
        return {isDown, hub_.map().keyCodeOf(static_cast<x11::XKeycode>(event.detail))};
    }

    OpenServices services_;
    std::unique_ptr<x11::X11Session> session_ =
        x11::X11Session::open(sharedDesktop().server().display()).value();
    x11::InputHub hub_{*session_};
    x11::X11EventTap tap_{hub_};
    x11::X11EventPoster poster_{hub_, services_.runLoop()};
    x11::X11CapsLock capsLock_{hub_};
    x11::X11Essentials essentials_{hub_, tap_};
    x11::X11InputState inputState_{hub_, services_->server(), services_->screens()};
    std::optional<rig::KeyProbe> probe_;
    std::vector<std::int64_t> marks_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, EssentialsContract, X11InputHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, EventTapContract, X11InputHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, InputStateContract, X11InputHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, CapsLockContract, X11InputHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(X11, EventPosterContract, X11InputHarness);

}  // namespace
}  // namespace orvel::contract
