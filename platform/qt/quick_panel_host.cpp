#include "platform/qt/quick_panel_host.hpp"

#include "platform/qt/desktop_coordinates.hpp"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QtDebug>

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
    QuickPanel(QuickPanelHost& host, const PanelSpec& spec) : host_(host), spec_(spec) {
        window_.setFlags(flagsOf(spec));
        window_.setColor(Qt::transparent);
        window_.setGeometry(toQt(spec.contentRect));
        window_.create();
        host_.native_.prepare(window_, spec_);
        host_.panels_[spec.id] = this;
        load();
    }
    ~QuickPanel() override {
        host_.panels_.erase(spec_.id);
        window_.hide();
        root_.reset();
    }

    void setFrame(ScreenRect frame) override { place(toQt(frame)); }
    void setFrameOrigin(ScreenPoint origin) override {
        const ScreenRect old = frame();
        place(toQt({origin.x, origin.y, old.width, old.height}));
    }
    void makeKeyAndOrderFront() override {
        show();
        if (spec_.canBecomeKey) window_.requestActivate();
    }
    void orderFrontRegardless() override { show(); }
    void orderOut() override { window_.hide(); }
    [[nodiscard]] bool isVisible() const override { return window_.isVisible(); }
    [[nodiscard]] ScreenRect frame() const override { return fromQt(window_.geometry()); }
    [[nodiscard]] Size fittingSize() const override {
        if (!root_) return spec_.contentRect.size();
        return {root_->implicitWidth() + 2 * spec_.contentPadding,
                root_->implicitHeight() + 2 * spec_.contentPadding};
    }

    void unload() { root_.reset(); }
    [[nodiscard]] QQuickWindow& window() { return window_; }

private:
    void load() {
        const auto content = host_.contents_.find(spec_.id);
        if (content == host_.contents_.end()) return;
        QQmlComponent component(&host_.engine_, content->second.source);
        QObject* made = component.createWithInitialProperties(content->second.properties);
        root_.reset(qobject_cast<QQuickItem*>(made));
        if (!root_) {
            qWarning("%s", qPrintable(component.errorString()));
            return;
        }
        root_->setParentItem(window_.contentItem());
        root_->setFocus(true);
        fitContent();
    }

    void fitContent() {
        if (!root_) return;
        const double padding = spec_.contentPadding;
        root_->setPosition({padding, padding});
        root_->setSize({window_.width() - 2 * padding, window_.height() - 2 * padding});
    }

    void place(QRect wanted) {
        QRect kept = wanted;
        if (spec_.id == PanelId::settings) {
            const QRect button = host_.statusButton_ ? host_.statusButton_() : QRect();
            kept = keptOnScreen(wanted, availableAround(wanted.center()), button);
            if (root_) root_->setProperty("isBelowStatusItem", kept.y() == wanted.y());
        }
        window_.setGeometry(kept);
        wanted_ = kept;
        fitContent();
    }

    void show() {
        host_.native_.willShow(window_, spec_);
        window_.show();
        host_.native_.shown(window_, spec_);
        // Window managers push a window into the free area when it is mapped.
        if (wanted_) window_.setPosition(wanted_->topLeft());
        window_.raise();
    }

    QuickPanelHost& host_;
    PanelSpec spec_;
    QQuickWindow window_;
    std::unique_ptr<QQuickItem> root_;
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
