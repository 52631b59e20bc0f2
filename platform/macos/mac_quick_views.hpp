#pragma once

#include "platform/macos/mac_panels.hpp"
#include "platform/qt/panel_content.hpp"
#include "platform/qt/panel_view.hpp"

#include <map>
#include <memory>

class QQmlEngine;

namespace orvel::macos {

/// Fills native panels with Qt Quick: each panel has a plain view, and in it the view of a window
/// of Qt that follows its size and is shown and hidden with the panel.
class MacQuickViews final : public PanelContents, public qt::PanelContentHost {
public:
    explicit MacQuickViews(QQmlEngine& engine) : engine_(engine) {}

    void setContent(PanelId panel, qt::PanelContent content) override;
    void removeContent(PanelId panel) override;

    CFTypeRef viewOf(PanelId panel, double padding) override;
    CFTypeRef keyViewOf(PanelId panel) override;
    [[nodiscard]] std::optional<Size> fittingSizeOf(PanelId panel) const override;
    void setShown(PanelId panel, bool isShown) override;

    /// The top item of a panel's content; null while there is none.
    [[nodiscard]] QQuickItem* rootOf(PanelId panel) const;

private:
    struct Shown {
        CfRef<CFTypeRef> frame;  ///< the plain view
        std::unique_ptr<qt::PanelView> view;
    };

    QQmlEngine& engine_;
    std::map<PanelId, qt::PanelContent> contents_;
    std::map<PanelId, Shown> shown_;
};

}  // namespace orvel::macos
