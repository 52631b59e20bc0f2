#include "fake_support.hpp"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
constexpr auto kPatience = std::chrono::seconds(10);

std::mutex mutex;
std::condition_variable changed;
std::deque<dispatch_block_t> mainQueue;
std::multimap<Clock::time_point, dispatch_block_t> later;
std::vector<std::thread> threads;
bool isStopping = false;
thread_local int quality = 0;
const std::thread::id mainThread = std::this_thread::get_id();
Clock::duration skipped{};

Clock::time_point now() { return Clock::now() + skipped; }

}  // namespace

@interface FakeQueue : NSObject <OS_dispatch_queue> {
@public
    int _quality;
}
@end
@implementation FakeQueue
@end

@interface FakeSource : NSObject <OS_dispatch_source> {
@public
    int _signal;
    dispatch_block_t _handler;
    dispatch_queue_t _queue;
    bool _isRunning;
}
@end
@implementation FakeSource
@end

@interface FakeTimer : NSObject {
@public
    Clock::time_point _due;
    CFTimeInterval _interval;
    CFRunLoopTimerCallBack _fired;
    void* _info;
    bool _isCommon;
    bool _isValid;
}
@end
@implementation FakeTimer
@end

namespace {

std::vector<FakeTimer*> timers;
std::vector<FakeSource*> sources;

Clock::duration seconds(double count) {
    return std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(count));
}

/// The next timer that runs in this mode; nil when there is none.
FakeTimer* nextTimer(fake::Mode mode) {
    FakeTimer* next = nil;
    for (FakeTimer* timer : timers) {
        const bool runs = timer->_isValid && (timer->_isCommon || mode == fake::Mode::normal);
        if (runs && (next == nil || timer->_due < next->_due)) next = timer;
    }
    return next;
}

void fire(FakeTimer* timer) {
    [timer retain];
    timer->_due += seconds(timer->_interval);
    const bool isOnce = timer->_interval <= 0;
    if (isOnce) timer->_isValid = false;
    timer->_fired((CFRunLoopTimerRef)(void*)timer, timer->_info);
    [timer release];
}

bool isInBlockOfMainQueue = false;

bool runNextBlock() {
    // A block that runs the run loop once more keeps the others waiting, as on a Mac.
    if (isInBlockOfMainQueue) return false;
    dispatch_block_t block = nil;
    {
        const std::lock_guard lock(mutex);
        while (!later.empty() && later.begin()->first <= now()) {
            mainQueue.push_back(later.begin()->second);
            later.erase(later.begin());
        }
        if (mainQueue.empty()) return false;
        block = mainQueue.front();
        mainQueue.pop_front();
    }
    isInBlockOfMainQueue = true;
    block();
    isInBlockOfMainQueue = false;
    [(id)block release];
    return true;
}

bool runNext(fake::Mode mode) {
    if (runNextBlock()) return true;
    FakeTimer* timer = nextTimer(mode);
    if (timer == nil || timer->_due > now()) return false;
    fire(timer);
    return true;
}

}  // namespace

namespace fake {

bool isMainThread() { return std::this_thread::get_id() == mainThread; }
int currentQuality() { return quality; }
int liveTimers() {
    return static_cast<int>(
        std::count_if(timers.begin(), timers.end(), [](FakeTimer* t) { return t->_isValid; }));
}

void runDue(Mode mode) {
    @autoreleasepool {
        while (runNext(mode)) {
        }
    }
}

bool runUntil(const std::function<bool()>& done, Mode mode) {
    const auto deadline = Clock::now() + kPatience;
    while (!done()) {
        runDue(mode);
        if (done()) return true;
        if (Clock::now() > deadline) return false;
        std::unique_lock lock(mutex);
        changed.wait_for(lock, std::chrono::milliseconds(1));
    }
    return true;
}

void advance(std::chrono::milliseconds time, Mode mode) {
    const auto end = now() + time;
    for (FakeTimer* timer = nextTimer(mode); timer != nil && timer->_due <= end;
         timer = nextTimer(mode)) {
        skipped += std::max(Clock::duration::zero(), timer->_due - now());
        runDue(mode);
    }
    skipped += std::max(Clock::duration::zero(), end - now());
    runDue(mode);
}

void runOnOtherThread(std::function<void()> work, int ofQuality) {
    const std::lock_guard lock(mutex);
    threads.emplace_back([work = std::move(work), ofQuality] {
        quality = ofQuality;
        GSRegisterCurrentThread();
        @autoreleasepool {
            work();
        }
        GSUnregisterCurrentThread();
        changed.notify_all();
    });
}

bool raiseSignal(int signal) {
    bool isWatched = false;
    for (FakeSource* source : sources) {
        if (source->_signal != signal || !source->_isRunning) continue;
        dispatch_async(source->_queue, source->_handler);
        isWatched = true;
    }
    return isWatched;
}

void resetRunLoop() {
    {
        const std::lock_guard lock(mutex);
        isStopping = true;
    }
    changed.notify_all();
    for (std::thread& thread : std::exchange(threads, {})) thread.join();
    isStopping = false;
    mainQueue.clear();
    later.clear();
    timers.clear();
    sources.clear();
    skipped = {};
}

}  // namespace fake

extern "C" {

CFAbsoluteTime CFAbsoluteTimeGetCurrent(void) {
    return std::chrono::duration<double>(now().time_since_epoch()).count();
}
CFRunLoopRef CFRunLoopGetMain(void) { return nullptr; }

CFRunLoopTimerRef CFRunLoopTimerCreate(CFAllocatorRef, CFAbsoluteTime due, CFTimeInterval interval,
                                       CFOptionFlags, CFIndex, CFRunLoopTimerCallBack fired,
                                       CFRunLoopTimerContext* context) {
    FakeTimer* timer = [[FakeTimer new] autorelease];
    timer->_due = Clock::time_point(seconds(due));
    timer->_interval = interval;
    timer->_fired = fired;
    timer->_info = context->info;
    return fake::give<CFRunLoopTimerRef>(timer);
}
void CFRunLoopAddTimer(CFRunLoopRef, CFRunLoopTimerRef timer, CFRunLoopMode mode) {
    FakeTimer* it = fake::object(timer);
    it->_isCommon = CFEqual(mode, kCFRunLoopCommonModes);
    it->_isValid = true;
    timers.push_back([it retain]);
}
void CFRunLoopTimerInvalidate(CFRunLoopTimerRef timer) {
    ((FakeTimer*)fake::object(timer))->_isValid = false;
}

dispatch_queue_t dispatch_get_main_queue(void) {
    static FakeQueue* queue = [FakeQueue new];
    return queue;
}
dispatch_queue_t dispatch_get_global_queue(intptr_t quality, uintptr_t) {
    FakeQueue* queue = [[FakeQueue new] autorelease];
    queue->_quality = static_cast<int>(quality);
    return queue;
}
dispatch_time_t dispatch_time(dispatch_time_t, int64_t delay) {
    return static_cast<dispatch_time_t>(
        (now().time_since_epoch() + std::chrono::nanoseconds(delay)).count());
}
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block) {
    block = (dispatch_block_t)[(id)block copy];
    const int wanted = ((FakeQueue*)queue)->_quality;
    if (wanted == 0) {
        const std::lock_guard lock(mutex);
        mainQueue.push_back(block);
        changed.notify_all();
        return;
    }
    fake::runOnOtherThread(
        [block] {
            block();
            [(id)block release];
        },
        wanted);
}
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block) {
    const Clock::time_point due{std::chrono::nanoseconds(when)};
    block = (dispatch_block_t)[(id)block copy];
    const int wanted = ((FakeQueue*)queue)->_quality;
    if (wanted == 0) {
        const std::lock_guard lock(mutex);
        later.emplace(due, block);
        return;
    }
    fake::runOnOtherThread(
        [block, due] {
            std::unique_lock lock(mutex);
            changed.wait_until(lock, due - skipped, [] { return isStopping; });
            const bool mayRun = !isStopping;
            lock.unlock();
            if (mayRun) block();
            [(id)block release];
        },
        wanted);
}
const struct dispatch_source_type_s {
} _dispatch_source_type_signal{};
dispatch_source_t dispatch_source_create(dispatch_source_type_t type, uintptr_t signal, uintptr_t,
                                         dispatch_queue_t queue) {
    if (type != DISPATCH_SOURCE_TYPE_SIGNAL) return nil;
    FakeSource* source = [FakeSource new];
    source->_signal = static_cast<int>(signal);
    source->_queue = queue;
    sources.push_back(source);
    return source;
}
void dispatch_source_set_event_handler(dispatch_source_t source, dispatch_block_t handler) {
    ((FakeSource*)source)->_handler = (dispatch_block_t)[(id)handler copy];
}
void dispatch_resume(NSObject* source) { ((FakeSource*)source)->_isRunning = true; }
}
