#pragma once

#include "app/application.hpp"
#include "platform/memory/memory_desktop.hpp"
#include "platform/qt/controls/appearance.hpp"
#include "settings_ui/view/settings_view_model.hpp"

#include <QImage>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <functional>
#include <memory>
#include <string_view>

namespace orvel::test {

/// The settings panel in a window of its own, over a desktop in memory.
class PanelStage {
public:
    PanelStage();
    ~PanelStage();

    memory::MemoryDesktop desk;
    Application app{desk.ports()};
    qt::Appearance appearance{nullptr};
    settings_view::SettingsViewModel viewModel;
    bool isClosed = false;
    /// Called right after the panel came on screen.
    std::function<void(PanelStage&)> whenShown;

    /// Another process stores a setting.
    void prefer(std::string_view key, PreferenceValue value);

    /// Loads the panel and shows it; to be called once, when settings and appearance are there.
    void show();
    [[nodiscard]] QQuickWindow& window() { return window_; }
    [[nodiscard]] QQuickItem& root() { return *root_; }
    /// The item of that object name; it must exist.
    [[nodiscard]] QQuickItem& item(const QString& name);
    /// A person clicks the middle of that item.
    void click(const QString& name);

    /// Lets animations end, then takes the picture.
    [[nodiscard]] QImage picture();

private:
    QQmlEngine engine_;
    QQuickWindow window_;
    std::unique_ptr<QQuickItem> root_;
};

}  // namespace orvel::test
