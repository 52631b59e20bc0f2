#pragma once

#include "engine/clipboard_commands.hpp"
#include "engine/finder_menu_commands.hpp"
#include "engine/overlay_commands.hpp"

#include <string>
#include <vector>

namespace orvel::test {

/// What the engine asked of the rooms above it, in order.
using CommandLog = std::vector<std::string>;

class FakeOverlay final : public OverlayCommands {
public:
    explicit FakeOverlay(CommandLog& log) : log_(log) {}

    bool clipboardShows = false;
    bool startMenuShows = false;
    std::vector<std::string> taskbarIds;

    [[nodiscard]] bool isClipboardShowing() const override { return clipboardShows; }
    [[nodiscard]] bool isStartMenuShowing() const override { return startMenuShows; }
    void toggleClipboardMenu() override {
        clipboardShows = !clipboardShows;
        log_.emplace_back("toggle clipboard");
    }
    void toggleStartMenu() override {
        startMenuShows = !startMenuShows;
        log_.emplace_back("toggle start menu");
    }
    void showGeekMenu() override { log_.emplace_back("geek menu"); }
    [[nodiscard]] std::vector<std::string> currentTaskbarAppIds() const override {
        return taskbarIds;
    }

private:
    CommandLog& log_;
};

class FakeClipboard final : public ClipboardCommands {
public:
    explicit FakeClipboard(CommandLog& log) : log_(log) {}
    void moveSelection(bool up) override {
        log_.emplace_back(up ? "selection up" : "selection down");
    }
    void pasteSelected() override { log_.emplace_back("paste"); }

private:
    CommandLog& log_;
};

class FakeFinderMenu final : public FinderMenuCommands {
public:
    explicit FakeFinderMenu(CommandLog& log) : log_(log) {}
    void showMenu(ScreenPoint point, const std::vector<std::string>& paths,
                  const std::string& fullPath) override {
        std::string entry = "finder menu at " + std::to_string(static_cast<int>(point.x)) + "," +
                            std::to_string(static_cast<int>(point.y)) + " for " + fullPath + ":";
        for (const std::string& path : paths) entry += " " + path;
        log_.push_back(entry);
    }

private:
    CommandLog& log_;
};

}  // namespace orvel::test
