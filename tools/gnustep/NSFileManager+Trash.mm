#include "NSFileManager+Trash.h"

@implementation NSFileManager (QuillaneTrash)
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)resulting error:(NSError**)error {
    if (error != nullptr) {
        *error = [NSError errorWithDomain:NSCocoaErrorDomain code:3328 userInfo:nil];
    }
    return NO;
}
@end
