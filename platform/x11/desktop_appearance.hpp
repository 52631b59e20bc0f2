#pragma once

#include "platform/qt/controls/appearance.hpp"
#include "platform/x11/appearance_wishes.hpp"

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <QString>

#include <cstdint>

class QDBusVariant;
class QVariant;
struct xcb_connection_t;

namespace orvel::x11 {

/// Keeps the looks of all surfaces as the desktop wants them: asks its portal, else the settings
/// daemon, else reads the settings file of GTK, and follows changes of the first two at once.
/// Needs a QApplication. Main thread.
class DesktopAppearance : public QObject, QAbstractNativeEventFilter {
    Q_OBJECT
    Q_MOC_INCLUDE(<QDBusVariant>)

public:
    explicit DesktopAppearance(qt::Appearance& appearance);
    ~DesktopAppearance() override;

private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    bool nativeEventFilter(const QByteArray& kind, void* message, qintptr* result) override;

    void askPortal(const QString& group, const QString& key);
    void takeFromPortal(const QString& group, const QString& key, QVariant value);
    void findDaemon();
    void readDaemon();
    void apply();

    qt::Appearance& appearance_;
    AppearanceWishes wishes_;
    xcb_connection_t* server_ = nullptr;
    std::uint32_t daemonSelection_ = 0;
    std::uint32_t daemonProperty_ = 0;
    std::uint32_t daemonAnnouncement_ = 0;
    std::uint32_t daemonWindow_ = 0;
};

}  // namespace orvel::x11
