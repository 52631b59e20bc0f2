#include "platform/x11/force_quit/force_quit_view_model.hpp"

#include <utility>

namespace orvel::x11 {

ForceQuitViewModel::ForceQuitViewModel(ForceQuitModel& model, std::function<void()> close)
    : model_(model),
      close_(std::move(close)),
      list_(model),
      rows_(model.rows().subscribe([this](const auto&) { emit changed(); })),
      choice_(model.chosenPid().subscribe([this](ProcessId) { emit changed(); })),
      asking_(model.isAsking().subscribe([this](bool) { emit changed(); })) {}

QString ForceQuitViewModel::question() const {
    const ForceQuitRow* row = model_.chosen();
    if (row == nullptr) return {};
    return QStringLiteral("要强制退出“%1”吗？").arg(QString::fromStdString(row->name));
}

void ForceQuitViewModel::escape() {
    if (model_.isAsking()) return model_.withdraw();
    close_();
}

}  // namespace orvel::x11
