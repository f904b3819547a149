#include "PanelStandIns.h"
#include "FoundationValues.h"
#include "Held.h"
#import <AppKit/AppKit.h>
#import <QuickLookUI/QuickLookUI.h>
#include <utility>

const NSNotificationName NSWindowWillCloseNotification = @"a window will close";

namespace {

using namespace quillane;
using StandIn::held;
using StandIn::hold;

struct State {
    StandIn::Asking asking{};
    StandIn::Ending ending{};
    StandIn::Panel panel;
    QLPreviewPanel* made = nil;
    NSWindow* window = nil;
    NSView* content = nil;
    bool isInFront = true;
    id controller = nil;
    id ended = nil; // whose end is still to be told
    id dataSource = nil;
    id delegate = nil;
    NSUInteger eventType = 0;
    NSUInteger modifiers = 0;
    std::uint16_t keyCode = 0;
};
State g;

id whoAccepts() {
    if (g.asking == StandIn::Asking::nobody || !g.isInFront) {
        return nil;
    }
    for (NSResponder* responder = g.window; responder != nil; responder = [responder nextResponder]) {
        if ([responder respondsToSelector:@selector(acceptsPreviewPanelControl:)] &&
            [responder acceptsPreviewPanelControl:g.made]) {
            return responder;
        }
    }
    return nil;
}

void endControl() {
    if (const id before = std::exchange(g.controller, nil)) {
        [before endPreviewPanelControl:g.made];
    }
}

void vanish() {
    g.panel.isVisible = false;
    if (g.ending == StandIn::Ending::atOnce) {
        endControl();
    } else {
        g.ended = g.controller;
    }
}

} // namespace

@implementation NSResponder (StandIn)
- (NSResponder*)nextResponder {
    return held(self, "next");
}
- (void)setNextResponder:(NSResponder*)responder {
    held(self, "next") = responder;
}
@end
@interface StandInContent : NSView
@end
@implementation StandInContent
- (NSWindow*)window {
    return g.window;
}
@end
@interface StandInKey : NSEvent
@end
@implementation StandInKey
- (NSUInteger)type {
    return g.eventType;
}
- (NSUInteger)modifierFlags {
    return g.modifiers;
}
- (unsigned short)keyCode {
    return g.keyCode;
}
@end
@implementation NSPanel
@end
@implementation QLPreviewPanel
+ (QLPreviewPanel*)sharedPreviewPanel {
    if (g.made == nil) {
        g.made = [[QLPreviewPanel alloc] init];
        g.panel.isMade = true;
    }
    return g.made;
}
+ (BOOL)sharedPreviewPanelExists {
    return g.made != nil;
}
- (BOOL)isVisible {
    return g.panel.isVisible;
}
- (id)dataSource {
    return g.dataSource;
}
- (void)setDataSource:(id)dataSource {
    g.dataSource = dataSource;
}
- (id)delegate {
    return g.delegate;
}
- (void)setDelegate:(id)delegate {
    g.delegate = delegate;
}
// One who is asked again and says yes is told nothing. While it is closed nobody is asked.
- (void)updateController {
    if (!g.panel.isVisible) {
        return;
    }
    const id accepts = whoAccepts();
    if (accepts != g.controller) {
        endControl();
        g.controller = accepts;
        [accepts beginPreviewPanelControl:self];
    }
}
- (void)makeKeyAndOrderFront:(id)sender {
    g.panel.isVisible = true;
    ++g.panel.openings;
    [self updateController];
}
- (void)orderOut:(id)sender {
    vanish();
}
- (void)reloadData {
    ++g.panel.loadings;
}
@end

namespace quillane::StandIn {

void beginPanel(Asking asking, Ending ending) {
    g = State();
    g.asking = asking;
    g.ending = ending;
    g.window = [[NSWindow alloc] init];
    [g.window setNextResponder:[[NSResponder alloc] init]]; // the application
    g.content = [[StandInContent alloc] init];
}

std::uintptr_t content() {
    return reinterpret_cast<std::uintptr_t>(g.content);
}

void closePanel() {
    [[NSNotificationCenter defaultCenter] postNotificationName:NSWindowWillCloseNotification object:g.window];
    [[NSNotificationCenter defaultCenter] postNotificationName:NSWindowWillCloseNotification object:g.made];
    vanish();
}

void endLate() {
    const id before = std::exchange(g.ended, nil);
    if (g.controller == before) {
        g.controller = nil;
    }
    [before endPreviewPanelControl:g.made];
}

void bringOtherForward() {
    g.isInFront = false;
    [[NSNotificationCenter defaultCenter] postNotificationName:NSWindowWillCloseNotification object:g.window];
    [g.made updateController];
}

void bringBack() {
    g.isInFront = true;
    [g.made updateController];
}

void stepInBetween() {
    NSResponder* const other = [[NSResponder alloc] init];
    [other setNextResponder:[g.window nextResponder]];
    [g.window setNextResponder:other];
}

Panel panel() {
    Panel told = g.panel;
    told.hasDelegate = g.delegate != nil;
    if ([g.dataSource numberOfPreviewItemsInPreviewPanel:g.made] == 1) {
        NSURL* const url = (NSURL*)[g.dataSource previewPanel:g.made previewItemAtIndex:0];
        told.location = FoundationValues::string([url absoluteString]);
    }
    return told;
}

int responders() {
    int count = 0;
    for (NSResponder* next = [g.window nextResponder]; next != nil; next = [next nextResponder]) {
        ++count;
    }
    return count;
}

bool passKey(std::uint16_t code, unsigned long modifiers, Event event) {
    g.eventType = event == Event::keyDown ? NSEventTypeKeyDown : NSEventTypeKeyDown + 1;
    g.modifiers = modifiers;
    g.keyCode = code;
    return [g.delegate previewPanel:g.made handleEvent:[[StandInKey alloc] init]] != NO;
}

} // namespace quillane::StandIn
