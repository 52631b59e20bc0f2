// A window with a text field, made with a toolkit as ordinary applications are.
//
//   orvel-rig-text-field TITLE plain|password|both [LABELS]
//
// With both, a plain one stands above one for a password. So many labels stand above them. Prints
// "typed TEXT" at each Return in a field and empties that. From SIGUSR1 to SIGUSR2 it hangs, as a
// program does that waits for something that never comes, and prints "hanging" when that begins.

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QString>
#include <QVBoxLayout>
#include <QWidget>

#include <csignal>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

sigset_t goingOn() {
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, SIGUSR2);
    return only;
}

void hang(int /*signal*/) {
    const sigset_t end = goingOn();
    int received = 0;
    constexpr std::string_view kNotice = "hanging\n";
    if (::write(STDOUT_FILENO, kNotice.data(), kNotice.size()) < 0) return;
    ::sigwait(&end, &received);
}

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
    // Kept until it is waited for, by every thread that begins from here on.
    const sigset_t end = goingOn();
    ::pthread_sigmask(SIG_BLOCK, &end, nullptr);
    std::signal(SIGUSR1, hang);
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() != 3 && arguments.size() != 4) {
        std::cerr << "usage: " << argv[0] << " TITLE plain|password|both [LABELS]\n";
        return 2;
    }
    QWidget window;
    QLineEdit plain;
    QLineEdit password;
    QVBoxLayout layout(&window);
    QWidget labels;
    std::vector<std::unique_ptr<QLabel>> inside;
    for (int left = arguments.value(3).toInt(); left > 0; --left)
        inside.push_back(std::make_unique<QLabel>("label", &labels));
    if (!inside.empty()) layout.addWidget(&labels);
    if (arguments[2] != "password") addField(layout, plain, false);
    if (arguments[2] != "plain") addField(layout, password, true);
    window.setWindowTitle(arguments[1]);
    window.resize(400, 60);
    window.show();
    return QApplication::exec();
}
