#include "tests/view/panel_stage.hpp"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QQmlComponent>
#include <QTest>
#include <QtDebug>

namespace orvel::test {

namespace {

constexpr int kAnimationsEnd = 700;

void processEventsFor(int milliseconds) {
    QElapsedTimer time;
    time.start();
    while (!time.hasExpired(milliseconds)) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

QQuickItem* findItem(QQuickItem* parent, const QString& name) {
    if (parent->objectName() == name) return parent;
    for (QQuickItem* child : parent->childItems()) {
        if (QQuickItem* found = findItem(child, name)) return found;
    }
    return nullptr;
}

}  // namespace

PanelStage::PanelStage()
    : viewModel(app.settings(), app.onboarding(), app.engine().isPaused(),
                [this] { isClosed = true; }) {
    engine_.addImportPath("qrc:/qt/qml");
}

PanelStage::~PanelStage() { window_.hide(); }

void PanelStage::prefer(std::string_view key, PreferenceValue value) {
    desk.preferenceStore.writeFromOutside(key, std::move(value));
}

void PanelStage::show() {
    QQmlComponent component(&engine_, QUrl("qrc:/qt/qml/Orvel/Settings/ContentView.qml"));
    root_.reset(qobject_cast<QQuickItem*>(
        component.createWithInitialProperties({{"vm", QVariant::fromValue(&viewModel)}})));
    if (!root_) qFatal("%s", qPrintable(component.errorString()));
    root_->setParentItem(window_.contentItem());
    // The picture of a window without a screen has no alpha: a plain desktop lies behind it.
    window_.setColor(QColor(0x70, 0x90, 0xa8));
    window_.resize(static_cast<int>(root_->implicitWidth()),
                   static_cast<int>(root_->implicitHeight()));
    root_->setSize(window_.size());
    window_.show();
    window_.requestActivate();
    processEventsFor(50);
    if (whenShown) whenShown(*this);
}

QQuickItem& PanelStage::item(const QString& name) {
    QQuickItem* found = findItem(window_.contentItem(), name);
    if (found == nullptr) qFatal("no item is named %s", qPrintable(name));
    return *found;
}

void PanelStage::click(const QString& name) {
    QQuickItem& target = item(name);
    const QPointF middle = target.mapToScene({target.width() / 2, target.height() / 2});
    QTest::mouseClick(&window_, Qt::LeftButton, {}, middle.toPoint());
}

QImage PanelStage::picture() {
    processEventsFor(kAnimationsEnd);
    QImage image = window_.grabWindow();
    image.setDevicePixelRatio(window_.effectiveDevicePixelRatio());
    return image;
}

}  // namespace orvel::test
