#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace orvel {

namespace detail {

/// The subscribers of one published value. Subscribers may cancel themselves or others while
/// they are being told; a cancelled one is not told any more.
template <typename T>
struct SubscriberList {
    struct Entry {
        std::uint64_t id;
        std::shared_ptr<std::function<void(const T&)>> told;
    };
    std::vector<Entry> entries;
    std::uint64_t nextId = 1;

    void remove(std::uint64_t id) {
        for (auto& entry : entries) {
            if (entry.id == id) *entry.told = nullptr;
        }
        std::erase_if(entries, [id](const Entry& entry) { return entry.id == id; });
    }
};

}  // namespace detail

/// Keeps a subscription alive; cancels it when destroyed. May outlive the published value.
class Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
    Subscription& operator=(Subscription&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    ~Subscription() { cancel(); }

    void cancel() {
        if (auto cancelled = std::exchange(cancel_, nullptr)) cancelled();
    }

private:
    std::function<void()> cancel_;
};

/// A value that tells its subscribers when it changes. Main thread only.
template <typename T>
class Published {
public:
    Published() = default;
    explicit Published(T initial) : value_(std::move(initial)) {}
    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const T& get() const { return value_; }
    operator const T&() const { return value_; }

    /// Stores `value` and tells the subscribers when it differs from the old one.
    void set(T value) {
        if (value_ == value) return;
        value_ = std::move(value);
        notify();
    }

    [[nodiscard]] Subscription subscribe(std::function<void(const T&)> told) const {
        const std::uint64_t id = subscribers_->nextId++;
        subscribers_->entries.push_back(
            {id, std::make_shared<std::function<void(const T&)>>(std::move(told))});
        return Subscription([weak = std::weak_ptr(subscribers_), id] {
            if (auto list = weak.lock()) list->remove(id);
        });
    }

private:
    void notify() {
        const auto told = subscribers_->entries;
        for (const auto& entry : told) {
            if (const auto running = *entry.told) running(value_);
        }
    }

    T value_{};
    std::shared_ptr<detail::SubscriberList<T>> subscribers_ =
        std::make_shared<detail::SubscriberList<T>>();
};

}  // namespace orvel
