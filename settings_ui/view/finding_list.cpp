#include "settings_ui/view/finding_list.hpp"

#include "settings_ui/essential_texts.hpp"
#include "settings_ui/view/view_text.hpp"

namespace orvel::settings_view {

int FindingList::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(findings_.size());
}

QVariant FindingList::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const EssentialFinding& finding = findings_[static_cast<std::size_t>(index.row())];
    const EssentialText text = textOf(finding.essential);
    switch (role) {
        case Qt::DisplayRole:
        case nameRole: return toQString(text.name);
        case symbolRole: return toQString(text.symbol);
        case stopsRole: return toQString(text.stops);
        case remedyRole: return toQString(text.remedy);
        case isThereRole: return finding.isThere;
        case hasSettingsRole: return !text.settingsUrl.empty();
        default: return {};
    }
}

QHash<int, QByteArray> FindingList::roleNames() const {
    return {{nameRole, "name"},     {symbolRole, "symbol"},   {stopsRole, "stops"},
            {remedyRole, "remedy"}, {isThereRole, "isThere"}, {hasSettingsRole, "hasSettings"}};
}

void FindingList::show(const std::vector<EssentialFinding>& findings) {
    resize(findings.size());
    for (std::size_t i = 0; i < findings.size(); ++i) {
        if (findings_[i] == findings[i]) continue;
        findings_[i] = findings[i];
        const QModelIndex changed = index(static_cast<int>(i));
        emit dataChanged(changed, changed);
    }
}

void FindingList::resize(std::size_t count) {
    const int before = static_cast<int>(findings_.size());
    const int now = static_cast<int>(count);
    if (now > before) {
        beginInsertRows({}, before, now - 1);
        findings_.resize(count);
        endInsertRows();
    } else if (now < before) {
        beginRemoveRows({}, now, before - 1);
        findings_.resize(count);
        endRemoveRows();
    }
}

}  // namespace orvel::settings_view
