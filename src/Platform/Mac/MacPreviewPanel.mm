#include "MacPreviewPanel.h"
#include "FoundationValues.h"
#include "PanelKey.h"
#import <AppKit/AppKit.h>
#import <QuickLookUI/QuickLookUI.h>
#include <optional>
#include <utility>

namespace {

using namespace quillane;

// Held, they make another key of each.
constexpr NSEventModifierFlags kCommands =
    NSEventModifierFlagCommand | NSEventModifierFlagOption | NSEventModifierFlagControl;

// Null before the first file is shown: asking makes it.
QLPreviewPanel* existingPanel() {
    return [QLPreviewPanel sharedPreviewPanelExists] ? [QLPreviewPanel sharedPreviewPanel] : nil;
}

} // namespace

// Stands in the chain of responders behind a window, which does not keep it.
@interface QuillanePanelController : NSResponder <QLPreviewPanelDataSource, QLPreviewPanelDelegate> {
    TaskRunner* m_tasks;
    PreviewPanel::Handlers m_handlers;
    __weak NSWindow* m_window;
    NSURL* m_item;    // nil while nothing is shown
    BOOL m_isControl; // between the system's begin and end
    BOOL m_isGivenUp; // the end of a control that we gave up is still to come
    BOOL m_hasEnded;  // which is to be told
}
- (instancetype)initWithTasks:(TaskRunner&)tasks;
- (void)setHandlers:(PreviewPanel::Handlers)handlers;
- (nullable NSURL*)item;
- (void)show:(nullable NSURL*)item in:(QLPreviewPanel*)panel behind:(nullable NSWindow*)window;
- (void)hide:(nullable QLPreviewPanel*)panel;
@end

@implementation QuillanePanelController

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

- (nullable NSURL*)item {
    return m_item;
}

- (void)show:(nullable NSURL*)item in:(QLPreviewPanel*)panel behind:(nullable NSWindow*)window {
    if (m_item == nil) {
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:@selector(panelWillClose:)
                                                     name:NSWindowWillCloseNotification
                                                   object:panel];
    }
    m_item = [item copy];
    m_hasEnded = NO;
    [self standBehind:window];
    [panel updateController]; // the chain has become another, which nobody else tells
    if (![panel isVisible]) {
        [panel makeKeyAndOrderFront:nil];
    }
    if ([panel dataSource] != self) { // nobody was asked, or the system takes us to be in control still
        [self steer:panel];
    }
    [panel reloadData];
}

- (void)hide:(nullable QLPreviewPanel*)panel {
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    m_item = nil;
    [panel orderOut:nil];
    [self letGo:panel];
    m_isGivenUp = m_isGivenUp || m_isControl;
    m_isControl = NO;
    [self stepOut];
}

- (void)steer:(QLPreviewPanel*)panel {
    [panel setDataSource:self];
    [panel setDelegate:self];
}

// It keeps neither.
- (void)letGo:(nullable QLPreviewPanel*)panel {
    if ([panel dataSource] == self) {
        [panel setDataSource:nil];
        [panel setDelegate:nil];
    }
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
    return m_item != nil;
}

- (void)beginPreviewPanelControl:(QLPreviewPanel*)panel {
    m_isControl = YES;
    m_isGivenUp = NO;
    m_hasEnded = NO;
    [self steer:panel];
}

// The panel closes, or another window has come before ours. It may ask for control anew within this turn. It may also
// come late, when the panel is open again.
- (void)endPreviewPanelControl:(QLPreviewPanel*)panel {
    if (m_isGivenUp) {
        m_isGivenUp = NO;
        return;
    }
    m_isControl = NO;
    [self letGo:panel];
    [self tellEnd];
}

// All that tells of the end of a panel that is steered though nobody was asked.
- (void)panelWillClose:(NSNotification*)notification {
    (void)notification;
    [self tellEnd];
}

- (void)tellEnd {
    m_hasEnded = YES;
    __weak QuillanePanelController* const weakly = self;
    m_tasks->post([weakly] { [weakly noticeEnd]; });
}

- (void)noticeEnd {
    const auto closed = m_handlers.closed; // it may set others
    if (m_item != nil && m_hasEnded && closed) {
        m_hasEnded = NO;
        closed();
    }
}

- (NSInteger)numberOfPreviewItemsInPreviewPanel:(QLPreviewPanel*)panel {
    (void)panel;
    return m_item == nil ? 0 : 1;
}

- (id<QLPreviewItem>)previewPanel:(QLPreviewPanel*)panel previewItemAtIndex:(NSInteger)index {
    (void)panel;
    (void)index;
    return m_item;
}

- (BOOL)previewPanel:(QLPreviewPanel*)panel handleEvent:(NSEvent*)event {
    (void)panel;
    const NSEventModifierFlags modifiers = [event modifierFlags];
    const auto key = [event type] == NSEventTypeKeyDown ? panelKeyAt([event keyCode]) : std::nullopt;
    const auto pressed = m_handlers.pressed; // it may set others
    if (!key || !pressed || (modifiers & kCommands) != 0) {
        return NO;
    }
    return pressed(*key, (modifiers & NSEventModifierFlagShift) != 0) ? YES : NO;
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
        NSView* const view = (__bridge NSView*)reinterpret_cast<void*>(window);
        [m_system->controller show:FoundationValues::location(url)
                                in:[QLPreviewPanel sharedPreviewPanel]
                            behind:[view window]];
    }
}

void MacPreviewPanel::hide() {
    @autoreleasepool {
        if ([m_system->controller item] != nil) {
            [m_system->controller hide:existingPanel()];
        }
    }
}

bool MacPreviewPanel::isShown() const {
    return [m_system->controller item] != nil && [existingPanel() isVisible];
}

} // namespace quillane
