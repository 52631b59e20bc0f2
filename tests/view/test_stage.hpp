#pragma once

#include "app/application.hpp"
#include "platform/memory/memory_desktop.hpp"
#include "settings_ui/view/settings_view_model.hpp"

#include <QObject>
#include <QString>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

namespace orvel::test {

/// The whole application over a desktop in memory, for one QML test case: the view under test
/// gets `viewModel`, and the test asks here what was stored and done.
class TestStage : public QObject {
    Q_OBJECT
    Q_PROPERTY(orvel::settings_view::SettingsViewModel* viewModel READ viewModel CONSTANT FINAL)
    /// Whether the desktop finds a keyboard.
    Q_PROPERTY(bool keyboardIsThere READ isKeyboardThere WRITE setKeyboardThere)
    Q_PROPERTY(bool isClosed READ isClosed NOTIFY closed FINAL)

public:
    explicit TestStage(QObject* parent = nullptr);

    [[nodiscard]] settings_view::SettingsViewModel* viewModel() { return &viewModel_; }
    [[nodiscard]] bool isKeyboardThere() const;
    void setKeyboardThere(bool isThere);
    [[nodiscard]] bool isClosed() const { return isClosed_; }

    /// Another process stores a flag or a text.
    Q_INVOKABLE void prefer(const QString& key, const QVariant& value);
    /// What is stored under a key; undefined when it is absent.
    Q_INVOKABLE QVariant stored(const QString& key);
    Q_INVOKABLE bool isEngineOn();
    Q_INVOKABLE void pauseEngine();
    /// Neither keyboard nor its control are there.
    Q_INVOKABLE void loseKeyboardControl();
    /// The desktop wants the user's permission and does not have it.
    Q_INVOKABLE void askForPermission();
    /// The timers of the program run, as this many seconds pass.
    Q_INVOKABLE void letTimePass(int seconds);
    /// Whether an address that holds this text was opened.
    Q_INVOKABLE bool hasOpened(const QString& text);

signals:
    void closed();

private:
    memory::MemoryDesktop desk_;
    Application app_{desk_.ports()};
    bool isClosed_ = false;
    settings_view::SettingsViewModel viewModel_;
};

}  // namespace orvel::test
