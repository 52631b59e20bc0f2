#include "platform/x11/desktop_appearance.hpp"

#include "platform/x11/server_questions.hpp"
#include "platform/x11/x_reply.hpp"
#include "platform/x11/x_settings.hpp"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFile>
#include <QMetaType>
#include <QPalette>
#include <QStandardPaths>
#include <xcb/xcb.h>

namespace orvel::x11 {

namespace {

const QString kPortal = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kPortalSettings = QStringLiteral("org.freedesktop.portal.Settings");
const QString kLooks = QStringLiteral("org.freedesktop.appearance");
const QString kColorScheme = QStringLiteral("color-scheme");
const QString kInterface = QStringLiteral("org.gnome.desktop.interface");
const QString kAnimations = QStringLiteral("enable-animations");

std::uint32_t propertyLength(const xcb_get_property_reply_t& reply) {
    return static_cast<std::uint32_t>(xcb_get_property_value_length(&reply));
}

/// The colours of menus that Qt draws itself; the panels have a theme of their own.
QPalette menuColors(bool isDark) {
    if (!isDark) return {};
    QPalette palette(QColor(0x2b, 0x2b, 0x2f));
    palette.setColor(QPalette::Highlight, QColor(0x2e, 0x66, 0xd1));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

AppearanceWishes fromFiles() {
    AppearanceWishes wishes;
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    QFile file(folder + QStringLiteral("/gtk-3.0/settings.ini"));
    if (file.open(QIODevice::ReadOnly)) {
        readGtkSettings(file.readAll().toStdString(), wishes);
    }
    return wishes;
}

}  // namespace

DesktopAppearance::DesktopAppearance(qt::Appearance& appearance)
    : appearance_(appearance), wishes_(fromFiles()) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (bus.isConnected()) {
        // The bus looks the slot's types up by name and knows this one only after its first use.
        qRegisterMetaType<QDBusVariant>();
        bus.connect({}, kPortalPath, kPortalSettings, QStringLiteral("SettingChanged"), this,
                    SLOT(settingChanged(QString, QString, QDBusVariant)));
        askPortal(kLooks, kColorScheme);
        askPortal(kInterface, kAnimations);
    }
    server_ = serverOfQt();
    if (server_ != nullptr) {
        daemonSelection_ = internAtom(server_, "_XSETTINGS_S0");
        daemonProperty_ = internAtom(server_, "_XSETTINGS_SETTINGS");
        daemonAnnouncement_ = internAtom(server_, "MANAGER");
        qApp->installNativeEventFilter(this);
        findDaemon();
    }
    apply();
}

DesktopAppearance::~DesktopAppearance() { qApp->removeNativeEventFilter(this); }

void DesktopAppearance::askPortal(const QString& group, const QString& key) {
    QDBusMessage question = QDBusMessage::createMethodCall(kPortal, kPortalPath, kPortalSettings,
                                                           QStringLiteral("Read"));
    question << group << key;
    // A portal that is slow to start must not hold up anything.
    auto* answer =
        new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer, group, key] {
        const QDBusPendingReply<QDBusVariant> reply = *answer;
        if (reply.isValid()) takeFromPortal(group, key, reply.value().variant());
        answer->deleteLater();
    });
}

void DesktopAppearance::settingChanged(const QString& group, const QString& key,
                                       const QDBusVariant& value) {
    takeFromPortal(group, key, value.variant());
}

void DesktopAppearance::takeFromPortal(const QString& group, const QString& key, QVariant value) {
    // Portals wrap a value once or twice.
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    if (group == kLooks && key == kColorScheme) wishes_.colorScheme = value.toUInt();
    if (group == kInterface && key == kAnimations) wishes_.portalAnimates = value.toBool();
    apply();
}

bool DesktopAppearance::nativeEventFilter(const QByteArray& /*kind*/, void* message,
                                          qintptr* /*result*/) {
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7f) {
        case XCB_PROPERTY_NOTIFY: {
            const auto& change = *static_cast<const xcb_property_notify_event_t*>(message);
            if (change.window == daemonWindow_ && change.atom == daemonProperty_) readDaemon();
            break;
        }
        case XCB_CLIENT_MESSAGE: {
            const auto& told = *static_cast<const xcb_client_message_event_t*>(message);
            if (told.type == daemonAnnouncement_ && told.data.data32[1] == daemonSelection_) {
                findDaemon();
            }
            break;
        }
        default: break;
    }
    return false;
}

void DesktopAppearance::findDaemon() {
    daemonWindow_ = selectionOwner(server_, daemonSelection_);
    if (daemonWindow_ == XCB_WINDOW_NONE) return;
    // Qt asks for the same on this connection, and the last who asks counts.
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(server_, daemonWindow_, XCB_CW_EVENT_MASK, &events);
    readDaemon();
}

void DesktopAppearance::readDaemon() {
    constexpr std::uint32_t kLargest = 65536;
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        server_,
        xcb_get_property(server_, 0, daemonWindow_, daemonProperty_, XCB_ATOM_ANY, 0, kLargest),
        nullptr));
    if (!reply) return;
    const auto* bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    const XSettings settings = parseXSettings({bytes, propertyLength(*reply)});
    wishes_.themeName.reset();
    wishes_.daemonAnimates.reset();
    if (const auto found = settings.find("Net/ThemeName"); found != settings.end()) {
        if (const auto* name = std::get_if<std::string>(&found->second)) wishes_.themeName = *name;
    }
    if (const auto found = settings.find("Gtk/EnableAnimations"); found != settings.end()) {
        if (const auto* on = std::get_if<std::int32_t>(&found->second)) {
            wishes_.daemonAnimates = *on != 0;
        }
    }
    apply();
}

void DesktopAppearance::apply() {
    const bool isDark = wishes_.isDark();
    if (isDark != appearance_.isDark()) QApplication::setPalette(menuColors(isDark));
    appearance_.setDark(isDark);
    appearance_.setPrefersReducedMotion(wishes_.prefersReducedMotion());
}

}  // namespace orvel::x11
