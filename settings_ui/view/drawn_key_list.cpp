#include "settings_ui/view/drawn_key_list.hpp"

#include "settings_ui/remap_editor_model.hpp"
#include "settings_ui/view/view_text.hpp"

namespace orvel::settings_view {

namespace {

constexpr int kItself = static_cast<int>(ModifierTarget::itself);

}  // namespace

DrawnKeyList::DrawnKeyList(const RemapEditorModel& editor) : editor_(editor) {
    for (std::size_t i = 0; i < targets_.size(); ++i) targets_[i] = readTarget(i);
}

int DrawnKeyList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(targets_.size());
}

QVariant DrawnKeyList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const auto place = static_cast<std::size_t>(index.row());
    const DrawnKey& key = kDrawnKeys[place];
    const int target = targets_[place];
    switch (role) {
        case Qt::DisplayRole:
        case labelRole: return toQString(key.label);
        case symbolRole: return toQString(key.symbol);
        case spokenNameRole: return toQString(key.listLabel);
        case isRemappableRole: return key.map.has_value();
        case isRemappedRole: return target != kItself;
        case targetRole: return toQString(kModifierTargets[static_cast<std::size_t>(target)].label);
        case targetIndexRole: return target;
        default: return {};
    }
}

QHash<int, QByteArray> DrawnKeyList::roleNames() const {
    return {{labelRole, "label"},
            {symbolRole, "symbol"},
            {spokenNameRole, "spokenName"},
            {isRemappableRole, "isRemappable"},
            {isRemappedRole, "isRemapped"},
            {targetRole, "target"},
            {targetIndexRole, "targetIndex"}};
}

void DrawnKeyList::refresh() {
    for (std::size_t i = 0; i < targets_.size(); ++i) {
        const int target = readTarget(i);
        if (target == targets_[i]) continue;
        targets_[i] = target;
        const QModelIndex changed = index(static_cast<int>(i));
        emit dataChanged(changed, changed, {isRemappedRole, targetRole, targetIndexRole});
    }
}

int DrawnKeyList::readTarget(std::size_t index) const {
    const auto map = kDrawnKeys[index].map;
    return map ? static_cast<int>(editor_.target(*map)) : kItself;
}

}  // namespace orvel::settings_view
