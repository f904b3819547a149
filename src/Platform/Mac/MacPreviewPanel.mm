#include "MacPreviewPanel.h"
#include "FoundationValues.h"
#include "PanelKey.h"
#import <AppKit/AppKit.h>
#import <QuickLookUI/QuickLookUI.h>
#include <optional>
#include <utility>

namespace {

using namespace quillane;

// Null before the first file is shown: asking makes it.
QLPreviewPanel* existingPanel() {
    return [QLPreviewPanel sharedPreviewPanelExists] ? [QLPreviewPanel sharedPreviewPanel] : nil;
}

} // namespace

// Stands in the chain of responders behind a window, which does not keep it.
@interface QuillanePanelController : NSResponder <QLPreviewPanelDataSource, QLPreviewPanelDelegate>
@property(nullable, nonatomic, strong) NSURL* item;
@property(nonatomic, readonly) BOOL isInControl;
- (instancetype)initWithTasks:(TaskRunner&)tasks;
- (void)setHandlers:(PreviewPanel::Handlers)handlers;
- (void)standBehind:(NSWindow*)window;
- (void)stepOut;
@end

@implementation QuillanePanelController {
    TaskRunner* m_tasks;
    PreviewPanel::Handlers m_handlers;
    __weak NSWindow* m_window;
}

- (instancetype)initWithTasks:(TaskRunner&)tasks {
    self = [super init];
    if (self != nil) {
        m_tasks = &tasks;
    }
    return self;
}

- (void)setHandlers:(PreviewPanel::Handlers)handlers {
    m_handlers = std::move(handlers);
}

- (void)standBehind:(NSWindow*)window {
    if (window == m_window) {
        return;
    }
    [self stepOut];
    m_window = window;
    [self setNextResponder:[window nextResponder]];
    [window setNextResponder:self];
}

// Others may have stepped in meanwhile, before this.
- (void)stepOut {
    NSResponder* before = m_window;
    while (before != nil && [before nextResponder] != self) {
        before = [before nextResponder];
    }
    [before setNextResponder:[self nextResponder]];
    [self setNextResponder:nil];
    m_window = nil;
}

- (BOOL)acceptsPreviewPanelControl:(QLPreviewPanel*)panel {
    (void)panel;
    return [self item] != nil;
}

- (void)beginPreviewPanelControl:(QLPreviewPanel*)panel {
    _isInControl = YES;
    [panel setDataSource:self];
    [panel setDelegate:self];
}

// The panel closes, or another window has come before ours. It may ask for control anew within this turn.
- (void)endPreviewPanelControl:(QLPreviewPanel*)panel {
    _isInControl = NO;
    [panel setDataSource:nil];
    [panel setDelegate:nil];
    __weak QuillanePanelController* const weakly = self;
    m_tasks->post([weakly] { [weakly noticeEnd]; });
}

- (void)noticeEnd {
    if ([self item] != nil && ![self isInControl] && m_handlers.closed) {
        const auto closed = m_handlers.closed; // it may set others
        closed();
    }
}

- (NSInteger)numberOfPreviewItemsInPreviewPanel:(QLPreviewPanel*)panel {
    (void)panel;
    return [self item] == nil ? 0 : 1;
}

- (id<QLPreviewItem>)previewPanel:(QLPreviewPanel*)panel previewItemAtIndex:(NSInteger)index {
    (void)panel;
    (void)index;
    return [self item];
}

- (BOOL)previewPanel:(QLPreviewPanel*)panel handleEvent:(NSEvent*)event {
    (void)panel;
    const auto key = [event type] == NSEventTypeKeyDown ? panelKeyAt([event keyCode]) : std::nullopt;
    if (!key || !m_handlers.pressed) {
        return NO;
    }
    m_handlers.pressed(*key, ([event modifierFlags] & NSEventModifierFlagShift) != 0);
    return YES;
}

@end

namespace quillane {

struct MacPreviewPanel::System {
    QuillanePanelController* controller;
};

MacPreviewPanel::MacPreviewPanel(TaskRunner& tasks)
    : m_system(std::make_unique<System>()) {
    m_system->controller = [[QuillanePanelController alloc] initWithTasks:tasks];
}

MacPreviewPanel::~MacPreviewPanel() {
    setHandlers({});
    hide();
}

void MacPreviewPanel::setHandlers(Handlers handlers) {
    [m_system->controller setHandlers:std::move(handlers)];
}

void MacPreviewPanel::show(const FileURL& url, std::uintptr_t window) {
    @autoreleasepool {
        QuillanePanelController* const controller = m_system->controller;
        [controller setItem:FoundationValues::location(url)];
        NSView* const view = (__bridge NSView*)reinterpret_cast<void*>(window);
        [controller standBehind:[view window]];
        QLPreviewPanel* const panel = [QLPreviewPanel sharedPreviewPanel];
        [panel updateController]; // the chain has become another, which nobody else tells
        if (![panel isVisible]) {
            [panel makeKeyAndOrderFront:nil];
        }
        if (![controller isInControl]) {
            [panel setDataSource:controller];
            [panel setDelegate:controller];
        }
        [panel reloadData];
    }
}

void MacPreviewPanel::hide() {
    @autoreleasepool {
        QuillanePanelController* const controller = m_system->controller;
        if ([controller item] == nil) {
            return;
        }
        [controller setItem:nil];
        QLPreviewPanel* const panel = existingPanel();
        [panel orderOut:nil];
        if ([panel dataSource] == controller) { // it keeps neither
            [panel setDataSource:nil];
            [panel setDelegate:nil];
        }
        [controller stepOut];
    }
}

bool MacPreviewPanel::isShown() const {
    return [m_system->controller item] != nil && [existingPanel() isVisible];
}

} // namespace quillane
