// The base types of Objective-C; the rest is built into the compiler.
#pragma once
#if __OBJC_BOOL_IS_BOOL
typedef bool BOOL;
#else
typedef signed char BOOL;
#endif
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#ifndef __OBJC__
typedef struct objc_class* Class;
typedef struct objc_object* id;
typedef struct objc_selector* SEL;
#endif
