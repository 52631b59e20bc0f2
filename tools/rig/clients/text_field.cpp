// A window with a text field, made with a toolkit as ordinary applications are.
//
//   orvel-rig-text-field TITLE plain|password|both
//
// With both, a plain one stands above one for a password. Prints "typed TEXT" at each Return in a
// field and empties that.

#include <QApplication>
#include <QLineEdit>
#include <QString>
#include <QVBoxLayout>
#include <QWidget>

#include <iostream>
#include <string>

namespace {

void addField(QVBoxLayout& layout, QLineEdit& field, bool isPassword) {
    layout.addWidget(&field);
    field.setEchoMode(isPassword ? QLineEdit::Password : QLineEdit::Normal);
    QObject::connect(&field, &QLineEdit::returnPressed, &field, [&field] {
        std::cout << "typed " << field.text().toStdString() << std::endl;
        field.clear();
    });
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::cerr << "usage: " << argv[0] << " TITLE plain|password|both\n";
        return 2;
    }
    QWidget window;
    QLineEdit plain;
    QLineEdit password;
    QVBoxLayout layout(&window);
    if (arguments[2] != "password") addField(layout, plain, false);
    if (arguments[2] != "plain") addField(layout, password, true);
    window.setWindowTitle(arguments[1]);
    window.resize(400, 60);
    window.show();
    return QApplication::exec();
}
