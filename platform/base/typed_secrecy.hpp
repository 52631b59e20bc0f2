#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <utility>

namespace orvel {

/// Names what was typed at one moment; later moments have higher numbers.
using InputTicket = std::uint64_t;

/// Whether what was typed at some moment may be kept.
enum class Secrecy { undecided, open, secret };

/// Tells of everything that is typed whether it may be a password. Where keys went is known only
/// after they were typed, so the answer comes later. Main thread; never waits.
class TypedSecrecy {
public:
    virtual ~TypedSecrecy() = default;

    /// The moment to which whatever is written down now belongs.
    [[nodiscard]] virtual InputTicket current() const = 0;
    [[nodiscard]] virtual Secrecy of(InputTicket ticket) const = 0;
};

/// For a system that says in the same moment whether something secret is typed.
class SecrecyAtOnce final : public TypedSecrecy {
public:
    explicit SecrecyAtOnce(std::function<bool()> isSecret) : isSecret_(std::move(isSecret)) {}

    [[nodiscard]] InputTicket current() const override { return isSecret_() ? kSecret : kOpen; }
    [[nodiscard]] Secrecy of(InputTicket ticket) const override {
        return ticket == kOpen ? Secrecy::open : Secrecy::secret;
    }

private:
    static constexpr InputTicket kOpen = 0;
    static constexpr InputTicket kSecret = 1;

    std::function<bool()> isSecret_;
};

/// Holds back, in memory only, what was typed until it is known to be no secret. The order stays:
/// nothing is kept before what came first is decided. Main thread.
template <typename Entry>
class Withheld {
public:
    using Keep = std::function<void(Entry&)>;

    /// Holds at most about `limit` bytes; what is undecided for so long is never kept.
    Withheld(const TypedSecrecy& secrecy, std::size_t limit, Keep keep)
        : secrecy_(secrecy), limit_(limit), keep_(std::move(keep)) {}

    void add(Entry entry, std::size_t size) {
        size += sizeof(Held);
        size_ += size;
        held_.push_back({secrecy_.current(), std::move(entry), size});
        while (size_ > limit_) drop();
        release();
    }
    /// Keeps what may be kept by now. To be called whenever something was decided.
    void release() {
        while (!held_.empty()) {
            const Secrecy secrecy = secrecy_.of(held_.front().ticket);
            if (secrecy == Secrecy::undecided) return;
            if (secrecy == Secrecy::open) keep_(held_.front().entry);
            drop();
        }
    }

private:
    struct Held {
        InputTicket ticket;
        Entry entry;
        std::size_t size;
    };
    void drop() {
        size_ -= held_.front().size;
        held_.pop_front();
    }

    const TypedSecrecy& secrecy_;
    std::size_t limit_;
    Keep keep_;
    std::deque<Held> held_;
    std::size_t size_ = 0;
};

}  // namespace orvel
