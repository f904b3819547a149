// Expected: null passed to a callee that requires a non-null argument
#import <Foundation/Foundation.h>

NSURL* nowhere() {
    return [NSURL URLWithString:nil];
}
