#pragma once

#include "settings_ui/keyboard_drawing.hpp"

#include <QAbstractListModel>
#include <QString>

#include <array>

namespace orvel {

class RemapEditorModel;

namespace settings_view {

/// The drawn key row as QML reads it. Only what a key acts as ever changes.
class DrawnKeyList : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        labelRole = Qt::UserRole,
        symbolRole,
        spokenNameRole,
        isRemappableRole,
        isRemappedRole,
        targetRole,       ///< label of what the key acts as
        targetIndexRole,  ///< its place in the menu
    };

    explicit DrawnKeyList(const RemapEditorModel& editor);

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Reads the settings again and tells which keys changed.
    void refresh();

private:
    [[nodiscard]] int readTarget(std::size_t index) const;

    const RemapEditorModel& editor_;
    std::array<int, kDrawnKeys.size()> targets_{};
};

}  // namespace settings_view
}  // namespace orvel
