// Expected: cannot initialize a parameter of type 'NSURL \* _Nonnull' with an lvalue of type 'NSString \*__strong'
#import <Foundation/Foundation.h>

bool trash(NSString* item) {
    NSURL* landed = nil;
    NSError* error = nil;
    return [[NSFileManager defaultManager] trashItemAtURL:item resultingItemURL:&landed error:&error];
}
