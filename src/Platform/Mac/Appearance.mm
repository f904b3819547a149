#include "Appearance.h"
#include "KeyObservation.h"
#import <AppKit/AppKit.h>
#include <utility>

namespace quillane {
namespace {

bool isDark(NSAppearance* appearance) {
    NSMutableArray<NSAppearanceName>* const names = [NSMutableArray arrayWithCapacity:2];
    [names addObject:NSAppearanceNameAqua];
    [names addObject:NSAppearanceNameDarkAqua];
    // Those of high contrast have names of their own, and are like one of the two.
    return
        [[appearance bestMatchFromAppearancesWithNames:names] isEqualToString:NSAppearanceNameDarkAqua] != NO;
}

} // namespace

struct Appearance::System {
    explicit System(std::function<void()> changed) // by value: a block would keep no more than a reference
        : theme([NSApplication sharedApplication], @"effectiveAppearance", changed)
        , centre([[NSWorkspace sharedWorkspace] notificationCenter])
        , token([centre addObserverForName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                                    object:nil
                                     queue:[NSOperationQueue mainQueue]
                                usingBlock:^(NSNotification*) {
                                  changed();
                                }]) {}
    ~System() { [centre removeObserver:token]; }
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    KeyObservation theme;
    NSNotificationCenter* centre; // not the default one
    id<NSObject> token;
};

Appearance::Appearance(std::function<void(Values)> changed)
    : m_changed(std::move(changed))
    , m_last(values()) {
    @autoreleasepool {
        m_system = std::make_unique<System>([this] { look(); });
    }
}

Appearance::~Appearance() = default;

Appearance::Values Appearance::values() const {
    @autoreleasepool {
        NSWorkspace* const workspace = [NSWorkspace sharedWorkspace];
        return {.isDark = isDark([[NSApplication sharedApplication] effectiveAppearance]),
                .isHighContrast = [workspace accessibilityDisplayShouldIncreaseContrast] != NO,
                .isMotionReduced = [workspace accessibilityDisplayShouldReduceMotion] != NO};
    }
}

void Appearance::look() {
    const auto now = values();
    if (std::exchange(m_last, now) != now) {
        m_changed(now);
    }
}

} // namespace quillane
