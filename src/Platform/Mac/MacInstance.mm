#include "MacInstance.h"
#include "OneInstance.h"
#import <AppKit/AppKit.h>
#include <cerrno>
#include <csignal>
#include <thread>
#include <unistd.h>

namespace quillane::MacInstance {
namespace {

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

bool bringForward(NSArray<NSRunningApplication*>* instances, int process) {
    for (NSRunningApplication* instance in instances) {
        if ([instance processIdentifier] == process) {
            // The second is for macOS 13, where this start is not active and so could not hand that on.
            return [instance activateWithOptions:NSApplicationActivateAllWindows |
                                                 NSApplicationActivateIgnoringOtherApps] != NO;
        }
    }
    return false;
}

} // namespace

bool bringOtherForward(bool isRelaunched) {
    @autoreleasepool {
        NSArray<NSRunningApplication*>* const running = instances();
        return OneInstance::isSecond(
            {.others = [running] { return othersOf(running); },
             .isThere = isThere,
             .bringForward = [running](int process) { return bringForward(running, process); },
             .pause = [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); }},
            isRelaunched);
    }
}

} // namespace quillane::MacInstance
