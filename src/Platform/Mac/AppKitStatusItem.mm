#include "AppKitStatusItem.h"
#include "FoundationValues.h"
#include "KeyObservation.h"
#include "MenuBarClick.h"
#include "ScreenPlace.h"
#import <AppKit/AppKit.h>
#include <utility>

namespace {

using namespace quillane;

NSImage* icon() {
    NSImage* const drawing = [NSImage imageNamed:@"MenuBarIconTemplate"];
    NSImage* const image = drawing != nil
                               ? drawing
                               : [NSImage imageWithSystemSymbolName:@"sparkles" accessibilityDescription:nil];
    [image setTemplate:YES]; // the bar gives it its colour
    return image;
}

NSMenuItem* lineOf(const MenuBarExtra::Entry& entry, id target, SEL action) {
    if (entry.words.empty()) {
        return [NSMenuItem separatorItem];
    }
    NSMenuItem* const line = [[NSMenuItem alloc] initWithTitle:FoundationValues::text(entry.words)
                                                        action:action
                                                 keyEquivalent:@""];
    [line setTarget:target];
    [line setTag:entry.id];
    [line setEnabled:entry.isEnabled ? YES : NO];
    return line;
}

MenuBarClick::Button buttonOf(NSEvent* event) {
    switch ([event type]) {
    case NSEventTypeLeftMouseUp:
        return MenuBarClick::Button::left;
    case NSEventTypeRightMouseUp:
        return MenuBarClick::Button::right;
    default:
        return MenuBarClick::Button::none;
    }
}

ScreenPlace::Rect rectOf(NSView* view) {
    NSWindow* const window = [view window];
    if (window == nil) {
        return {};
    }
    const CGRect place = [window convertRectToScreen:[view convertRect:[view bounds] toView:nil]];
    return {place.origin.x, place.origin.y, place.size.width, place.size.height};
}

std::optional<MenuBarExtra::Place> placeOf(NSView* view, MenuBarClick::Button button) {
    NSScreen* const first = [[NSScreen screens] firstObject];
    if (first == nil) {
        return std::nullopt;
    }
    std::optional<ScreenPlace::Point> pointer;
    if (button != MenuBarClick::Button::none) {
        const CGPoint place = [NSEvent mouseLocation];
        pointer = {place.x, place.y};
    }
    return ScreenPlace::pressOn(rectOf(view), pointer, [first frame].size.height);
}

} // namespace

// What the system's item calls. It outlives the item where that ends while its menu is open.
@interface QuillaneStatusItem : NSObject {
    NSStatusItem* m_item; // nil after the end
    NSMenu* m_menu;       // nil for none
    StatusItem::Handlers m_handlers;
    std::unique_ptr<KeyObservation> m_visible;
}
- (instancetype)initWithHandlers:(StatusItem::Handlers)handlers;
- (void)end;
- (BOOL)isShown;
- (void)setFigure:(const std::string&)figure;
- (void)setEntries:(const std::vector<MenuBarExtra::Entry>&)entries;
@end

@implementation QuillaneStatusItem

- (instancetype)initWithHandlers:(StatusItem::Handlers)handlers {
    self = [super init];
    if (self != nil) {
        m_handlers = std::move(handlers);
        m_item = [[NSStatusBar systemStatusBar] statusItemWithLength:NSVariableStatusItemLength];
        m_visible = std::make_unique<KeyObservation>(m_item, @"visible", m_handlers.shownChanged);
        NSStatusBarButton* const button = [m_item button];
        [button setImage:icon()];
        [button setTarget:self];
        [button setAction:@selector(click:)];
        [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
        [self setFigure:std::string()];
    }
    return self;
}

- (void)end {
    m_visible.reset();
    m_handlers = {};
    [[NSStatusBar systemStatusBar] removeStatusItem:m_item];
    m_item = nil;
}

- (BOOL)isShown {
    return [m_item isVisible];
}

- (void)setFigure:(const std::string&)figure {
    NSStatusBarButton* const button = [m_item button];
    [button setTitle:FoundationValues::text(figure)];
    [button setImagePosition:figure.empty() ? NSImageOnly : NSImageLeading];
    [button setAccessibilityLabel:FoundationValues::text(StatusItem::titleWith(figure))];
}

// An open menu keeps its lines; what is chosen in it is told all the same.
- (void)setEntries:(const std::vector<MenuBarExtra::Entry>&)entries {
    m_menu = entries.empty() ? nil : [[NSMenu alloc] initWithTitle:@""];
    [m_menu setAutoenablesItems:NO];
    for (const auto& entry : entries) {
        [m_menu addItem:lineOf(entry, self, @selector(choose:))];
    }
}

- (void)click:(id)sender {
    NSEvent* const event = [[NSApplication sharedApplication] currentEvent];
    const bool isControlHeld = ([event modifierFlags] & NSEventModifierFlagControl) != 0;
    const auto mouseButton = buttonOf(event);
    if (MenuBarClick::opensMenu(mouseButton, isControlHeld, m_menu != nil)) {
        [self openMenu];
    } else if (m_handlers.pressed) {
        m_handlers.pressed(placeOf([m_item button], mouseButton));
    }
}

// An item that has a menu opens it at a click, and tells of none. Returns when the menu has closed.
- (void)openMenu {
    __attribute__((objc_precise_lifetime)) QuillaneStatusItem* const kept = self; // it may end meanwhile
    NSStatusItem* const item = kept->m_item;
    [item setMenu:kept->m_menu];
    [[item button] performClick:nil];
    [item setMenu:nil];
}

- (void)choose:(id)sender {
    if (m_handlers.chosen) {
        m_handlers.chosen(static_cast<int>([static_cast<NSMenuItem*>(sender) tag]));
    }
}

@end

namespace quillane {
namespace {

class AppKitStatusItem final : public StatusItem {
  public:
    explicit AppKitStatusItem(Handlers handlers)
        : m_item([[QuillaneStatusItem alloc] initWithHandlers:std::move(handlers)]) {}
    ~AppKitStatusItem() override {
        @autoreleasepool {
            [m_item end];
        }
    }
    AppKitStatusItem(const AppKitStatusItem&) = delete;
    AppKitStatusItem& operator=(const AppKitStatusItem&) = delete;

    bool isShown() const override { return [m_item isShown] != NO; }
    void setFigure(const std::string& figure) override {
        @autoreleasepool {
            [m_item setFigure:figure];
        }
    }
    void setMenu(const std::vector<MenuBarExtra::Entry>& menu) override {
        @autoreleasepool {
            [m_item setEntries:menu];
        }
    }

  private:
    QuillaneStatusItem* m_item;
};

} // namespace

std::unique_ptr<StatusItem> makeStatusItem(StatusItem::Handlers handlers) {
    @autoreleasepool {
        return std::make_unique<AppKitStatusItem>(std::move(handlers));
    }
}

} // namespace quillane
