#include "MacInstance.h"
#include "OneInstance.h"
#import <AppKit/AppKit.h>
#include <cerrno>
#include <csignal>
#include <future>
#include <memory>
#include <thread>
#include <unistd.h>

namespace quillane::MacInstance {
namespace {

// How long a start waits for the system to have opened the other one.
constexpr std::chrono::seconds kOpening{5};

NSArray<NSRunningApplication*>* instances() {
    NSString* const own = [[NSBundle mainBundle] bundleIdentifier];
    NSString* const identifier = own != nil ? own : @"org.quillane.Quillane"; // a bare executable has none
    return [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier];
}

std::vector<int> othersOf(NSArray<NSRunningApplication*>* instances) {
    std::vector<int> others;
    for (NSRunningApplication* instance in instances) {
        const int process = [instance processIdentifier];
        if (process > 0 && process != ::getpid()) {
            others.push_back(process);
        }
    }
    return others;
}

// What the platform says of an application is true only while the main run loop turns, which it does not yet.
bool isThere(int process) {
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

NSRunningApplication* _Nullable instanceOf(NSArray<NSRunningApplication*>* instances, int process) {
    for (NSRunningApplication* instance in instances) {
        if ([instance processIdentifier] == process) {
            return instance;
        }
    }
    return nil;
}

std::optional<Date> launchOf(NSRunningApplication* _Nullable instance) {
    NSDate* const date = [instance launchDate];
    return date == nil ? std::nullopt : std::optional(Date{[date timeIntervalSinceReferenceDate]});
}

// As the Finder opens it, which brings forward the one that runs. Waits until the system has done so.
bool openAgain(NSURL* _Nullable bundle) {
    if (bundle == nil) {
        return false; // a bare executable
    }
    const auto told = std::make_shared<std::promise<bool>>(); // also when nobody waits any more
    auto isDone = told->get_future();
    [[NSWorkspace sharedWorkspace] openApplicationAtURL:bundle
                                          configuration:[NSWorkspaceOpenConfiguration configuration]
                                      completionHandler:^(NSRunningApplication*, NSError* error) {
                                        told->set_value(error == nil);
                                      }];
    return isDone.wait_for(kOpening) == std::future_status::ready && isDone.get();
}

// From macOS 14 the first is a wish, which the system may refuse to a start that is not active. The second of its
// options is for macOS 13, where such a start could not hand on being active.
bool bringForward(NSRunningApplication* _Nullable instance) {
    const bool isActivated = [instance activateWithOptions:NSApplicationActivateAllWindows |
                                                           NSApplicationActivateIgnoringOtherApps] != NO;
    return openAgain([instance bundleURL]) || isActivated;
}

} // namespace

bool bringOtherForward(bool isRelaunched) {
    @autoreleasepool {
        NSArray<NSRunningApplication*>* const running = instances();
        return OneInstance::isSecond(
            {.others = [running] { return othersOf(running); },
             .isThere = isThere,
             .bringForward = [running](int process) { return bringForward(instanceOf(running, process)); },
             .pause = [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); },
             .launched = [running](int process) { return launchOf(instanceOf(running, process)); },
             .now = [] { return Date{[[NSDate date] timeIntervalSinceReferenceDate]}; },
             .own = ::getpid()},
            isRelaunched);
    }
}

} // namespace quillane::MacInstance
