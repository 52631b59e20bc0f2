#include "platform/qt/quick_panel_host.hpp"

#include "platform/qt/desktop_coordinates.hpp"
#include "platform/qt/panel_view.hpp"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace orvel::qt {

namespace {

constexpr int kScreenMargin = 10;
constexpr int kButtonGap = 8;

Qt::WindowFlags flagsOf(const PanelSpec& spec) {
    const Qt::WindowFlags flags =
        Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::NoDropShadowWindowHint;
    return spec.canBecomeKey ? flags : flags | Qt::WindowDoesNotAcceptFocus;
}

QRect availableAround(QPoint point) {
    const QScreen* screen = QGuiApplication::screenAt(point);
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? QRect() : screen->availableGeometry();
}

}  // namespace

QRect keptOnScreen(QRect wanted, QRect available, QRect button) {
    if (available.isEmpty()) return wanted;
    const int right = available.x() + available.width() - kScreenMargin - wanted.width();
    wanted.moveLeft(std::clamp(wanted.x(), available.x() + kScreenMargin,
                               std::max(right, available.x() + kScreenMargin)));
    const int bottom = available.y() + available.height() - wanted.height();
    wanted.moveTop(std::clamp(wanted.y(), available.y(), std::max(bottom, available.y())));
    if (!button.isEmpty() && wanted.intersects(button)) {
        wanted.moveTop(std::max(available.y(), button.y() - kButtonGap - wanted.height()));
    }
    return wanted;
}

class QuickPanelHost::QuickPanel final : public Panel {
public:
    QuickPanel(QuickPanelHost& host, const PanelSpec& spec)
        : host_(host), spec_(spec), view_(spec.contentPadding) {
        window().setFlags(flagsOf(spec));
        window().setGeometry(toQt(spec.contentRect));
        window().create();
        host_.native_.prepare(window(), spec_);
        host_.panels_[spec.id] = this;
        const auto content = host_.contents_.find(spec.id);
        if (content != host_.contents_.end()) view_.load(host_.engine_, content->second);
    }
    ~QuickPanel() override { host_.panels_.erase(spec_.id); }

    void setFrame(ScreenRect frame) override { place(toQt(frame)); }
    void setFrameOrigin(ScreenPoint origin) override {
        QRect moved = window().geometry();
        moved.moveTopLeft(toQt(ScreenPoint{origin.x, origin.y + frame().height}));
        place(moved);
    }
    void makeKeyAndOrderFront() override {
        show();
        if (spec_.canBecomeKey) window().requestActivate();
    }
    void orderFrontRegardless() override { show(); }
    void orderOut() override { window().hide(); }
    [[nodiscard]] bool isVisible() const override { return view_.window().isVisible(); }
    [[nodiscard]] ScreenRect frame() const override { return fromQt(view_.window().geometry()); }
    [[nodiscard]] Size fittingSize() const override {
        return view_.fittingSize().value_or(spec_.contentRect.size());
    }

    void unload() { view_.unload(); }
    [[nodiscard]] QQuickWindow& window() { return view_.window(); }

private:
    void place(QRect wanted) {
        QRect kept = wanted;
        if (spec_.id == PanelId::settings) {
            const QRect button = host_.statusButton_ ? host_.statusButton_() : QRect();
            kept = keptOnScreen(wanted, availableAround(wanted.center()), button);
            const bool isBelow = kept.y() == wanted.y();
            window().setProperty(kBelowStatusItem, isBelow);
            if (view_.root() != nullptr) view_.root()->setProperty(kBelowStatusItem, isBelow);
        }
        window().setGeometry(kept);
        wanted_ = kept;
        view_.fit();
    }

    void show() {
        host_.native_.willShow(window(), spec_);
        window().show();
        host_.native_.shown(window(), spec_);
        // Window managers push a window into the free area when it is mapped.
        if (wanted_) window().setPosition(wanted_->topLeft());
        window().raise();
    }

    QuickPanelHost& host_;
    PanelSpec spec_;
    PanelView view_;
    std::optional<QRect> wanted_;
};

QuickPanelHost::QuickPanelHost(QQmlEngine& engine, PanelNative& native)
    : engine_(engine), native_(native) {}

QuickPanelHost::~QuickPanelHost() = default;

void QuickPanelHost::setContent(PanelId id, PanelContent content) {
    contents_.insert_or_assign(id, std::move(content));
}

void QuickPanelHost::removeContent(PanelId id) {
    contents_.erase(id);
    const auto found = panels_.find(id);
    if (found != panels_.end()) found->second->unload();
}

std::unique_ptr<Panel> QuickPanelHost::create(const PanelSpec& spec) {
    return std::make_unique<QuickPanel>(*this, spec);
}

std::optional<PanelId> QuickPanelHost::panelOf(const QWindow* window) const {
    for (const auto& [id, panel] : panels_) {
        if (&panel->window() == window) return id;
    }
    return std::nullopt;
}

QQuickWindow* QuickPanelHost::window(PanelId id) const {
    const auto found = panels_.find(id);
    return found == panels_.end() ? nullptr : &found->second->window();
}

}  // namespace orvel::qt
