#pragma once

#include "tests/session/own_home.hpp"
#include "tests/session/service_session.hpp"
#include "tools/rig/windows.hpp"

#include <gmock/gmock.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace orvel::test {

inline std::string systemEvents(const std::string& statement) {
    return "tell application \"System Events\" to " + statement;
}

inline std::string finder(const std::string& statement) {
    return "tell application \"Finder\" to " + statement;
}

/// Scripts run by the services, in a desktop of their own.
class Scripts : public testing::Test {
protected:
    static void SetUpTestSuite() { shared = std::make_unique<rig::EmbeddedDesktop>(); }
    static void TearDownTestSuite() { shared.reset(); }

    void SetUp() override {
        bus_.emplace("DBUS_SESSION_BUS_ADDRESS",
                     shared->environment().at("DBUS_SESSION_BUS_ADDRESS"));
        open({});
    }
    void TearDown() override {
        endApplications();
        services_.reset();
    }

    void open(x11::ServiceOptions options) {
        services_.reset();
        services_.emplace(*shared, std::move(options));
    }

    /// What applications were started, they and their windows end.
    void endApplications() {
        const auto windows = [&] {
            for (const auto& group : (*services_)->clients().windows())
                if (group.process > 0 && group.process != ::getpid())
                    ::kill(group.process, SIGKILL);
            return rig::managedWindows(shared->x()).size();
        };
        EXPECT_TRUE(eventually(*services_, windows, testing::Eq(0U)));
    }

    /// Runs `work` on another thread, as the background queue would, while this one goes on.
    template <typename Work>
    auto inBackground(Work work) {
        std::optional<decltype(work())> result;
        std::atomic<bool> isDone = false;
        std::thread thread([&] {
            result.emplace(work());
            isDone = true;
        });
        EXPECT_TRUE(eventually(
            *services_, [&] { return isDone.load(); }, testing::Eq(true)));
        thread.join();
        return *std::move(result);
    }
    Result<std::string> run(const std::string& source) {
        return inBackground([&] { return (*services_)->scriptRunner().run(source); });
    }
    std::string runTask(const std::string& path, const std::vector<std::string>& arguments) {
        return inBackground([&] {
            const auto output = (*services_)->taskRunner().run(path, arguments);
            return output ? output.value() : "failed: " + output.error();
        });
    }

    static std::filesystem::path home() { return OwnHome::get().path(); }
    static std::filesystem::path folder(const std::filesystem::path& relative) {
        std::filesystem::create_directories(home() / relative);
        return home() / relative;
    }
    static void write(const std::filesystem::path& path, const std::string& text = "x") {
        std::ofstream(path) << text;
    }

    rig::WindowId waitForWindow(const std::string& titleOrClass) {
        const auto window = rig::waitForWindow(shared->x(), titleOrClass);
        EXPECT_TRUE(eventually(
            *services_,
            [&] {
                return (*services_)->clients().find(static_cast<std::uint32_t>(window)) != nullptr;
            },
            testing::Eq(true)));
        return window;
    }

    static inline std::unique_ptr<rig::EmbeddedDesktop> shared;
    std::optional<ScopedVariable> bus_;
    std::optional<OpenServices> services_;
};

}  // namespace orvel::test
