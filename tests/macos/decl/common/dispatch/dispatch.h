// Grand Central Dispatch, as far as the back end uses it. Needs NSObject.
#pragma once
#include <stdint.h>
#include <mac_macros.h>

@protocol OS_dispatch_queue <NSObject>
@end
typedef NSObject<OS_dispatch_queue>* dispatch_queue_t;
@protocol OS_dispatch_source <NSObject>
@end
typedef NSObject<OS_dispatch_source>* dispatch_source_t;
typedef void (^dispatch_block_t)(void);
typedef uint64_t dispatch_time_t;
#define DISPATCH_TIME_NOW (0ull)

MAC_ENUM(unsigned int, qos_class_t){
    QOS_CLASS_DEFAULT = 0x15,
    QOS_CLASS_USER_INITIATED = 0x19,
};

extern "C" {
void dispatch_async(dispatch_queue_t, dispatch_block_t);
void dispatch_after(dispatch_time_t, dispatch_queue_t, dispatch_block_t);
dispatch_time_t dispatch_time(dispatch_time_t, int64_t);
dispatch_queue_t dispatch_get_global_queue(intptr_t, uintptr_t);
typedef const struct dispatch_source_type_s* dispatch_source_type_t;
extern const struct dispatch_source_type_s _dispatch_source_type_signal;
#define DISPATCH_SOURCE_TYPE_SIGNAL (&_dispatch_source_type_signal)
dispatch_source_t dispatch_source_create(dispatch_source_type_t, uintptr_t, uintptr_t,
                                         dispatch_queue_t) __attribute__((ns_returns_retained));
void dispatch_source_set_event_handler(dispatch_source_t, dispatch_block_t);
void dispatch_resume(NSObject*);
#ifdef __APPLE__
extern struct dispatch_queue_s _dispatch_main_q;
static inline dispatch_queue_t dispatch_get_main_queue(void) {
    return (__bridge dispatch_queue_t)&_dispatch_main_q;
}
#else
dispatch_queue_t dispatch_get_main_queue(void);
#endif
}
