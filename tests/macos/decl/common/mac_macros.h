// How the system's headers spell enumerations and options, as far as C++ sees it.
#pragma once
#define MAC_ENUM(type, name) \
    enum name : type;        \
    typedef enum name name;  \
    enum name : type
// In C++ an option type is a plain integer.
#define MAC_OPTIONS(type, name) \
    typedef type name;          \
    enum : type
// What an instance keeps where the fakes implement the class; the system keeps that to itself.
#ifdef __APPLE__
#define MAC_FAKED(...)
#else
#define MAC_FAKED(...) {__VA_ARGS__}
#endif
