// Expected: undeclared selector 'clik:'
#import <AppKit/AppKit.h>

@interface Target : NSObject
- (void)click:(id)sender;
@end

void attach(NSStatusBarButton* button, Target* target) {
    [button setTarget:target];
    [button setAction:@selector(clik:)];
}
