#pragma once

#include "settings_ui/feature_cards.hpp"

#include <QAbstractListModel>
#include <QColor>
#include <QString>

#include <span>
#include <vector>

namespace orvel {

class SettingsModel;

namespace settings_view {

/// Cards of one kind as QML reads them. Only their switches and live texts ever change.
class FeatureCardList : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { titleRole = Qt::UserRole, textRole, symbolRole, colorRole, isOnRole, helpRole };

    /// `cards` follow each other in the table of cards.
    FeatureCardList(const SettingsModel& settings, std::span<const FeatureCard> cards);

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    /// Reads the settings again and tells which rows changed.
    void refresh();

private:
    struct Row {
        bool isOn = false;
        QString text;
        QString help;
        bool operator==(const Row&) const = default;
    };
    [[nodiscard]] Row readRow(std::size_t index) const;

    const SettingsModel& settings_;
    std::span<const FeatureCard> cards_;
    std::vector<Row> rows_;
};

}  // namespace settings_view
}  // namespace orvel
