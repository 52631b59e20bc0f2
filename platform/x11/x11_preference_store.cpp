#include "platform/x11/x11_preference_store.hpp"

#include "platform/x11/xdg_folders.hpp"

#include <utility>

namespace orvel::x11 {

namespace {

/// A link may be replaced while it is being followed; this many times in a row it will not.
constexpr int kFollowAttempts = 5;

}  // namespace

std::string preferencesPath() { return configFolder() + "/orvel/preferences.plist"; }

X11PreferenceStore::X11PreferenceStore(std::string path, Report report, Failures failures)
    : file_(std::move(path)),
      failures_(failures),
      report_(std::move(report)),
      writer_(file_, failures, report_) {
    load();
}

PreferenceHandle X11PreferenceStore::handle(std::string_view key) {
    const auto known = handles_.find(key);
    if (known != handles_.end()) return known->second;
    const auto handle = static_cast<PreferenceHandle>(keys_.size());
    keys_.emplace_back(key);
    slots_.push_back(lookUp(keys_.back()));
    handles_.emplace(key, handle);
    return handle;
}

const PreferenceValue* X11PreferenceStore::value(PreferenceHandle handle) const {
    return slots_[handle];
}

void X11PreferenceStore::set(PreferenceHandle handle, PreferenceValue value) {
    apply({{keys_[handle], std::move(value)}});
}

void X11PreferenceStore::remove(PreferenceHandle handle) { apply({{keys_[handle], std::nullopt}}); }

void X11PreferenceStore::apply(const PreferenceChanges& changes) {
    const SettingsWriter::Sequence sequence = writer_.change(changes);
    for (const auto& [key, value] : changes) {
        const auto kept = changes_.insert_or_assign(key, Change{value, sequence}).first;
        const PreferenceHandle slot = handle(key);
        slots_[slot] = kept->second.value ? &*kept->second.value : nullptr;
    }
}

int X11PreferenceStore::changesFd() {
    if (!watch_) {
        watch_ = std::make_unique<SettingsWatch>();
        load();
        if (!watch_->limitation().empty()) {
            report_("changes of the settings by other programs are seen within a second only (" +
                    watch_->limitation() + ")");
        }
    }
    return watch_->fd();
}

void X11PreferenceStore::refresh() {
    const bool isTold = watch_ && watch_->drain();
    if (isTold || writer_.confirmed() != confirmed_) load();
}

void X11PreferenceStore::load() {
    dropConfirmed();
    problem_.clear();
    Result<SettingsPlace> place = file_.locate();
    for (int i = 0; watch_ && place && i < kFollowAttempts; ++i) {
        watch_->follow(place.value());
        Result<SettingsPlace> again = file_.locate();
        const bool isSame = again && again.value().decidedBy == place.value().decidedBy;
        place = std::move(again);
        if (isSame) break;
    }
    if (place) {
        take(place.value(), file_.read(place.value(), {document_, writer_.written()}));
    } else {
        problem_ = place.error();
        tellUnlessAsked(problem_ + "; settings cannot be read");
    }
    rebuildSlots();
}

void X11PreferenceStore::take(const SettingsPlace& place, const SettingsContent& content) {
    switch (content.state) {
        case SettingsContent::State::good:
            document_ = content.document;
            told_.clear();
            break;
        case SettingsContent::State::absent:
            document_.reset();
            if (place.isLinked) {
                tell(path() + ": the link leads to " + place.file +
                     ", which is not there; defaults apply");
            }
            break;
        case SettingsContent::State::damaged:
            document_.reset();
            writer_.settle();
            break;
        case SettingsContent::State::busy: writer_.settle(); break;
        case SettingsContent::State::unreadable:
            problem_ = content.problem;
            tellUnlessAsked(problem_ + "; " +
                            (document_ ? "the settings stay as they were" : "defaults apply"));
            break;
    }
}

/// A change is forgotten before the file that must hold it is read, never after.
void X11PreferenceStore::dropConfirmed() {
    confirmed_ = writer_.confirmed();
    std::erase_if(changes_, [&](const auto& entry) { return entry.second.sequence <= confirmed_; });
}

void X11PreferenceStore::rebuildSlots() {
    for (std::size_t i = 0; i < keys_.size(); ++i) slots_[i] = lookUp(keys_[i]);
}

const PreferenceValue* X11PreferenceStore::lookUp(const std::string& key) const {
    const auto changed = changes_.find(key);
    if (changed != changes_.end()) return changed->second.value ? &*changed->second.value : nullptr;
    if (!document_) return nullptr;
    const auto stored = document_->values().find(key);
    return stored == document_->values().end() ? nullptr : &stored->second;
}

/// Who does not wait for reports asks for the problem.
void X11PreferenceStore::tellUnlessAsked(const std::string& problem) {
    if (failures_ == Failures::keepTrying) tell(problem);
}

void X11PreferenceStore::tell(const std::string& problem) {
    if (std::exchange(told_, problem) != problem) report_(problem);
}

}  // namespace orvel::x11
