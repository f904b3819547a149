#include "MacNotifications.h"
#include "FoundationValues.h"
#include "NotificationWords.h"
#import <UserNotifications/UserNotifications.h>
#include <utility>

namespace {

using UserInfo = quillane::NotificationClicks::UserInfo;

// What is no text is left out: this program stores nothing else.
UserInfo textsIn(NSDictionary* stored) {
    UserInfo texts;
    for (id key in stored) {
        const id value = [stored objectForKey:key];
        if ([key isKindOfClass:[NSString class]] && [value isKindOfClass:[NSString class]]) {
            texts.emplace(quillane::FoundationValues::string(key), quillane::FoundationValues::string(value));
        }
    }
    return texts;
}

} // namespace

@interface QuillaneNotificationDelegate : NSObject <UNUserNotificationCenterDelegate>
- (instancetype)initWithClicked:(std::function<void(UserInfo)>)clicked;
@end

@implementation QuillaneNotificationDelegate {
    std::function<void(UserInfo)> m_clicked;
}

- (instancetype)initWithClicked:(std::function<void(UserInfo)>)clicked {
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
    [content setTitle:FoundationValues::text(NotificationWords::shown(notification.title))];
    [content setBody:FoundationValues::text(NotificationWords::shown(notification.body))];
    [content setSound:[UNNotificationSound defaultSound]];
    [content setUserInfo:userInfo];
    return content;
}

} // namespace

struct MacNotifications::System {
    explicit System(std::function<void(UserInfo)> clicked)
        : centre([UNUserNotificationCenter currentNotificationCenter])
        , delegate([[QuillaneNotificationDelegate alloc] initWithClicked:std::move(clicked)]) {
        [centre setDelegate:delegate];
    }

    UNUserNotificationCenter* centre;
    QuillaneNotificationDelegate* delegate; // the centre does not keep it
};

MacNotifications::MacNotifications(TaskRunner& tasks)
    : m_clicks(tasks) {
    @autoreleasepool {
        if (hasBundle()) {
            m_system = std::make_unique<System>(m_clicks.entrance());
        }
    }
}

MacNotifications::~MacNotifications() = default;

void MacNotifications::requestAuthorization() {
    if (!m_system) {
        return;
    }
    @autoreleasepool {
        [m_system->centre
            requestAuthorizationWithOptions:UNAuthorizationOptionAlert | UNAuthorizationOptionSound
                          completionHandler:^(BOOL, NSError*){
                              // Who has said no sees no notifications.
                          }];
    }
}

void MacNotifications::add(const UserNotification& notification) {
    if (!m_system) {
        return;
    }
    @autoreleasepool {
        // Without a trigger it is delivered at once.
        [m_system->centre
            addNotificationRequest:[UNNotificationRequest
                                       requestWithIdentifier:FoundationValues::text(notification.identifier)
                                                     content:contentOf(notification)
                                                     trigger:nil]
             withCompletionHandler:nil];
    }
}

void MacNotifications::setClickHandler(std::function<void(const Click&)> handler) {
    m_clicks.setHandler(std::move(handler));
}

} // namespace quillane
