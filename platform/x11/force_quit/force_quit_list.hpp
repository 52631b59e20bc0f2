#pragma once

#include "platform/x11/force_quit/force_quit_model.hpp"

#include <QAbstractListModel>

#include <vector>

namespace orvel::x11 {

/// The running applications as QML reads them; changes reach it row by row.
class ForceQuitList : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { nameRole = Qt::UserRole, iconRole, pidRole };

    explicit ForceQuitList(const ForceQuitModel& model);

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    void follow(const std::vector<ForceQuitRow>& rows);
    void removeGone(const std::vector<ForceQuitRow>& rows);

    std::vector<ForceQuitRow> rows_;
    Subscription subscription_;
};

}  // namespace orvel::x11
