// Here, and there is no more of it: nothing that runs over GNUstep calls CoreFoundation.
#pragma once
typedef const struct __CFString* CFStringRef;
