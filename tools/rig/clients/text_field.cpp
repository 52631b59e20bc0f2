// A window with one text field, made with a toolkit as ordinary applications are.
//
//   orvel-rig-text-field TITLE plain|password
//
// Prints "typed TEXT" at each Return and empties the field.

#include <QApplication>
#include <QLineEdit>
#include <QString>
#include <QVBoxLayout>
#include <QWidget>

#include <iostream>
#include <string>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3) {
        std::cerr << "usage: " << argv[0] << " TITLE plain|password\n";
        return 2;
    }
    QWidget window;
    QLineEdit field;
    QVBoxLayout layout(&window);
    layout.addWidget(&field);
    window.setWindowTitle(arguments[1]);
    window.resize(400, 60);
    field.setEchoMode(arguments[2] == "password" ? QLineEdit::Password : QLineEdit::Normal);
    QObject::connect(&field, &QLineEdit::returnPressed, &field, [&field] {
        std::cout << "typed " << field.text().toStdString() << std::endl;
        field.clear();
    });
    window.show();
    return QApplication::exec();
}
