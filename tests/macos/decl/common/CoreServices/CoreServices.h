// Apple events, as far as the back end uses them.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

typedef FourCharCode DescType;
typedef FourCharCode AEEventClass;
typedef FourCharCode AEEventID;
struct AEDesc;
typedef AEDesc AEAddressDesc;

enum {
    typeWildCard = '****',
};
enum {
    noErr = 0,
    procNotFound = -600,
    errAEEventWouldRequireUserConsent = -1744,
};

extern "C" {
OSStatus AEDeterminePermissionToAutomateTarget(const AEAddressDesc*, AEEventClass, AEEventID,
                                               Boolean);
}
