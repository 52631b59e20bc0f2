#include "settings_ui/view/feature_card_list.hpp"

#include "settings_ui/settings_model.hpp"
#include "settings_ui/view/view_text.hpp"

namespace orvel::settings_view {

FeatureCardList::FeatureCardList(const SettingsModel& settings, std::span<const FeatureCard> cards)
    : settings_(settings), cards_(cards) {
    for (std::size_t i = 0; i < cards_.size(); ++i) rows_.push_back(readRow(i));
}

int FeatureCardList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant FeatureCardList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const auto place = static_cast<std::size_t>(index.row());
    const FeatureCard& card = cards_[place];
    switch (role) {
        case Qt::DisplayRole:
        case titleRole: return toQString(card.title());
        case textRole: return rows_[place].text;
        case symbolRole: return toQString(card.symbol);
        case colorRole: return toQColor(rgbOf(card.color));
        case isOnRole: return rows_[place].isOn;
        case helpRole: return rows_[place].help;
        default: return {};
    }
}

QHash<int, QByteArray> FeatureCardList::roleNames() const {
    return {{titleRole, "title"},     {textRole, "description"}, {symbolRole, "iconName"},
            {colorRole, "cardColor"}, {isOnRole, "isOn"},        {helpRole, "helpText"}};
}

void FeatureCardList::refresh() {
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        Row row = readRow(i);
        if (row == rows_[i]) continue;
        rows_[i] = std::move(row);
        const QModelIndex changed = index(static_cast<int>(i));
        emit dataChanged(changed, changed, {isOnRole, textRole, helpRole});
    }
}

FeatureCardList::Row FeatureCardList::readRow(std::size_t index) const {
    const FeatureCard& card = cards_[index];
    Row row{.isOn = settings_.isCardOn(card.key), .text = {}, .help = {}};
    switch (card.key) {
        case PreferenceKey::cardModifier:
            row.text = toQString(settings_.editor().modifierText());
            row.help = toQString(settings_.editor().modifierHelp());
            break;
        case PreferenceKey::cardEject:
            row.text = toQString(settings_.editor().ejectText());
            row.help = toQString(settings_.editor().ejectHelp());
            break;
        default: row.text = toQString(card.description);
    }
    return row;
}

}  // namespace orvel::settings_view
