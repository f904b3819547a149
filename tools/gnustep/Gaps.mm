#include "Gaps.h"

@implementation NSFileManager (QuillaneGaps)
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resulting error:(NSError**)error {
    if (error != nullptr) {
        *error = [NSError errorWithDomain:NSCocoaErrorDomain code:3328 userInfo:nil];
    }
    return NO;
}
@end

@implementation NSObject (QuillaneGaps)
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)path context:(void*)context {
    [self removeObserver:observer forKeyPath:path];
}
@end
