#pragma once

#include "platform/workspace.hpp"
#include "platform/x11/force_quit/force_quit_view_model.hpp"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

#include <functional>
#include <memory>

namespace orvel::x11 {

/// The Force Quit window. Needs a QApplication.
class ForceQuitWindow {
public:
    /// `closed` is called when the window was closed.
    ForceQuitWindow(const Workspace& workspace, ForceQuitModel& model,
                    std::function<void()> closed);
    ~ForceQuitWindow();
    ForceQuitWindow(const ForceQuitWindow&) = delete;
    ForceQuitWindow& operator=(const ForceQuitWindow&) = delete;

    /// False when its view cannot be made.
    [[nodiscard]] bool show();

private:
    QQmlEngine engine_;
    QQuickWindow window_;
    ForceQuitViewModel viewModel_;
    std::unique_ptr<QQuickItem> root_;
};

}  // namespace orvel::x11
