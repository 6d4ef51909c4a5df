// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#include "desktop/desktopnotifications.h"

#import <UserNotifications/UserNotifications.h>

namespace quillfen {

namespace {

NSString *const category = @"outcome";

} // namespace

} // namespace quillfen

/// Hears on a thread of the system's what becomes of notifications, and says so on the main one.
@interface QuillfenNotificationListener : NSObject <UNUserNotificationCenterDelegate>
/// Null once it is gone. Main thread only.
@property(nonatomic, assign) quillfen::DesktopNotifications *owner;
@end

@implementation QuillfenNotificationListener

- (void)userNotificationCenter:(UNUserNotificationCenter *)centre
       willPresentNotification:(UNNotification *)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completionHandler
{
    // A program in front whose window is closed has to ask for it.
    completionHandler(UNNotificationPresentationOptionBanner | UNNotificationPresentationOptionList);
}

- (void)userNotificationCenter:(UNUserNotificationCenter *)centre
    didReceiveNotificationResponse:(UNNotificationResponse *)response
             withCompletionHandler:(void (^)(void))completionHandler
{
    const int number = response.notification.request.identifier.intValue;
    const bool clicked = [response.actionIdentifier isEqualToString:UNNotificationDefaultActionIdentifier];
    dispatch_async(dispatch_get_main_queue(), ^{
      if (self.owner == nullptr) {
          return;
      }
      if (clicked) {
          Q_EMIT self.owner->clicked({});
      }
      // The system takes away what has been clicked or dismissed.
      Q_EMIT self.owner->gone(number);
    });
    completionHandler();
}

@end

namespace quillfen {

namespace {

/// Notifications of the system's centre, which asks the user before the first whether the program may.
class CentreNotifications final : public DesktopNotifications {
public:
    CentreNotifications() : m_centre([UNUserNotificationCenter currentNotificationCenter])
    {
        m_listener = [[QuillfenNotificationListener alloc] init];
        m_listener.owner = this;
        m_centre.delegate = m_listener;
        // Without this option nobody is told that one was dismissed.
        UNNotificationCategory *const outcome =
            [UNNotificationCategory categoryWithIdentifier:category
                                                   actions:@[]
                                         intentIdentifiers:@[]
                                                   options:UNNotificationCategoryOptionCustomDismissAction];
        [m_centre setNotificationCategories:[NSSet setWithObject:outcome]];
    }

    ~CentreNotifications() override
    {
        m_listener.owner = nullptr;
        m_centre.delegate = nil;
    }

    void show(int number, const NotificationText &text) override
    {
        UNMutableNotificationContent *const content = [[UNMutableNotificationContent alloc] init];
        content.title = text.summary.toNSString();
        content.body = text.body.toNSString();
        content.categoryIdentifier = category;
        UNNotificationRequest *const request =
            [UNNotificationRequest requestWithIdentifier:[NSString stringWithFormat:@"%d", number]
                                                 content:content
                                                 trigger:nil];
        UNUserNotificationCenter *const centre = m_centre;
        QuillfenNotificationListener *const listener = m_listener;
        [centre requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                              completionHandler:^(BOOL granted, NSError *) {
                                if (granted) {
                                    [centre addNotificationRequest:request withCompletionHandler:nil];
                                    return;
                                }
                                dispatch_async(dispatch_get_main_queue(), ^{
                                  if (listener.owner != nullptr) {
                                      Q_EMIT listener.owner->gone(number);
                                  }
                                });
                              }];
    }

    void closeAll() override
    {
        [m_centre removeAllPendingNotificationRequests];
        [m_centre removeAllDeliveredNotifications];
    }

private:
    UNUserNotificationCenter *m_centre;
    QuillfenNotificationListener *m_listener;
};

} // namespace

std::unique_ptr<DesktopNotifications> makeDesktopNotifications()
{
    // The centre knows programs by their bundles.
    if ([[NSBundle mainBundle] bundleIdentifier] == nil) {
        return nullptr;
    }
    return std::make_unique<CentreNotifications>();
}

} // namespace quillfen
