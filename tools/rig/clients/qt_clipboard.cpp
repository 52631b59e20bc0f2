// A Qt application that copies and pastes, told by lines on standard input:
//   text FILE         copies the text in a file
//   secret FILE       copies it as password managers do
//   picture FILE      copies the picture in a file
//   read FILE         pastes text into a file
//   read-picture      pastes a picture and tells its size
// Answers each line with "done", and what was asked for.

#include "tools/rig/clients/line_input.hpp"

#include <QApplication>
#include <QByteArray>
#include <QClipboard>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QSocketNotifier>
#include <QString>

#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>

namespace {

QByteArray contentOf(const std::string& name) {
    QFile file(QString::fromStdString(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void copyText(const std::string& name, bool isSecret) {
    auto data = std::make_unique<QMimeData>();
    data->setText(QString::fromUtf8(contentOf(name)));
    if (isSecret) data->setData("x-kde-passwordManagerHint", "secret");
    QApplication::clipboard()->setMimeData(data.release());
}

std::string paste(const std::string& name) {
    const QMimeData* data = QApplication::clipboard()->mimeData();
    if (data == nullptr || !data->hasText()) return " nothing";
    QFile file(QString::fromStdString(name));
    return file.open(QIODevice::WriteOnly) && file.write(data->text().toUtf8()) >= 0
               ? ""
               : " unwritable";
}

std::string pastePicture() {
    const QImage picture = QApplication::clipboard()->image();
    return ' ' + std::to_string(picture.width()) + 'x' + std::to_string(picture.height());
}

std::string obey(const std::string& line) {
    // Without a key or a click Qt knows the time only from what the server told it last, and a copy
    // that is older than somebody else's does not count.
    QGuiApplication::sync();
    std::istringstream words(line);
    std::string command;
    std::string name;
    words >> command >> name;
    if (command == "read") return paste(name);
    if (command == "read-picture") return pastePicture();
    if (command == "picture") {
        QApplication::clipboard()->setImage(QImage::fromData(contentOf(name)));
    } else {
        copyText(name, command == "secret");
    }
    return {};
}

}  // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    orvel::rig::LineInput input;
    QSocketNotifier arrival(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&arrival, &QSocketNotifier::activated, &arrival, [&] {
        const auto answer = [](const std::string& line) {
            std::cout << "done" << obey(line) << std::endl;
        };
        if (!input.read(answer)) QApplication::quit();
    });
    std::cout << "done" << std::endl;
    return QApplication::exec();
}
