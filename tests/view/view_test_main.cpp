#include "platform/qt/chinese_fonts.hpp"
#include "platform/qt/controls/appearance.hpp"
#include "tests/view/test_stage.hpp"

#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QtQuickTest/quicktest.h>

namespace orvel::test {

/// What the QML tests find when they start.
class Setup : public QObject {
    Q_OBJECT

public slots:
    void applicationAvailable() {
        QGuiApplication::setFont(QFont("Noto Sans"));
        qt::preferSimplifiedChinese();
    }
    void qmlEngineAvailable(QQmlEngine* engine) {
        engine->addImportPath("qrc:/qt/qml");
        qmlRegisterType<TestStage>("Orvel.Test", 1, 0, "TestStage");
    }

private:
    qt::Appearance appearance_{nullptr};
};

}  // namespace orvel::test

QUICK_TEST_MAIN_WITH_SETUP(view_test, orvel::test::Setup)

#include "view_test_main.moc"
