// Expected: 'retain' is unavailable: not available in automatic reference counting mode
#import <Foundation/Foundation.h>

NSURL* kept(NSURL* url) {
    return [url retain];
}
