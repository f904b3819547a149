#include "WorkspaceApplications.h"
#include "FoundationValues.h"
#import <AppKit/AppKit.h>
#include <unistd.h>

namespace quillane {
namespace {

NSArray<NSRunningApplication*>* known(const std::string& bundleIdentifier) {
    return [NSRunningApplication
        runningApplicationsWithBundleIdentifier:FoundationValues::text(bundleIdentifier)];
}

} // namespace

// The list may still hold what has ended since the run loop turned last.
bool WorkspaceApplications::isRunning(const std::string& bundleIdentifier) const {
    @autoreleasepool {
        for (NSRunningApplication* application in known(bundleIdentifier)) {
            if (![application isTerminated]) {
                return true;
            }
        }
        return false;
    }
}

void WorkspaceApplications::terminate(const std::string& bundleIdentifier) {
    @autoreleasepool {
        for (NSRunningApplication* application in known(bundleIdentifier)) {
            if ([application processIdentifier] != ::getpid()) {
                [application terminate]; // what it answers says nothing about when it ends
            }
        }
    }
}

} // namespace quillane
