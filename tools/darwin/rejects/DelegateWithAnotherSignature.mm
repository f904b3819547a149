// Expected: conflicting parameter types in implementation
#import <UserNotifications/UserNotifications.h>

@interface Delegate : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation Delegate
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(void))completion {
    (void)center;
    (void)notification;
    completion();
}
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completion {
    (void)center;
    (void)response;
    completion();
}
@end
