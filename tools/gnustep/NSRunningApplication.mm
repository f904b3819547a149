#include <AppKit/AppKit.h>

@implementation NSRunningApplication
+ (NSArray*)runningApplicationsWithBundleIdentifier:(NSString*)identifier {
    return [NSArray array];
}
- (BOOL)isTerminated {
    return NO;
}
- (int)processIdentifier {
    return 0;
}
- (BOOL)terminate {
    return NO;
}
@end
