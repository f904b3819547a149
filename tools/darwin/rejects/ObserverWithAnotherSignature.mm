// Expected: conflicting parameter types in declaration of 'observeValueForKeyPath:ofObject:change:context:'
#import <Foundation/Foundation.h>

@interface Observer : NSObject
- (void)observeValueForKeyPath:(NSString*)path
                      ofObject:(id)object
                        change:(NSString*)change
                       context:(void*)context;
@end
