#include "tests/session/pasteboard_session.hpp"

#include <csignal>

// What others copy.

namespace orvel::test {
namespace {

using rig::ClipboardApp;
using testing::ElementsAre;
using testing::Eq;
using testing::HasSubstr;
using testing::Not;

constexpr std::size_t kMegabyte = 1'000'000;
constexpr std::chrono::milliseconds kAtOnce{200};

class X11PasteboardTest : public PasteboardTest {};

TEST_F(X11PasteboardTest, TakesTextFromEveryKindOfApplication) {
    const std::string text = "  Grüße, 第一行\n\t\"x\" $(touch a) 🚀\n-- ";
    const auto path = shared->file(text);
    App gtk = shared->app(App::Kind::gtk);
    App qt = shared->app(App::Kind::qt);
    auto count = pasteboard().changeCount();

    const Process xclip = shared->xclip(path);
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(pasteboard().string(), text);
    const Process xsel = shared->xsel(path);
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(pasteboard().string(), text);
    gtk.tell("text " + path);
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(pasteboard().string(), text);
    qt.tell("text " + path);
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(pasteboard().string(), text);
    EXPECT_EQ(pasteboard().image(), std::nullopt);
}

TEST_F(X11PasteboardTest, TakesPicturesFromEveryKindOfApplication) {
    const auto path = shared->picture(640, 360);
    const auto sizeSeen = [this] {
        const auto image = pasteboard().image();
        return image ? std::pair(image->picture.pixelWidth, image->picture.pixelHeight)
                     : std::pair(0, 0);
    };
    App gtk = shared->app(App::Kind::gtk);
    App qt = shared->app(App::Kind::qt);
    auto count = pasteboard().changeCount();

    const Process xclip = shared->xclip(path, "image/png");
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(sizeSeen(), std::pair(640, 360));
    EXPECT_EQ(pasteboard().string(), std::nullopt);
    gtk.tell("picture " + path);
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(sizeSeen(), std::pair(640, 360));
    qt.tell("picture " + path);
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(sizeSeen(), std::pair(640, 360));
    const auto tiff = pasteboard().image()->tiff;
    const auto pixels = rig::runTool(
        {"identify", shared->file({reinterpret_cast<const char*>(tiff.data()), tiff.size()})},
        shared->environment());
    EXPECT_THAT(pixels, HasSubstr("TIFF 640x360"));
}

TEST_F(X11PasteboardTest, TakesAPictureThatIsNoPngAndSkipsOneThatIsNone) {
    const auto path = shared->picture(40, 30);
    rig::runTool({"convert", path, path + ".jpg"}, shared->environment());
    auto count = pasteboard().changeCount();
    const Process jpeg = shared->xclip(path + ".jpg", "image/jpeg");
    ASSERT_TRUE(countBecomes(++count));
    ASSERT_TRUE(pasteboard().image().has_value());
    EXPECT_EQ(pasteboard().image()->picture.pixelWidth, 40);
    const Process broken = shared->xclip(shared->file("no picture"), "image/png");
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(pasteboard().image(), std::nullopt);
}

TEST_F(X11PasteboardTest, TakesLongTextsInIncrements) {
    App gtk = shared->app(App::Kind::gtk);
    App qt = shared->app(App::Kind::qt);
    auto count = pasteboard().changeCount();
    for (const std::size_t size : {kMegabyte, 8 * kMegabyte}) {
        const std::string text = longText(size);
        const auto path = shared->file(text);
        const Process xclip = shared->xclip(path);
        ASSERT_TRUE(countBecomes(++count));
        EXPECT_TRUE(pasteboard().string() == text) << "xclip, " << size;
        gtk.tell("text " + path);
        ASSERT_TRUE(countBecomes(++count));
        EXPECT_TRUE(pasteboard().string() == text) << "GTK, " << size;
        qt.tell("text " + path);
        ASSERT_TRUE(countBecomes(++count));
        EXPECT_TRUE(pasteboard().string() == text) << "Qt, " << size;
    }
}

TEST_F(X11PasteboardTest, CountsEveryChangeOnce) {
    const auto path = shared->file("the same");
    auto count = pasteboard().changeCount();
    std::vector<Process> owners;
    for (int copies = 0; copies < 5; ++copies) {
        owners.push_back(shared->xclip(path));
        ASSERT_TRUE(countBecomes(++count));
    }
    owners.clear();
    App plain = shared->app(App::Kind::plain);
    plain.tell("form UTF8_STRING UTF8_STRING " + path);
    plain.tell("own");
    ASSERT_TRUE(countBecomes(++count)) << "an owner that ends is no new content";
}

TEST_F(X11PasteboardTest, OldTextIsLatin1WhateverItsBytesLookLike) {
    App owner = shared->app(App::Kind::plain);
    const auto count = pasteboard().changeCount();
    owner.tell("form STRING STRING " + shared->file("caf\xe9 \xc3\xa9"));
    owner.tell("own");
    ASSERT_TRUE(countBecomes(count + 1));
    EXPECT_EQ(pasteboard().string(), "caf\u00e9 \u00c3\u00a9");
}

TEST_F(X11PasteboardTest, AsksAnOwnerThatCannotListItsTargetsForText) {
    App owner = shared->app(App::Kind::plain);
    const auto count = pasteboard().changeCount();
    owner.tell("form STRING STRING " + shared->file("old"));
    owner.tell("refuse-targets");
    owner.tell("own");
    ASSERT_TRUE(countBecomes(count + 1));
    EXPECT_EQ(pasteboard().string(), "old");
}

TEST_F(X11PasteboardTest, WhatWasReadStaysReadableWhenItsOwnerEnds) {
    const auto count = pasteboard().changeCount();
    Process owner = shared->xclip(shared->file("last words"));
    ASSERT_TRUE(countBecomes(count + 1));
    owner->signal(SIGKILL);
    EXPECT_TRUE(owner->waitForExit().has_value());
    settle();
    EXPECT_EQ(pasteboard().string(), "last words");
    EXPECT_EQ(pasteboard().changeCount(), count + 1);
}

TEST_F(X11PasteboardTest, AnOwnerKilledHalfWayLeavesNothing) {
    App owner = shared->app(App::Kind::plain);
    auto count = pasteboard().changeCount();
    owner.tell("form UTF8_STRING UTF8_STRING " + shared->file(longText(4 * kMegabyte)));
    owner.tell("stall 3");
    owner.tell("own");
    ASSERT_TRUE(owner.process().out().waitForText("stalled"));
    EXPECT_EQ(pasteboard().changeCount(), count) << "it is still being read";
    owner.process().signal(SIGKILL);
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(pasteboard().string(), std::nullopt);
    const Process next = shared->xclip(shared->file("next"));
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(pasteboard().string(), "next");
}

TEST_F(X11PasteboardTest, AnOwnerThatNeverAnswersCostsTheLimitAndNobodyWaits) {
    App owner = shared->app(App::Kind::plain);
    const auto count = pasteboard().changeCount();
    owner.tell("form UTF8_STRING UTF8_STRING " + shared->file("never"));
    owner.tell("mute");
    owner.tell("own");
    ASSERT_TRUE(owner.process().out().waitForText("asked TARGETS"));
    const auto begin = std::chrono::steady_clock::now();
    static_cast<void>(pasteboard().marks());
    static_cast<void>(pasteboard().string());
    static_cast<void>(pasteboard().image());
    EXPECT_LT(std::chrono::steady_clock::now() - begin, kAtOnce);
    ASSERT_TRUE(countBecomes(count + 1));
    EXPECT_EQ(pasteboard().string(), std::nullopt);
}

TEST_F(X11PasteboardTest, AStoppedOwnerDoesNotHideWhatIsCopiedNext) {
    App owner = shared->app(App::Kind::plain);
    auto count = pasteboard().changeCount();
    owner.tell("form UTF8_STRING UTF8_STRING " + shared->file(longText(4 * kMegabyte)));
    owner.tell("stall 1");
    owner.tell("own");
    ASSERT_TRUE(owner.process().out().waitForText("stalled"));
    owner.process().signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    const Process next = shared->xclip(shared->file("next"));
    ASSERT_TRUE(countBecomes(count += 2)) << "both changes count";
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(2500))
        << "the one that hangs is left at once";
    EXPECT_EQ(pasteboard().string(), "next");
    owner.process().signal(SIGCONT);
    const Process third = shared->xclip(shared->file("third"));
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_EQ(pasteboard().string(), "third");
}

TEST_F(X11PasteboardTest, AnOwnerStoppedBeforeTheStartHoldsNobodyUp) {
    const auto before = pasteboard().changeCount();
    const Process stopped = shared->xclip(shared->file("hidden"));
    ASSERT_TRUE(countBecomes(before + 1));
    stopped->signal(SIGSTOP);
    const auto begin = std::chrono::steady_clock::now();
    {
        OpenServices others(shared->desktop());
        EXPECT_EQ(others->pasteboard().string(), std::nullopt);
        EXPECT_EQ(others->pasteboard().changeCount(), 0);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(2500));
    stopped->signal(SIGCONT);
}

TEST_F(X11PasteboardTest, SeesThatAPasswordManagerCopied) {
    App manager = shared->app(App::Kind::qt);
    auto count = pasteboard().changeCount();
    manager.tell("secret " + shared->file("hunter2"));
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_TRUE(pasteboard().marks().isConcealed);
    EXPECT_EQ(pasteboard().string(), std::nullopt);
    manager.tell("text " + shared->file("no secret"));
    ASSERT_TRUE(countBecomes(++count));
    EXPECT_FALSE(pasteboard().marks().isConcealed);
    EXPECT_EQ(pasteboard().string(), "no secret");
}

TEST_F(X11PasteboardTest, NeverFetchesASecret) {
    for (const char* mark :
         {"x-kde-passwordManagerHint", "application/x-nspasteboard-concealed-type",
          "org.nspasteboard.ConcealedType", "ExcludeClipboardContentFromMonitorProcessing"}) {
        App manager = shared->app(App::Kind::plain);
        const auto count = pasteboard().changeCount();
        manager.tell("form UTF8_STRING UTF8_STRING " + shared->file("hunter2"));
        manager.tell("form " + std::string(mark) + " STRING " + shared->file("secret"));
        manager.tell("own");
        ASSERT_TRUE(countBecomes(count + 1));
        EXPECT_TRUE(pasteboard().marks().isConcealed) << mark;
        EXPECT_TRUE(manager.process().out().waitForText("asked TARGETS"));
        EXPECT_THAT(manager.process().out().text(), Not(HasSubstr("asked UTF8_STRING"))) << mark;
    }
}

TEST_F(X11PasteboardTest, SeesTheOtherMarks) {
    App owner = shared->app(App::Kind::plain);
    const auto count = pasteboard().changeCount();
    const auto empty = shared->file("");
    owner.tell("form UTF8_STRING UTF8_STRING " + shared->file("expanded"));
    owner.tell("form org.nspasteboard.TransientType STRING " + empty);
    owner.tell("form org.nspasteboard.AutoGeneratedType STRING " + empty);
    owner.tell("form x-kde-passwordManagerHint STRING " + shared->file("public"));
    owner.tell("own");
    ASSERT_TRUE(countBecomes(count + 1));
    EXPECT_TRUE(pasteboard().marks().isTransient);
    EXPECT_TRUE(pasteboard().marks().isAutoGenerated);
    EXPECT_FALSE(pasteboard().marks().isConcealed);
    EXPECT_EQ(pasteboard().string(), "expanded");
}

TEST_F(X11PasteboardTest, WhatLiesThereAtTheStartCanBeRead) {
    const auto before = pasteboard().changeCount();
    const Process owner = shared->xclip(shared->file("older than us"));
    ASSERT_TRUE(countBecomes(before + 1));
    OpenServices others(shared->desktop());
    EXPECT_TRUE(eventually(
        others, [&] { return others->pasteboard().string(); },
        Eq(std::optional<std::string>("older than us"))));
    EXPECT_EQ(others->pasteboard().changeCount(), 0) << "it is no change";
}

}  // namespace
}  // namespace orvel::test
