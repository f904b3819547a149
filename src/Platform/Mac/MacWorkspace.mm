#include "MacWorkspace.h"
#include "DrawnImage.h"
#include "FoundationValues.h"
#include "Relaunch.h"
#include "ThumbnailSize.h"
#import <AppKit/AppKit.h>
#include <utility>

namespace quillane {
namespace {

// Without waiting for Launch Services; failures are silent.
void openLater(NSURL* location) {
    if (location != nil) {
        [[NSWorkspace sharedWorkspace] openURL:location
                                 configuration:[NSWorkspaceOpenConfiguration configuration]
                             completionHandler:nil];
    }
}

std::optional<IconImage> iconOf(const FileURL& url, PixelSize size) {
    // A copy: the system may lend the same one to others, and its size is about to change. What it draws is lent by it.
    __attribute__((objc_precise_lifetime)) NSImage* const icon =
        [[[NSWorkspace sharedWorkspace] iconForFile:FoundationValues::text(url.path())] copy];
    CGRect place = {{0, 0}, {static_cast<CGFloat>(size.width), static_cast<CGFloat>(size.height)}};
    [icon setSize:place.size];
    return DrawnImage::of([icon CGImageForProposedRect:&place context:nil hints:nil], size);
}

IconImage transparent(PixelSize size) {
    constexpr std::size_t kPixel = 4;
    const auto pixels = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
    return {size.width, size.height, std::vector<std::uint8_t>(pixels * kPixel)};
}

} // namespace

MacWorkspace::MacWorkspace(TaskRunner& tasks, CommandRunner& commands)
    : m_tasks(tasks)
    , m_commands(commands) {}

std::shared_ptr<const IconImage> MacWorkspace::icon(const FileURL& url, int side) {
    @autoreleasepool {
        const auto size = ThumbnailSize::sensible({side, side});
        auto drawn = iconOf(url, size);
        return std::make_shared<IconImage>(drawn ? std::move(*drawn) : transparent(size));
    }
}

void MacWorkspace::open(const FileURL& url) {
    @autoreleasepool {
        openLater(FoundationValues::location(url));
    }
}

void MacWorkspace::reveal(const std::vector<FileURL>& urls) {
    m_tasks.run(Priority::userInitiated, [urls] {
        @autoreleasepool {
            NSMutableArray<NSURL*>* const locations = [NSMutableArray arrayWithCapacity:urls.size()];
            for (const auto& url : urls) {
                if (NSURL* const location = FoundationValues::location(url)) {
                    [locations addObject:location];
                }
            }
            if ([locations count] > 0) {
                [[NSWorkspace sharedWorkspace] activateFileViewerSelectingURLs:locations];
            }
        }
    });
}

void MacWorkspace::openFullDiskAccessSettings() {
    @autoreleasepool {
        openLater([NSURL
            URLWithString:@"x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles"]);
    }
}

void MacWorkspace::relaunch() {
    @autoreleasepool {
        Relaunch::begin(m_tasks, m_commands, FoundationValues::string([[NSBundle mainBundle] bundlePath]),
                        [] { [[NSApplication sharedApplication] terminate:nil]; });
    }
}

} // namespace quillane
