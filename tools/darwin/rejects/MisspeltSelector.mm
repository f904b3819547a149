// Expected: no visible @interface for 'NSFileManager' declares the selector 'trashItemAtUrl:resultingItemURL:error:'
#import <Foundation/Foundation.h>

bool trash(NSURL* item) {
    NSURL* landed = nil;
    NSError* error = nil;
    return [[NSFileManager defaultManager] trashItemAtUrl:item resultingItemURL:&landed error:&error];
}
