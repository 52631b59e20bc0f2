#include "tests/view/test_stage.hpp"

#include <chrono>
#include <string_view>

namespace orvel::test {

namespace {

struct ToVariant {
    QVariant operator()(bool flag) const { return flag; }
    QVariant operator()(std::int64_t number) const { return QVariant::fromValue(number); }
    QVariant operator()(double number) const { return number; }
    QVariant operator()(const std::string& text) const { return QString::fromStdString(text); }
    template <typename Other>
    QVariant operator()(const Other&) const {
        return QStringLiteral("of another kind");
    }
};

}  // namespace

TestStage::TestStage(QObject* parent)
    : QObject(parent),
      viewModel_(app_.settings(), app_.onboarding(), app_.engine().isPaused(), [this] {
          isClosed_ = true;
          emit closed();
      }) {}

void TestStage::prefer(const QString& key, const QVariant& value) {
    const bool isFlag = value.typeId() == QMetaType::Bool;
    desk_.preferenceStore.writeFromOutside(
        key.toStdString(),
        isFlag ? PreferenceValue(value.toBool()) : PreferenceValue(value.toString().toStdString()));
}

QVariant TestStage::stored(const QString& key) {
    auto& store = desk_.preferenceStore;
    const PreferenceValue* value = store.value(store.handle(key.toStdString()));
    return value == nullptr ? QVariant() : std::visit(ToVariant(), *value);
}

bool TestStage::isEngineOn() { return app_.engine().isWindowsModeEnabled(); }

void TestStage::pauseEngine() { app_.engine().setPaused(true); }

bool TestStage::isKeyboardThere() const { return desk_.essentials.findings.front().isThere; }

void TestStage::setKeyboardThere(bool isThere) {
    desk_.essentials.findings = {{Essential::keyboard, isThere}};
}

void TestStage::loseKeyboardControl() {
    desk_.essentials.findings = {{Essential::keyboard, false}, {Essential::keyboardControl, false}};
}

void TestStage::askForPermission() {
    desk_.essentials.findings = {{Essential::accessibilityPermission, false}};
}

void TestStage::letTimePass(int seconds) { desk_.runLoop.advance(std::chrono::seconds(seconds)); }

bool TestStage::hasOpened(const QString& text) {
    return desk_.effects.text().find(text.toStdString()) != std::string_view::npos;
}

}  // namespace orvel::test
