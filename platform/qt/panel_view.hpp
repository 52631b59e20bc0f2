#pragma once

#include "platform/qt/panel_content.hpp"

#include <QQuickItem>
#include <QQuickWindow>

#include <memory>
#include <optional>

class QQmlEngine;

namespace orvel::qt {

/// A window of Qt Quick that shows the content of one panel, with some room around it. Main thread.
class PanelView {
public:
    explicit PanelView(double padding);
    ~PanelView();
    PanelView(const PanelView&) = delete;
    PanelView& operator=(const PanelView&) = delete;

    /// Content that cannot be made leaves the window empty and says why in Qt's log.
    void load(QQmlEngine& engine, const PanelContent& content);
    void unload();

    [[nodiscard]] QQuickWindow& window() { return window_; }
    [[nodiscard]] const QQuickWindow& window() const { return window_; }
    /// The top item of the content; null while there is none.
    [[nodiscard]] QQuickItem* root() const { return root_.get(); }
    /// The size that the content asks for, room included; absent while there is none.
    [[nodiscard]] std::optional<Size> fittingSize() const;
    /// Gives the content the window's size.
    void fit();

private:
    double padding_;
    QQuickWindow window_;
    std::unique_ptr<QQuickItem> root_;
};

}  // namespace orvel::qt
