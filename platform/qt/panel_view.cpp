#include "platform/qt/panel_view.hpp"

#include <QQmlComponent>
#include <QtDebug>

namespace orvel::qt {

PanelView::PanelView(double padding) : padding_(padding) {
    window_.setColor(Qt::transparent);
    // Whoever owns the window on screen may change its size, too.
    QObject::connect(&window_, &QWindow::widthChanged, &window_, [this] { fit(); });
    QObject::connect(&window_, &QWindow::heightChanged, &window_, [this] { fit(); });
}

PanelView::~PanelView() {
    window_.hide();
    unload();
}

void PanelView::load(QQmlEngine& engine, const PanelContent& content) {
    QQmlComponent component(&engine, content.source);
    if (component.isReady()) {
        QObject* made = component.createWithInitialProperties(content.properties);
        root_.reset(qobject_cast<QQuickItem*>(made));
    }
    if (!root_) {
        qWarning("%s", qPrintable(component.errorString()));
        return;
    }
    root_->setParentItem(window_.contentItem());
    root_->setFocus(true);
    fit();
}

void PanelView::unload() { root_.reset(); }

std::optional<Size> PanelView::fittingSize() const {
    if (!root_) return std::nullopt;
    return Size{root_->implicitWidth() + 2 * padding_, root_->implicitHeight() + 2 * padding_};
}

void PanelView::fit() {
    if (!root_) return;
    root_->setPosition({padding_, padding_});
    root_->setSize({window_.width() - 2 * padding_, window_.height() - 2 * padding_});
}

}  // namespace orvel::qt
