// What GNUstep lacks of the Mac's Foundation. Every source in Objective-C++ is compiled with it.
#pragma once
#import <Foundation/Foundation.h>

@interface NSFileManager (QuillaneGaps)
// Refuses, as on a volume without a Trash.
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resulting error:(NSError**)error;
@end

typedef NSString* NSKeyValueChangeKey;

@interface NSObject (QuillaneGaps)
// Whatever the context.
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)path context:(void*)context;
@end
