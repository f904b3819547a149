// Expected: cannot initialize a parameter of type 'NSURL \* _Nullable __autoreleasing \* _Nullable' with an lvalue
#import <Foundation/Foundation.h>

bool trash(NSURL* item) {
    NSURL* landed = nil;
    NSError* error = nil;
    return [[NSFileManager defaultManager] trashItemAtURL:item resultingItemURL:landed error:&error];
}
