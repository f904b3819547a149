// Expected: method 'userNotificationCenter:didReceiveNotificationResponse:withCompletionHandler:' in protocol .* not implemented
#import <UserNotifications/UserNotifications.h>

@interface Delegate : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation Delegate
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completion {
    (void)center;
    (void)notification;
    completion(UNNotificationPresentationOptionBanner);
}
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
            didReceiveResponse:(UNNotificationResponse*)response
         withCompletionHandler:(void (^)(void))completion {
    (void)center;
    (void)response;
    completion();
}
@end
