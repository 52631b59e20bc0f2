#pragma once

#include "platform/base/geometry.hpp"

#include <memory>
#include <optional>
#include <string_view>

namespace orvel {

/// The windows of this program, by the names that transcripts use.
enum class PanelId { settings, taskbar, startMenu, clipboard, finderMenu, geekMenuAnchor };

inline constexpr int kStyleBorderless = 0;
inline constexpr int kStyleNonactivatingPanel = 0x80;
inline constexpr int kStyleFullSizeContentView = 0x8000;
/// Above ordinary windows, where pop-up menus are.
inline constexpr int kPopUpMenuLevel = 101;

/// How a panel is made. Every panel is frameless, has a clear background and keeps existing when
/// it is ordered out.
struct PanelSpec {
    PanelId id = PanelId::settings;
    ScreenRect contentRect = {};
    int styleMask = kStyleNonactivatingPanel;
    std::optional<int> level = std::nullopt;
    std::optional<int> collectionBehavior = std::nullopt;
    bool hasShadow = false;
    bool canBecomeKey = false;
    bool acceptsMouseMoved = false;
    double contentPadding = 0;  ///< points between the panel's edge and its view, all four sides
};

/// One window of this program; destroyed with the object. Main thread.
class Panel {
public:
    virtual ~Panel() = default;

    virtual void setFrame(ScreenRect frame) = 0;
    virtual void setFrameOrigin(ScreenPoint origin) = 0;
    virtual void makeKeyAndOrderFront() = 0;
    virtual void orderFrontRegardless() = 0;
    virtual void orderOut() = 0;
    [[nodiscard]] virtual bool isVisible() const = 0;
    [[nodiscard]] virtual ScreenRect frame() const = 0;
    /// The size that the content asks for.
    [[nodiscard]] virtual Size fittingSize() const = 0;
};

/// Makes panels and fills them with the view of their id. Main thread.
class Panels {
public:
    virtual ~Panels() = default;

    [[nodiscard]] virtual std::unique_ptr<Panel> create(const PanelSpec& spec) = 0;
};

/// The name of a panel in transcripts.
std::string_view panelName(PanelId id);
/// The panel of that name, absent when there is none.
std::optional<PanelId> panelNamed(std::string_view name);

}  // namespace orvel
