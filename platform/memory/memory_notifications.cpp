#include "platform/memory/memory_notifications.hpp"

#include <algorithm>

namespace orvel::memory {

namespace {

std::string_view systemName(NotificationName name) {
    return name == NotificationName::windowDidResignKey
               ? "NSWindowDidResignKeyNotification"
               : "NSApplicationDidResignActiveNotification";
}

}  // namespace

class MemoryNotifications::Token final : public NotificationObserver {
public:
    Token(EffectLog& effects, std::weak_ptr<List> list, std::shared_ptr<const Observer> observer)
        : effects_(effects), list_(std::move(list)), observer_(std::move(observer)) {}
    ~Token() override {
        const auto list = list_.lock();
        if (!list) return;
        std::erase(*list, observer_);
        logChange(effects_, "remove", *observer_);
    }

private:
    EffectLog& effects_;
    std::weak_ptr<List> list_;
    std::shared_ptr<const Observer> observer_;
};

std::unique_ptr<NotificationObserver> MemoryNotifications::observe(NotificationName name,
                                                                   std::optional<PanelId> panel,
                                                                   std::string_view owner,
                                                                   std::function<void()> handler) {
    const auto observer = std::make_shared<const Observer>(
        Observer{name, panel, std::string(owner), std::move(handler)});
    observers_->push_back(observer);
    logChange(effects_, "add", *observer);
    return std::make_unique<Token>(effects_, observers_, observer);
}

void MemoryNotifications::post(NotificationName name, std::optional<PanelId> sender) {
    const List told = *observers_;
    for (const auto& observer : told) {
        const bool isThere =
            std::find(observers_->begin(), observers_->end(), observer) != observers_->end();
        const bool isMeant = !observer->panel || observer->panel == sender;
        if (isThere && isMeant && observer->name == name) observer->handler();
    }
}

void MemoryNotifications::logChange(EffectLog& effects, std::string_view op,
                                    const Observer& observer) {
    effects.effect("observer")
        ->beginObject()
        .member("op", op)
        .member("name", systemName(observer.name))
        .member("owner", observer.owner)
        .endObject();
}

}  // namespace orvel::memory
