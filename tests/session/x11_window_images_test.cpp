#include "platform/x11/x11_window_images.hpp"

#include "platform/base/bitmap.hpp"
#include "tests/session/service_session.hpp"
#include "tools/rig/compositor.hpp"
#include "tools/rig/picture.hpp"
#include "tools/rig/windows.hpp"
#include "tools/rig/xterm_app.hpp"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <gmock/gmock.h>
#include <xcb/res.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <unistd.h>
#include <utility>

namespace orvel::test {
namespace {

using testing::Eq;
using testing::IsEmpty;

constexpr std::uint32_t kRed = 0xffcc2200;
constexpr std::uint32_t kBlue = 0xff3366cc;

enum class Painter { server, compositor };

using rig::WindowManager;
using StageKind = std::pair<WindowManager::Kind, Painter>;

/// A desktop under one of the window managers, with or without a compositor.
struct Stage {
    explicit Stage(rig::WindowManager::Kind kind, Painter painter)
        : desktop(rig::EmbeddedDesktop::Options{.size = {}, .windowManager = kind}) {
        if (painter == Painter::compositor) compositor.emplace(desktop.environment(), desktop.x());
    }
    rig::EmbeddedDesktop desktop;
    std::optional<rig::Compositor> compositor;
};

/// Segments of shared memory that this process made and that still exist.
int sharedSegments() {
    std::ifstream table("/proc/sysvipc/shm");
    std::string line;
    std::getline(table, line);
    int count = 0;
    while (std::getline(table, line)) {
        std::istringstream words(line);
        std::string key, id, permissions, size;
        pid_t creator = 0;
        words >> key >> id >> permissions >> size >> creator;
        if (creator == ::getpid()) ++count;
    }
    return count;
}

/// The pixmaps that the server keeps for one client; those that it named count as well.
std::uint32_t pixmapsOf(x11::ServiceConnection& server) {
    const auto self = xcb_get_setup(server.raw())->resource_id_base;
    const auto answer = server.reply<xcb_res_query_client_resources_reply_t>(
        xcb_res_query_client_resources(server.raw(), self));
    std::uint32_t count = 0;
    if (answer == nullptr) return count;
    const auto pixmap = server.atom("PIXMAP");
    const auto* types = xcb_res_query_client_resources_types(answer.get());
    for (int each = 0; each < xcb_res_query_client_resources_types_length(answer.get()); ++each) {
        if (types[each].resource_type == pixmap) count += types[each].count;
    }
    return count;
}

class X11WindowImagesTest : public testing::TestWithParam<StageKind> {
protected:
    static void TearDownTestSuite() { stages.clear(); }

    X11WindowImagesTest() {
        auto& own = stages[GetParam()];
        if (own == nullptr) own = std::make_unique<Stage>(GetParam().first, GetParam().second);
        desktop_ = &own->desktop;
        EXPECT_TRUE(eventually([this] { return rig::managedWindows(x()); }, IsEmpty()));
        services_.emplace(*desktop_);
        images_.emplace(services_->runLoop(), services_->get().server(),
                        services_->get().clients());
    }

    rig::XConnection& x() { return desktop_->x(); }
    rig::PlainWindows startApp() { return {desktop_->environment(), x()}; }

    std::optional<Bitmap> capture(rig::WindowId window) {
        services_->settle();
        const auto picture = images_->capture(static_cast<WindowNumber>(window));
        if (!picture) return std::nullopt;
        auto bitmap = *static_cast<const Bitmap*>(picture->native.get());
        EXPECT_EQ(picture->pixelWidth, bitmap.width);
        EXPECT_EQ(picture->pixelHeight, bitmap.height);
        return bitmap;
    }
    /// The pixel in the middle of a window's picture; 0 without one.
    std::uint32_t middle(rig::WindowId window) {
        const auto picture = capture(window);
        return picture ? picture->at(picture->width / 2, picture->height / 2) : 0;
    }
    bool shows(rig::WindowId window, std::uint32_t colour) {
        return static_cast<bool>(eventually([&] { return middle(window); }, Eq(colour)));
    }
    /// What the screen shows at the place where the window list has a window.
    std::optional<Bitmap> onScreen(rig::WindowId window) {
        services_->settle();
        for (const auto& each : (*services_)->windowList().windows(WindowListScope::all)) {
            if (each.number != window) continue;
            const auto bounds = each.bounds;
            const auto seen = rig::pictureOf(
                x(), x().root(), static_cast<int>(bounds.x), static_cast<int>(bounds.y),
                static_cast<int>(bounds.width), static_cast<int>(bounds.height));
            Bitmap bitmap{seen.width, seen.height, {}};
            for (const auto& colour : seen.pixels)
                bitmap.pixels.push_back(0xff000000U | static_cast<std::uint32_t>(colour.red) << 16 |
                                        static_cast<std::uint32_t>(colour.green) << 8 |
                                        static_cast<std::uint32_t>(colour.blue));
            return bitmap;
        }
        return std::nullopt;
    }
    /// Whether the picture is what the screen shows, but for corners that are cut off.
    bool isAsOnScreen(rig::WindowId window) {
        const auto picture = capture(window);
        const auto screen = onScreen(window);
        if (!picture || !screen || picture->pixels.size() != screen->pixels.size()) return false;
        std::size_t cutOff = 0;
        for (std::size_t each = 0; each < picture->pixels.size(); ++each) {
            if (picture->pixels[each] == 0)
                ++cutOff;
            else if (picture->pixels[each] != screen->pixels[each])
                return false;
        }
        return cutOff < 50 && picture->width == screen->width;
    }
    void minimise(rig::WindowId window) {
        XIconifyWindow(x().get(), window, DefaultScreen(x().get()));
        x().sync();
        ASSERT_TRUE(eventually([&] { return rig::isVisible(x(), window); }, false));
    }

    using Stages = std::map<StageKind, std::unique_ptr<Stage>>;
    static inline Stages stages;
    rig::EmbeddedDesktop* desktop_ = nullptr;
    std::optional<OpenServices> services_;
    std::optional<x11::X11WindowImages> images_;
};

std::string nameOf(const testing::TestParamInfo<StageKind>& stage) {
    const bool isOpenbox = stage.param.first == WindowManager::Kind::openbox;
    const bool isComposited = stage.param.second == Painter::compositor;
    return std::string(isOpenbox ? "Openbox" : "Xfwm4") + (isComposited ? "Composited" : "");
}

INSTANTIATE_TEST_SUITE_P(
    OnEachDesktop, X11WindowImagesTest,
    testing::Values(StageKind(WindowManager::Kind::openbox, Painter::server),
                    StageKind(WindowManager::Kind::xfwm4, Painter::server),
                    StageKind(WindowManager::Kind::openbox, Painter::compositor),
                    StageKind(WindowManager::Kind::xfwm4, Painter::compositor)),
    nameOf);

TEST_P(X11WindowImagesTest, ThePictureIsWhatStandsOnTheScreenFrameIncluded) {
    auto app = startApp();
    const auto window = app.open({.title = "seen"});
    rig::placeWindow(x(), window, {300, 200, 400, 300});
    EXPECT_TRUE(eventually([&] { return isAsOnScreen(window); }, true));
    EXPECT_GT(capture(window)->height, 300);
}

TEST_P(X11WindowImagesTest, ThePictureOfATerminalIsWhatStandsOnTheScreen) {
    const rig::XtermApp terminal(desktop_->home(), desktop_->environment(), x(), "60x20+100+100");
    EXPECT_TRUE(eventually([&] { return isAsOnScreen(terminal.window()); }, true));
}

TEST_P(X11WindowImagesTest, ACoveredWindowIsCapturedWholeAndUpToDate) {
    auto app = startApp();
    const auto below = app.open({.title = "below"});
    rig::placeWindow(x(), below, {300, 200, 300, 200});
    ASSERT_TRUE(shows(below, kBlue));
    const auto above = app.open({.title = "above", .colour = "00aa00"});
    rig::placeWindow(x(), above, {200, 100, 600, 500});
    app.fill(below, "cc2200");
    EXPECT_TRUE(shows(below, kRed));
    const auto picture = capture(below);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->at(picture->width / 2, picture->height - 12), kRed);
    EXPECT_EQ(picture->at(12, picture->height / 2), kRed);
    EXPECT_TRUE(
        eventually([&] { return onScreen(below)->at(picture->width / 2, picture->height / 2); },
                   Eq(0xff00aa00U)));
}

TEST_P(X11WindowImagesTest, AWindowHalfBeyondTheScreenIsCapturedWhole) {
    auto app = startApp();
    const auto window = app.open({.title = "beyond"});
    ASSERT_TRUE(shows(window, kBlue));
    const auto before = capture(window);
    rig::placeWindow(x(), window, {-200, 300, 300, 200});
    ASSERT_TRUE(shows(window, kBlue));
    const auto after = capture(window);
    ASSERT_TRUE(after);
    EXPECT_EQ(after->width, before->width);
    EXPECT_EQ(after->at(12, after->height / 2), kBlue);
}

TEST_P(X11WindowImagesTest, ALargeWindowIsMadeSmaller) {
    auto app = startApp();
    const auto window = app.open({.title = "large", .width = 1500, .height = 800});
    ASSERT_TRUE(shows(window, kBlue));
    EXPECT_EQ(capture(window)->width, 640);
}

TEST_P(X11WindowImagesTest, ATranslucentWindowHasItsOwnColoursWithoutWhatIsBehindIt) {
    constexpr std::uint32_t kHalfRed = 0x80660000;
    auto app = startApp();
    rig::placeWindow(x(), app.open({.title = "behind"}), {300, 200, 500, 400});
    XVisualInfo visual{};
    ASSERT_NE(XMatchVisualInfo(x().get(), DefaultScreen(x().get()), 32, TrueColor, &visual), 0);
    XSetWindowAttributes wanted{};
    wanted.background_pixel = kHalfRed;
    wanted.colormap = XCreateColormap(x().get(), x().root(), visual.visual, AllocNone);
    const auto window =
        XCreateWindow(x().get(), x().root(), 0, 0, 200, 150, 0, visual.depth, InputOutput,
                      visual.visual, CWBackPixel | CWBorderPixel | CWColormap, &wanted);
    XMapWindow(x().get(), window);
    ASSERT_TRUE(eventually([&] { return rig::isVisible(x(), window); }, true));
    rig::placeWindow(x(), window, {400, 300, 200, 150});
    EXPECT_TRUE(shows(window, kHalfRed)) << std::hex << middle(window);
    XDestroyWindow(x().get(), window);
    XFreeColormap(x().get(), wanted.colormap);
    x().sync();
}

TEST_P(X11WindowImagesTest, AMinimisedWindowShowsWhatItShowedLastThoughNobodyHadAsked) {
    auto app = startApp();
    const auto window = app.open({.title = "minimised"});
    const auto inFront = app.open({.title = "in front"});
    ASSERT_TRUE(shows(inFront, kBlue));
    const auto shape = capture(inFront);
    app.fill(window, "cc2200");
    // The application's requests are carried out in order.
    app.setTitle(window, "filled");
    ASSERT_TRUE(eventually([&] { return rig::titleOf(x(), window); }, Eq("filled")));
    minimise(window);
    const auto picture = capture(window);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, shape->width);
    EXPECT_EQ(picture->height, shape->height);
    EXPECT_EQ(picture->at(picture->width / 2, picture->height / 2), kRed);
    EXPECT_EQ(picture->at(12, picture->height - 12), kRed);
}

TEST_P(X11WindowImagesTest, ARestoredWindowIsUpToDateAgain) {
    auto app = startApp();
    const auto window = app.open({.title = "restored"});
    ASSERT_TRUE(shows(window, kBlue));
    minimise(window);
    ASSERT_EQ(middle(window), kBlue);
    app.fill(window, "cc2200");
    rig::focusWindow(x(), window);
    EXPECT_TRUE(shows(window, kRed));
}

TEST_P(X11WindowImagesTest, AWindowThatWasHiddenFromTheStartHasNoPicture) {
    auto app = startApp();
    const auto window = app.open({.title = "hidden"});
    images_.reset();
    minimise(window);
    services_->settle();
    images_.emplace(services_->runLoop(), services_->get().server(), services_->get().clients());
    EXPECT_FALSE(capture(window));
}

TEST_P(X11WindowImagesTest, AWindowDestroyedAfterItWasListedHasNoPicture) {
    auto app = startApp();
    const auto window = app.open({.title = "listed"});
    ASSERT_TRUE(shows(window, kBlue));
    app.destroy(window);
    ASSERT_TRUE(eventually([&] { return rig::managedWindows(x()); }, IsEmpty()));
    // What the window manager told about it has not been handled yet.
    EXPECT_FALSE(images_->capture(static_cast<WindowNumber>(window)));
    EXPECT_FALSE(capture(window));
}

TEST_P(X11WindowImagesTest, WindowsThatDieAtAnyMomentHarmNothing) {
    auto app = startApp();
    for (int round = 0; round < 10; ++round) {
        const auto window = app.open({.title = "dying"});
        ASSERT_TRUE(shows(window, kBlue));
        app.destroy(window);
        while (const auto picture = capture(window)) {
            EXPECT_EQ(picture->at(picture->width / 2, picture->height / 2), kBlue);
        }
    }
    const auto survivor = app.open({.title = "survivor"});
    EXPECT_TRUE(shows(survivor, kBlue));
}

TEST_P(X11WindowImagesTest, AWindowThatChangesItsSizeMeanwhileHasPicturesOfOneMoment) {
    auto app = startApp();
    const auto window = app.open({.title = "growing"});
    ASSERT_TRUE(shows(window, kBlue));
    for (int step = 0; step < 100; ++step) {
        XResizeWindow(x().get(), window, static_cast<unsigned>(150 + 3 * step), 200);
        XFlush(x().get());
        const auto picture = capture(window);
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->at(20, picture->height / 2), kBlue);
    }
    EXPECT_TRUE(eventually([&] { return isAsOnScreen(window); }, true));
}

TEST_P(X11WindowImagesTest, AStoppedApplicationHasItsPictureAtOnce) {
    auto app = startApp();
    const auto window = app.open({.title = "stopped"});
    ASSERT_TRUE(shows(window, kBlue));
    app.process().signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(middle(window), kBlue);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(400));
    app.process().signal(SIGCONT);
}

TEST_P(X11WindowImagesTest, AServerThatDoesNotAnswerIsWaitedForNoLongerThanTheLimit) {
    auto app = startApp();
    const auto window = app.open({.title = "waiting"});
    ASSERT_TRUE(shows(window, kBlue));
    services_->settle();
    {
        const rig::ServerGrab grab(x());
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_FALSE(images_->capture(static_cast<WindowNumber>(window)));
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(800));
    }
    EXPECT_TRUE(shows(window, kBlue));
    minimise(window);
    EXPECT_EQ(middle(window), kBlue);
}

TEST_P(X11WindowImagesTest, NoWindowIsHiddenAndShownAgainForItsPicture) {
    auto app = startApp();
    const auto window = app.open({.title = "calm"});
    ASSERT_TRUE(shows(window, kBlue));
    rig::XConnection watcher(desktop_->server().display());
    XSelectInput(watcher.get(), window, StructureNotifyMask);
    watcher.sync();
    images_.reset();
    images_.emplace(services_->runLoop(), services_->get().server(), services_->get().clients());
    for (int each = 0; each < 10; ++each) EXPECT_TRUE(shows(window, kBlue));
    images_.reset();
    services_->settle();
    watcher.sync();
    XEvent event;
    EXPECT_EQ(XCheckTypedEvent(watcher.get(), UnmapNotify, &event), False);
    EXPECT_EQ(XCheckTypedEvent(watcher.get(), MapNotify, &event), False);
}

TEST_P(X11WindowImagesTest, NothingIsLeftBehindByManyPictures) {
    auto app = startApp();
    auto& server = services_->get().server();
    const auto none = pixmapsOf(server);
    const auto first = app.open({.title = "first"});
    const auto second = app.open({.title = "second"});
    ASSERT_TRUE(shows(first, kBlue));
    ASSERT_TRUE(shows(second, kBlue));
    const auto pixmaps = pixmapsOf(server);
    EXPECT_LE(pixmaps, none + 2);
    // Whoever manages and paints the windows, the server counts alike: one desktop shall do for
    // the long run.
    const bool isLong = GetParam() == StageKind(WindowManager::Kind::openbox, Painter::server);
    for (int each = 0; each < (isLong ? 250 : 20); ++each) {
        ASSERT_EQ(middle(first), kBlue);
        ASSERT_EQ(middle(second), kBlue);
    }
    EXPECT_EQ(pixmapsOf(server), pixmaps);
    EXPECT_LE(sharedSegments(), 1);
    minimise(first);
    ASSERT_EQ(middle(first), kBlue);
    EXPECT_EQ(pixmapsOf(server), pixmaps - 1);
    app.destroy(first);
    app.destroy(second);
    ASSERT_TRUE(eventually(
        *services_, [&] { return pixmapsOf(server); }, Eq(none)));
    images_.reset();
    EXPECT_TRUE(eventually(sharedSegments, Eq(0)));
}

TEST_P(X11WindowImagesTest, AnotherWindowManagerTakesOverAndEveryWindowHasItsPictureStill) {
    auto app = startApp();
    const auto window = app.open({.title = "kept"});
    ASSERT_TRUE(shows(window, kBlue));
    desktop_->windowManager().replaceBy(GetParam().first);
    app.fill(window, "cc2200");
    EXPECT_TRUE(shows(window, kRed));
    EXPECT_TRUE(eventually([&] { return isAsOnScreen(window); }, true));
}

}  // namespace
}  // namespace orvel::test
