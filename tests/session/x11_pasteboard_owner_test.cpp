#include "tests/session/pasteboard_session.hpp"

#include <csignal>

// What we put there, as others get it.

namespace orvel::test {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

constexpr std::size_t kMegabyte = 1'000'000;

class X11PasteboardOwnerTest : public PasteboardTest {
protected:
    void write(const std::string& text) {
        pasteboard().clear();
        pasteboard().setString(text);
        settle();
        EXPECT_TRUE(weOwn());
    }
    void writePicture(const std::string& path) {
        pasteboard().clear();
        EXPECT_TRUE(pasteboard().writeImage(path).ok());
        settle();
        EXPECT_TRUE(weOwn());
    }
    /// Others see what we wrote as soon as the server knows us as the owner.
    testing::AssertionResult weOwn() {
        return eventually([this] { return targets(); }, HasSubstr("SAVE_TARGETS"));
    }
    std::string targets() { return pasted("TARGETS"); }
    static std::string textOf(App& app) {
        const auto path = shared->nextPath();
        EXPECT_EQ(app.tell("read " + path), "");
        return rig::contentOf(path);
    }
};

TEST_F(X11PasteboardOwnerTest, EveryKindOfApplicationPastesOurText) {
    App gtk = shared->app(App::Kind::gtk);
    App qt = shared->app(App::Kind::qt);
    for (const std::string& text : {std::string("-rf '$(touch a)' \"b\"\n`c`; Grüße 第一行 🚀"),
                                    longText(kMegabyte), longText(6 * kMegabyte)}) {
        write(text);
        EXPECT_TRUE(pasted() == text) << "xclip, " << text.size();
        EXPECT_TRUE(outputOf({"xsel", "--clipboard", "--output"}) == text)
            << "xsel, " << text.size();
        EXPECT_TRUE(textOf(gtk) == text) << "GTK, " << text.size();
        EXPECT_TRUE(textOf(qt) == text) << "Qt, " << text.size();
    }
}

TEST_F(X11PasteboardOwnerTest, EveryKindOfApplicationPastesOurPicture) {
    App gtk = shared->app(App::Kind::gtk);
    App qt = shared->app(App::Kind::qt);
    const auto plain = shared->picture(1200, 800);
    const auto odd = plain + " -x '$(touch b)'\n\".tiff";
    ASSERT_NO_THROW(
        rig::runTool({"convert", plain, "tiff:" + plain + ".tiff"}, shared->environment()));
    std::filesystem::rename(plain + ".tiff", odd);
    writePicture(odd);
    EXPECT_THAT(targets(), HasSubstr("image/png"));
    const auto png = shared->file(pasted("image/png"));
    EXPECT_THAT(rig::runTool({"identify", png}, shared->environment()), HasSubstr("PNG 1200x800"));
    EXPECT_TRUE(pasted("image/tiff") == rig::contentOf(odd));
    EXPECT_EQ(gtk.tell("read-picture " + shared->nextPath()), "1200x800");
    EXPECT_EQ(qt.tell("read-picture"), "1200x800");
    EXPECT_EQ(pasteboard().string(), std::nullopt);
}

TEST_F(X11PasteboardOwnerTest, ListsItsTargets) {
    write("text");
    std::istringstream lines(targets());
    std::vector<std::string> listed;
    for (std::string line; std::getline(lines, line);) listed.push_back(line);
    EXPECT_THAT(listed,
                ElementsAre("TIMESTAMP", "TARGETS", "MULTIPLE", "SAVE_TARGETS", "UTF8_STRING",
                            "text/plain;charset=utf-8", "TEXT", "STRING", "text/plain"));
}

TEST_F(X11PasteboardOwnerTest, AnswersAsOwnersMust) {
    App client = shared->app(App::Kind::plain);
    write("Größe 第");
    EXPECT_EQ(client.tell("ask STRING"),
              "STRING Gr\xf6\xdf"
              "e ?");
    EXPECT_EQ(client.tell("ask TEXT"), "UTF8_STRING Größe 第");
    EXPECT_THAT(client.tell("ask TIMESTAMP"), StartsWith("INTEGER "));
    EXPECT_EQ(client.tell("ask SAVE_TARGETS"), "NULL ");
    EXPECT_EQ(client.tell("ask image/png"), "refused");
    EXPECT_EQ(client.tell("multiple UTF8_STRING image/png TEXT"),
              "UTF8_STRING=Größe 第 image/png=refused TEXT=Größe 第");
}

TEST_F(X11PasteboardOwnerTest, OffersNothingAfterItWasCleared) {
    write("text");
    pasteboard().clear();
    settle();
    EXPECT_TRUE(eventually([this] { return targets(); }, Not(HasSubstr("UTF8_STRING"))));
    EXPECT_THAT(pasted(), IsEmpty());
}

TEST_F(X11PasteboardOwnerTest, ClearingAndWritingIsOneChangeToOthers) {
    OpenServices others(shared->desktop());
    const auto before = others->pasteboard().changeCount();
    write("text");
    EXPECT_TRUE(eventually(
        others, [&] { return others->pasteboard().changeCount(); }, Eq(before + 1)));
    EXPECT_EQ(others->pasteboard().string(), "text");
}

TEST_F(X11PasteboardOwnerTest, GivesWayToWhoeverCopiesNext) {
    write("ours");
    const auto count = pasteboard().changeCount();
    const Process next = shared->xclip(shared->file("theirs"));
    ASSERT_TRUE(countBecomes(count + 1));
    EXPECT_EQ(pasteboard().string(), "theirs");
    EXPECT_EQ(pasted(), "theirs");
    write("ours again");
    EXPECT_EQ(pasteboard().changeCount(), count + 2);
    EXPECT_EQ(pasted(), "ours again");
}

TEST_F(X11PasteboardOwnerTest, AnApplicationThatStopsTakingHoldsUpNobody) {
    App lazy = shared->app(App::Kind::plain);
    const std::string text = longText(4 * kMegabyte);
    write(text);
    EXPECT_THAT(lazy.tell("ask UTF8_STRING"), StartsWith("INCR "));
    EXPECT_TRUE(pasted() == text);
    lazy.process().signal(SIGKILL);
    EXPECT_TRUE(lazy.process().waitForExit().has_value());
    EXPECT_TRUE(pasted() == text);
}

TEST_F(X11PasteboardOwnerTest, AClipboardManagerKeepsOurTextBeyondOurEnd) {
    const Process manager = shared->start({"xfce4-clipman"});
    const std::string text = "beyond " + longText(kMegabyte / 2);
    const auto isKept = [&] {
        OpenServices others(shared->desktop());
        if (!others->pasteboard().check(others->server()).finding.ends_with("keeps what we write"))
            return false;
        others->pasteboard().clear();
        others->pasteboard().setString(text);
        return true;
    };
    // On a busy machine our end comes before the manager has read everything.
    EXPECT_TRUE(eventually([&] { return isKept() && pasted() == text; }, Eq(true)));
}

TEST_F(X11PasteboardOwnerTest, EverythingIsHandedToAClipboardManagerAtTheEnd) {
    App manager = shared->app(App::Kind::plain);
    manager.tell("manage");
    {
        OpenServices others(shared->desktop());
        others->pasteboard().clear();
        others->pasteboard().setString("Größe");
    }
    EXPECT_TRUE(manager.process().out().waitForText("saved"));
    EXPECT_EQ(pasted(), "Größe");
    EXPECT_EQ(pasted("STRING"),
              "Gr\xf6\xdf"
              "e");
}

TEST_F(X11PasteboardOwnerTest, AClipboardManagerThatHangsDoesNotKeepUsFromEnding) {
    App manager = shared->app(App::Kind::plain);
    manager.tell("manage");
    manager.tell("mute");
    const auto begin = std::chrono::steady_clock::now();
    {
        OpenServices others(shared->desktop());
        others->pasteboard().clear();
        others->pasteboard().setString("ours");
    }
    EXPECT_TRUE(manager.process().out().waitForText("asked SAVE_TARGETS"));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(5000));
}

}  // namespace
}  // namespace orvel::test
