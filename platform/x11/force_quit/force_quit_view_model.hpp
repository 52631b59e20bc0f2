#pragma once

#include "platform/x11/force_quit/force_quit_list.hpp"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace orvel::x11 {

/// The Force Quit window as QML reads it.
class ForceQuitViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractItemModel* applications READ applications CONSTANT FINAL)
    Q_PROPERTY(int chosenPlace READ chosenPlace NOTIFY changed FINAL)
    Q_PROPERTY(bool hasChoice READ hasChoice NOTIFY changed FINAL)
    Q_PROPERTY(bool isAsking READ isAsking NOTIFY changed FINAL)
    Q_PROPERTY(QString question READ question NOTIFY changed FINAL)
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    ForceQuitViewModel(ForceQuitModel& model, std::function<void()> close);

    [[nodiscard]] QAbstractItemModel* applications() { return &list_; }
    [[nodiscard]] int chosenPlace() const { return model_.chosenPlace(); }
    [[nodiscard]] bool hasChoice() const { return model_.chosen() != nullptr; }
    [[nodiscard]] bool isAsking() const { return model_.isAsking(); }
    [[nodiscard]] QString question() const;

    Q_INVOKABLE void choose(int pid) { model_.choose(pid); }
    Q_INVOKABLE void moveChoice(int places) { model_.moveChoice(places); }
    Q_INVOKABLE void askToQuit() { model_.askToQuit(); }
    Q_INVOKABLE void confirm() { model_.confirm(); }
    /// Back from the question to the list, from the list out of the window.
    Q_INVOKABLE void escape();

signals:
    void changed();

private:
    ForceQuitModel& model_;
    std::function<void()> close_;
    ForceQuitList list_;
    Subscription rows_;
    Subscription choice_;
    Subscription asking_;
};

}  // namespace orvel::x11
