#pragma once

#include "platform/essentials.hpp"

#include <QAbstractListModel>

#include <vector>

namespace orvel::settings_view {

/// What is essential, as QML reads it.
class FindingList : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        nameRole = Qt::UserRole,
        symbolRole,
        stopsRole,
        remedyRole,
        isThereRole,
        hasSettingsRole
    };

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Takes over what was found and tells which rows changed.
    void show(const std::vector<EssentialFinding>& findings);
    [[nodiscard]] const std::vector<EssentialFinding>& findings() const { return findings_; }

private:
    void resize(std::size_t count);

    std::vector<EssentialFinding> findings_;
};

}  // namespace orvel::settings_view
