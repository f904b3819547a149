#include "UserNotificationCentre.h"
#include "FoundationValues.h"
#import <UserNotifications/UserNotifications.h>
#include <utility>

namespace {

using UserInfo = quillane::NotificationClicks::UserInfo;

// Nothing for what is no text.
std::optional<std::string> bytesOf(id value) {
    return [value isKindOfClass:[NSString class]] ? quillane::FoundationValues::bytes(value) : std::nullopt;
}

// What is no text is left out: this program stores nothing else.
UserInfo textsIn(NSDictionary* stored) {
    UserInfo texts;
    for (id key in stored) {
        const auto name = bytesOf(key);
        const auto value = bytesOf([stored objectForKey:key]);
        if (name && value) {
            texts.emplace(*name, *value);
        }
    }
    return texts;
}

} // namespace

@interface QuillaneNotificationDelegate : NSObject <UNUserNotificationCenterDelegate> {
    quillane::NotificationCentre::Clicked m_clicked;
}
- (instancetype)initWithClicked:(quillane::NotificationCentre::Clicked)clicked;
@end

@implementation QuillaneNotificationDelegate

- (instancetype)initWithClicked:(quillane::NotificationCentre::Clicked)clicked {
    self = [super init];
    if (self != nil) {
        m_clicked = std::move(clicked);
    }
    return self;
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completion {
    completion(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList |
               UNNotificationPresentationOptionSound);
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completion {
    // Not that it was dismissed, nor any button of the system's.
    if ([[response actionIdentifier] isEqualToString:UNNotificationDefaultActionIdentifier]) {
        m_clicked(textsIn([[[[response notification] request] content] userInfo]));
    }
    completion();
}

@end

namespace quillane {
namespace {

// Without an application's folder the centre raises an exception.
bool hasBundle() {
    NSBundle* const bundle = [NSBundle mainBundle];
    return [bundle bundleIdentifier] != nil && [[bundle bundlePath] hasSuffix:@".app"];
}

UNNotificationContent* contentOf(const UserNotification& notification) {
    NSMutableDictionary* const userInfo = [NSMutableDictionary dictionary];
    for (const auto& [key, value] : notification.userInfo) {
        [userInfo setObject:FoundationValues::text(value) forKey:FoundationValues::text(key)];
    }
    UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
    [content setTitle:FoundationValues::text(notification.title)];
    [content setBody:FoundationValues::text(notification.body)];
    [content setSound:[UNNotificationSound defaultSound]];
    [content setUserInfo:userInfo];
    return content;
}

class UserNotificationCentre final : public NotificationCentre {
  public:
    explicit UserNotificationCentre(Clicked clicked)
        : m_centre([UNUserNotificationCenter currentNotificationCenter])
        , m_delegate([[QuillaneNotificationDelegate alloc] initWithClicked:std::move(clicked)]) {
        [m_centre setDelegate:m_delegate];
    }
    UserNotificationCentre(const UserNotificationCentre&) = delete;
    UserNotificationCentre& operator=(const UserNotificationCentre&) = delete;

    void requestAuthorization() override {
        @autoreleasepool {
            [m_centre requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                                    completionHandler:^(BOOL, NSError*){
                                        // Who has said no sees no notifications.
                                    }];
        }
    }
    void add(const UserNotification& notification) override {
        @autoreleasepool {
            // Without a trigger it is delivered at once.
            UNNotificationRequest* const request =
                [UNNotificationRequest requestWithIdentifier:FoundationValues::text(notification.identifier)
                                                     content:contentOf(notification)
                                                     trigger:nil];
            [m_centre addNotificationRequest:request withCompletionHandler:nil];
        }
    }

  private:
    UNUserNotificationCenter* m_centre;
    QuillaneNotificationDelegate* m_delegate; // which the centre does not keep
};

} // namespace

std::unique_ptr<NotificationCentre> makeNotificationCentre(NotificationCentre::Clicked clicked) {
    @autoreleasepool {
        return hasBundle() ? std::make_unique<UserNotificationCentre>(std::move(clicked)) : nullptr;
    }
}

} // namespace quillane
