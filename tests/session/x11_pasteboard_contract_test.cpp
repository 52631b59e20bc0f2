#include "tests/platform/contract/pasteboard_contract.hpp"
#include "tests/session/pasteboard_session.hpp"

// The clipboard of the X server, with xclip as the other application.

namespace orvel::contract {
namespace {

test::ClipboardDesktop& sharedDesktop() {
    static test::ClipboardDesktop desktop;
    return desktop;
}

class X11PasteboardHarness {
public:
    Pasteboard& pasteboard() { return services_->pasteboard(); }
    void copyText(const std::string& text) { copy(sharedDesktop().file(text), "UTF8_STRING"); }
    void copyPicture(int width, int height) {
        copy(sharedDesktop().picture(width, height), "image/png");
    }
    std::string pictureFile() { return sharedDesktop().picture(64, 48); }
    void settle() { services_.settle(); }

private:
    void copy(const std::string& path, const std::string& target) {
        const auto before = pasteboard().changeCount();
        owner_ = sharedDesktop().xclip(path, target);
        EXPECT_TRUE(test::eventually(
            services_, [this] { return pasteboard().changeCount(); }, testing::Gt(before)));
    }

    test::OpenServices services_{sharedDesktop().desktop()};
    test::ClipboardDesktop::Process owner_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11, PasteboardContract, X11PasteboardHarness);

}  // namespace
}  // namespace orvel::contract
