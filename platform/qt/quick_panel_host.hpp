#pragma once

#include "platform/qt/panel_content.hpp"

#include <QRect>

#include <functional>
#include <map>
#include <memory>
#include <optional>

class QQmlEngine;
class QQuickWindow;
class QWindow;

namespace orvel::qt {

/// The property of the settings panel's window and content that tells whether the panel hangs below
/// its status item, where its arrow points at it. Absent as long as it has no place.
inline constexpr const char* kBelowStatusItem = "isBelowStatusItem";

/// What only the windowing system can do for a panel. Main thread.
class PanelNative {
public:
    virtual ~PanelNative() = default;

    /// The window exists and was never shown.
    virtual void prepare(QWindow& window, const PanelSpec& spec) = 0;
    /// The window is about to come on screen.
    virtual void willShow(QWindow& window, const PanelSpec& spec) = 0;
    /// The window came on screen.
    virtual void shown(QWindow& window, const PanelSpec& spec) = 0;
};

/// Panels as frameless windows of Qt Quick. Only a panel that can become key takes the focus.
class QuickPanelHost final : public Panels, public PanelContentHost {
public:
    QuickPanelHost(QQmlEngine& engine, PanelNative& native);
    ~QuickPanelHost() override;

    void setContent(PanelId id, PanelContent content) override;
    void removeContent(PanelId id) override;
    /// Where the status item's button is, in Qt's coordinates, so that its panel does not cover it.
    void setStatusButton(std::function<QRect()> button) { statusButton_ = std::move(button); }

    [[nodiscard]] std::unique_ptr<Panel> create(const PanelSpec& spec) override;

    /// The panel that this window is; absent for any other window.
    [[nodiscard]] std::optional<PanelId> panelOf(const QWindow* window) const;
    /// The window of a panel; null while it does not exist.
    [[nodiscard]] QQuickWindow* window(PanelId id) const;

private:
    class QuickPanel;

    QQmlEngine& engine_;
    PanelNative& native_;
    std::function<QRect()> statusButton_;
    std::map<PanelId, PanelContent> contents_;
    std::map<PanelId, QuickPanel*> panels_;
};

/// Where a panel stands that was asked to stand at `wanted`: on the screen, beside the button.
QRect keptOnScreen(QRect wanted, QRect available, QRect button);

}  // namespace orvel::qt
