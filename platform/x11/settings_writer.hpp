#pragma once

#include "platform/preference_store.hpp"
#include "platform/x11/settings_file.hpp"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace orvel::x11 {

/// Brings changes to the disk on a thread of its own, since a disk may be slow and the keyboard
/// must not be. Changes that cannot be written are kept and tried again.
class SettingsWriter {
public:
    /// Grows with every change; a change is on the disk when `confirmed` has reached its number.
    using Sequence = std::uint64_t;

    /// What becomes of changes that cannot be written: a resident keeps them, tries again and
    /// reports; a command ends and says itself what `flush` returned.
    enum class Failures { keepTrying, returnOnly };

    SettingsWriter(const SettingsFile& file, Failures failures, Report report);
    /// Tries once more to write what is left.
    ~SettingsWriter();
    SettingsWriter(const SettingsWriter&) = delete;
    SettingsWriter& operator=(const SettingsWriter&) = delete;

    /// Changes that are given together are written together.
    Sequence change(const PreferenceChanges& changes);
    /// Has the file looked at, and kept aside when it is damaged.
    Sequence settle();
    [[nodiscard]] Sequence confirmed() const;
    /// The document that was written last, null before; not for long what is on the disk.
    [[nodiscard]] SettingsDocument written() const;

    /// Waits until everything is written or one more attempt has failed.
    Result<> flush();

private:
    struct Change {
        std::optional<PreferenceValue> value;
        Sequence sequence = 0;
        /// A change that failed gives way when another program changes the key meanwhile.
        bool hasFailed = false;
    };
    using Changes = std::map<std::string, Change, std::less<>>;

    void start();
    void run();
    void attempt(std::unique_lock<std::mutex>& lock);
    PreferenceChanges merge(const Changes& batch, const SettingsDocument& onDisk);
    /// Notes how an attempt ended; what the user should know about it, if anything.
    std::string finish(const Result<SettingsDocument>& result, Sequence reached);

    const SettingsFile& file_;
    Failures failures_;
    Report report_;

    mutable std::mutex mutex_;
    std::condition_variable wake_;
    std::condition_variable attempted_;
    Changes pending_;
    Sequence last_ = 0;
    Sequence confirmed_ = 0;
    SettingsDocument written_;
    std::uint64_t attemptsBegun_ = 0;
    std::uint64_t lastFailedAttempt_ = 0;
    std::string problem_;  ///< of the last attempt; empty when it succeeded
    bool isHurried_ = false;
    bool isAttempting_ = false;
    bool isStopping_ = false;
    std::thread thread_;

    /// What the disk held when an attempt failed last. Touched by the thread alone.
    SettingsDocument seenAtFailure_;
    SettingsDocument seenNow_;
};

}  // namespace orvel::x11
