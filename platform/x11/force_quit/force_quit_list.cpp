#include "platform/x11/force_quit/force_quit_list.hpp"

#include <QString>
#include <QUrl>

#include <algorithm>

namespace orvel::x11 {

ForceQuitList::ForceQuitList(const ForceQuitModel& model)
    : rows_(model.rows().get()),
      subscription_(model.rows().subscribe([this](const auto& rows) { follow(rows); })) {}

int ForceQuitList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ForceQuitList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const ForceQuitRow& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
        case Qt::DisplayRole:
        case nameRole: return QString::fromStdString(row.name);
        case iconRole:
            return QString(
                QStringLiteral("image://application/") +
                QString::fromLatin1(QUrl::toPercentEncoding(QString::fromStdString(row.path))));
        case pidRole: return row.pid;
        default: return {};
    }
}

QHash<int, QByteArray> ForceQuitList::roleNames() const {
    return {{nameRole, "name"}, {iconRole, "iconSource"}, {pidRole, "pid"}};
}

void ForceQuitList::follow(const std::vector<ForceQuitRow>& rows) {
    removeGone(rows);
    for (std::size_t place = 0; place < rows.size(); ++place) {
        const int at = static_cast<int>(place);
        if (place == rows_.size() || rows_[place].pid != rows[place].pid) {
            beginInsertRows({}, at, at);
            rows_.insert(rows_.begin() + at, rows[place]);
            endInsertRows();
        } else if (rows_[place] != rows[place]) {
            rows_[place] = rows[place];
            emit dataChanged(index(at), index(at));
        }
    }
    if (rows_.size() == rows.size()) return;
    // What moved up was put in at its new place; what it left behind follows all others.
    beginRemoveRows({}, static_cast<int>(rows.size()), static_cast<int>(rows_.size()) - 1);
    rows_.resize(rows.size());
    endRemoveRows();
}

void ForceQuitList::removeGone(const std::vector<ForceQuitRow>& rows) {
    for (std::size_t place = rows_.size(); place-- > 0;) {
        if (std::ranges::find(rows, rows_[place].pid, &ForceQuitRow::pid) != rows.end()) continue;
        const int at = static_cast<int>(place);
        beginRemoveRows({}, at, at);
        rows_.erase(rows_.begin() + at);
        endRemoveRows();
    }
}

}  // namespace orvel::x11
