// What the adapters that run over GNUstep call of AppKit, which its Foundation has no part of.
#pragma once
#import <Foundation/Foundation.h>

@interface NSRunningApplication : NSObject
// Nobody.
+ (NSArray*)runningApplicationsWithBundleIdentifier:(NSString*)identifier;
- (BOOL)isTerminated;
- (int)processIdentifier;
- (BOOL)terminate;
@end
