#include "platform/x11/x11_file_system.hpp"
#include "platform/x11/x11_login_items.hpp"
#include "platform/x11/x11_preference_store.hpp"
#include "tests/platform/contract/file_system_contract.hpp"
#include "tests/platform/contract/login_items_contract.hpp"
#include "tests/platform/contract/preference_store_contract.hpp"
#include "tests/platform/x11_files/unprivileged.hpp"
#include "tests/support/scratch_home.hpp"

#include <filesystem>
#include <optional>

// The part of the Linux back end that lives in files is held to what every back end does.

namespace orvel::contract {
namespace {

class DiskHarness {
public:
    DiskHarness() { preferences_.changesFd(); }

    FileSystem& files() { return fileSystem_; }
    std::string folder() { return empty_.path(); }
    std::string unwritableFolder() {
        const std::string folder = home_.at("sealed");
        std::filesystem::create_directory(folder);
        std::filesystem::permissions(folder, std::filesystem::perms(0500));
        user_.emplace(home_);
        return folder;
    }

    PreferenceStore& store() { return preferences_; }
    void writeFromOutside(std::string_view key, std::optional<PreferenceValue> value) {
        EXPECT_TRUE(preferences_.flush().ok());
        x11::X11PreferenceStore other(x11::preferencesPath(), [](std::string_view) {});
        if (value) {
            other.set(other.handle(key), *std::move(value));
        } else {
            other.remove(other.handle(key));
        }
        EXPECT_TRUE(other.flush().ok());
        preferences_.refresh();
    }

    LoginItems& items() { return loginItems_; }
    void refuse() { home_.write(".config/autostart", "no folder"); }

private:
    test::ScratchHome home_;
    test::ScratchFolder empty_;
    x11::X11FileSystem fileSystem_;
    x11::X11PreferenceStore preferences_{x11::preferencesPath(), [](std::string_view) {}};
    x11::X11LoginItems loginItems_{"/usr/bin/orvel"};
    std::optional<test::Unprivileged> user_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Disk, FileSystemContract, DiskHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Disk, PreferenceStoreContract, DiskHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Disk, LoginItemsContract, DiskHarness);

}  // namespace
}  // namespace orvel::contract
