#include "platform/x11/settings_writer.hpp"

#include <csignal>
#include <pthread.h>
#include <utility>

namespace orvel::x11 {

namespace {

constexpr std::chrono::seconds kRetryInterval{5};

bool sameValue(const plist::PreferenceValues& a, const plist::PreferenceValues& b,
               const std::string& key) {
    const auto inA = a.find(key);
    const auto inB = b.find(key);
    if (inA == a.end() || inB == b.end()) return inA == a.end() && inB == b.end();
    return inA->second == inB->second;
}

/// Starts a thread that no signal of the process is delivered to.
template <typename Function>
std::thread startWithoutSignals(Function function) {
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    std::thread thread(std::move(function));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return thread;
}

}  // namespace

SettingsWriter::SettingsWriter(const SettingsFile& file, Failures failures, Report report)
    : file_(file), failures_(failures), report_(std::move(report)) {}

SettingsWriter::~SettingsWriter() {
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        isStopping_ = true;
        wake_.notify_all();
    }
    thread_.join();
    if (failures_ == Failures::returnOnly) return;
    std::string lost;
    for (const auto& [key, change] : pending_) lost += (lost.empty() ? "" : ", ") + key;
    if (!lost.empty()) report_("not stored: " + lost + " (" + problem_ + ")");
}

SettingsWriter::Sequence SettingsWriter::change(const PreferenceChanges& changes) {
    const std::lock_guard lock(mutex_);
    ++last_;
    for (const auto& [key, value] : changes) pending_.insert_or_assign(key, Change{value, last_});
    start();
    return last_;
}

SettingsWriter::Sequence SettingsWriter::settle() {
    const std::lock_guard lock(mutex_);
    ++last_;
    start();
    return last_;
}

SettingsWriter::Sequence SettingsWriter::confirmed() const {
    const std::lock_guard lock(mutex_);
    return confirmed_;
}

SettingsDocument SettingsWriter::written() const {
    const std::lock_guard lock(mutex_);
    return written_;
}

Result<> SettingsWriter::flush() {
    std::unique_lock lock(mutex_);
    if (confirmed_ == last_ && !isAttempting_) return {};
    const Sequence wanted = last_;
    const std::uint64_t before = attemptsBegun_;
    isHurried_ = true;
    wake_.notify_all();
    attempted_.wait(lock, [&] {
        return !isAttempting_ && (confirmed_ >= wanted || lastFailedAttempt_ > before);
    });
    if (confirmed_ >= wanted) return {};
    return Failure{problem_};
}

void SettingsWriter::start() {
    isHurried_ = true;
    if (!thread_.joinable()) thread_ = startWithoutSignals([this] { run(); });
    wake_.notify_all();
}

void SettingsWriter::run() {
    std::unique_lock lock(mutex_);
    while (true) {
        const auto isDue = [this] { return isStopping_ || isHurried_; };
        if (confirmed_ < last_) {
            wake_.wait_for(lock, kRetryInterval, isDue);
        } else {
            wake_.wait(lock, isDue);
        }
        isHurried_ = false;
        const bool isLast = isStopping_;
        const bool isGivenUp = isLast && failures_ == Failures::returnOnly && !problem_.empty();
        if (confirmed_ < last_ && !isGivenUp) attempt(lock);
        if (isLast) return;
    }
}

void SettingsWriter::attempt(std::unique_lock<std::mutex>& lock) {
    isAttempting_ = true;
    const Changes batch = pending_;
    const Sequence reached = last_;
    const std::uint64_t number = ++attemptsBegun_;
    const SettingsDocument known = written_;
    lock.unlock();
    seenNow_.reset();
    const auto decide = [&](const SettingsDocument& onDisk) { return merge(batch, onDisk); };
    const Result<SettingsDocument> result = file_.update(decide, known, report_);
    if (!result && seenNow_) seenAtFailure_ = seenNow_;
    lock.lock();
    if (!result) lastFailedAttempt_ = number;
    const std::string news = finish(result, reached);
    if (!news.empty()) {
        lock.unlock();
        report_(news);
        lock.lock();
    }
    isAttempting_ = false;
    attempted_.notify_all();
}

PreferenceChanges SettingsWriter::merge(const Changes& batch, const SettingsDocument& onDisk) {
    PreferenceChanges changes;
    for (const auto& [key, change] : batch) {
        const bool isOvertaken = change.hasFailed && seenAtFailure_ &&
                                 !sameValue(seenAtFailure_->values(), onDisk->values(), key);
        if (!isOvertaken) changes.emplace(key, change.value);
    }
    seenNow_ = onDisk;
    return changes;
}

std::string SettingsWriter::finish(const Result<SettingsDocument>& result, Sequence reached) {
    const std::string previous = std::exchange(problem_, result ? std::string() : result.error());
    if (result) {
        confirmed_ = reached;
        written_ = result.value();
        std::erase_if(pending_,
                      [&](const auto& entry) { return entry.second.sequence <= reached; });
        return previous.empty() ? "" : file_.path() + ": settings are stored again";
    }
    for (auto& [key, change] : pending_) {
        if (change.sequence <= reached) change.hasFailed = true;
    }
    if (problem_ == previous || failures_ == Failures::returnOnly) return {};
    return problem_ + (pending_.empty() ? "" : "; the change is kept and tried again");
}

}  // namespace orvel::x11
