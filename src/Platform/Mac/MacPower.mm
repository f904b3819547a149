#include "MacPower.h"
#import <Foundation/Foundation.h>

namespace quillane {

bool MacPower::isLowPowerModeEnabled() const {
    @autoreleasepool {
        return [[NSProcessInfo processInfo] isLowPowerModeEnabled] != NO;
    }
}

} // namespace quillane
