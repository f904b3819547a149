// Expected: declares the selector 'trashItemAtURL:error:'
#import <Foundation/Foundation.h>

bool trash(NSURL* item) {
    NSError* error = nil;
    return [[NSFileManager defaultManager] trashItemAtURL:item error:&error];
}
