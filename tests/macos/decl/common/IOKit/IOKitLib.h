// The I/O kit, as far as the back end uses it.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

extern "C" {

typedef unsigned int mach_port_t;
typedef int kern_return_t;
typedef kern_return_t IOReturn;
typedef mach_port_t io_object_t;
typedef io_object_t io_service_t;
typedef io_object_t io_connect_t;
typedef mach_port_t task_port_t;
enum : int { kIOReturnSuccess = 0 };

extern const mach_port_t kIOMainPortDefault;
extern mach_port_t mach_task_self_;
#define mach_task_self() mach_task_self_
CFMutableDictionaryRef IOServiceMatching(const char*);
io_service_t IOServiceGetMatchingService(mach_port_t, CFDictionaryRef __attribute__((cf_consumed)));
kern_return_t IOServiceOpen(io_service_t, task_port_t, uint32_t, io_connect_t*);
kern_return_t IOServiceClose(io_connect_t);
kern_return_t IOObjectRelease(io_object_t);
}
