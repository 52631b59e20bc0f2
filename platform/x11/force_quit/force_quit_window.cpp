#include "platform/x11/force_quit/force_quit_window.hpp"

#include "platform/base/bitmap.hpp"

#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QQuickImageProvider>
#include <QUrl>
#include <QtDebug>

#include <memory>
#include <utility>

namespace orvel::x11 {

namespace {

const auto kTitle = QStringLiteral("强制退出应用程序");

/// Icons of applications by the percent-encoded path of their desktop file.
class ApplicationIcons final : public QQuickImageProvider {
public:
    explicit ApplicationIcons(const Workspace& workspace)
        : QQuickImageProvider(QQuickImageProvider::Image), workspace_(workspace) {}

    QImage requestImage(const QString& id, QSize* size, const QSize& requested) override {
        const std::string path = QUrl::fromPercentEncoding(id.toLatin1()).toStdString();
        const Picture picture = workspace_.icon(path);
        const auto pixels = std::static_pointer_cast<const Bitmap>(picture.native);
        if (pixels == nullptr || pixels->isEmpty()) return {};
        const QImage whole(reinterpret_cast<const uchar*>(pixels->pixels.data()), pixels->width,
                           pixels->height, QImage::Format_ARGB32_Premultiplied);
        *size = whole.size();
        if (!requested.isValid()) return whole.copy();
        return whole.scaled(requested, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    }

private:
    const Workspace& workspace_;
};

}  // namespace

ForceQuitWindow::ForceQuitWindow(const Workspace& workspace, ForceQuitModel& model,
                                 std::function<void()> closed)
    : viewModel_(model, [this] { window_.close(); }) {
    // Windows get their class from this name; it is by this that a second wish finds the window.
    QGuiApplication::setApplicationName(QStringLiteral("orvel-force-quit"));
    // Else the program's name would be added to the title.
    QGuiApplication::setApplicationDisplayName(kTitle);
    QObject::connect(&window_, &QWindow::visibleChanged, qGuiApp,
                     [closed = std::move(closed)](bool isVisible) {
                         if (!isVisible) closed();
                     });
    engine_.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine_.addImageProvider(QStringLiteral("application"), new ApplicationIcons(workspace));
    window_.setFlags(Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint |
                     Qt::WindowTitleHint | Qt::CustomizeWindowHint);
    window_.setTitle(kTitle);
}

ForceQuitWindow::~ForceQuitWindow() {
    window_.disconnect(qGuiApp);
    window_.hide();
    root_.reset();
}

bool ForceQuitWindow::show() {
    QQmlComponent component(&engine_,
                            QUrl(QStringLiteral("qrc:/qt/qml/Orvel/ForceQuit/ForceQuitView.qml")));
    root_.reset(qobject_cast<QQuickItem*>(component.createWithInitialProperties(
        {{QStringLiteral("vm"), QVariant::fromValue(&viewModel_)}})));
    if (root_ == nullptr) {
        qWarning("%s", qPrintable(component.errorString()));
        return false;
    }
    const QSize size(static_cast<int>(root_->implicitWidth()),
                     static_cast<int>(root_->implicitHeight()));
    window_.setMinimumSize(size);
    window_.setMaximumSize(size);
    window_.resize(size);
    root_->setParentItem(window_.contentItem());
    root_->setSize(size);
    root_->setFocus(true);
    window_.show();
    window_.requestActivate();
    return true;
}

}  // namespace orvel::x11
