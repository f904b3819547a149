#include "StandIns.h"
#include "FoundationValues.h"
#include "Held.h"
#import <AppKit/AppKit.h>
#include <Block.h>
#import <UserNotifications/UserNotifications.h>
#include <atomic>
#include <thread>

namespace {

using namespace quillane;
using StandIn::held;
using StandIn::hold;

struct State {
    StandIn::Bundle bundle;
    UNUserNotificationCenter* centre = nil;
    id delegate = nil;
    NSMutableArray* requests = nil;
    unsigned long permissions = 0;
    void (^permissionAnswer)(BOOL, NSError*) = nullptr;
    int items = 0;
    NSStatusItem* item = nil;
    NSMenu* opened = nil;
    int menusOpened = 0;
    std::function<void()> whileOpen;
    NSUInteger eventType = 0;
    NSUInteger modifiers = 0;
    CGPoint pointer{};
    std::string drawing;
    std::string look = "NSAppearanceNameAqua";
    bool isContrastHigh = false;
    bool isMotionReduced = false;
    StandIn::Sparkle sparkle;
    bool carriesSparkle = false;
    id updater = nil;
    int observers = 0;
    int mainQueues = 0;
    std::map<std::string, std::vector<int>> running;
    std::vector<StandIn::Activation> activations;
    std::map<int, double> launches;
    std::string runningBundle = "/Applications/Other é.app";
    std::vector<std::string> openedBundles;
};
State g;
std::vector<std::thread> g_tellers;
std::atomic<int> g_toldOpenings = 0;

} // namespace

// The program's folder.

@implementation NSBundle (StandIn)
- (NSString*)bundleIdentifier {
    return g.bundle.identifier.empty() ? nil : FoundationValues::text(g.bundle.identifier);
}
- (NSString*)bundlePath {
    return FoundationValues::text(g.bundle.path);
}
- (id)objectForInfoDictionaryKey:(NSString*)key {
    const auto found = g.bundle.information.find(FoundationValues::string(key));
    return found == g.bundle.information.end() ? nil : FoundationValues::text(found->second);
}
- (NSURL*)privateFrameworksURL {
    return g.bundle.frameworks.empty() ? nil
                                       : [NSURL fileURLWithPath:FoundationValues::text(g.bundle.frameworks)];
}
+ (NSBundle*)bundleWithURL:(NSURL*)url {
    return g.carriesSparkle && [[url lastPathComponent] isEqualToString:@"Sparkle.framework"]
               ? [NSBundle mainBundle]
               : nil;
}
- (BOOL)loadAndReturnError:(NSError**)error {
    return YES;
}
@end

// Observation.

@implementation NSOperationQueue (StandIn)
// GNUstep's has a thread of its own. Without a queue an observer is told within the call, here on the main thread.
+ (id)mainQueue {
    ++g.mainQueues;
    return nil;
}
@end

@implementation NSObject (StandIn)
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)path context:(void*)context {
    --g.observers;
    [self removeObserver:observer forKeyPath:path];
}
@end

// Notifications.

NSString* const UNNotificationDefaultActionIdentifier = @"the default action";

@implementation UNNotificationSound
+ (UNNotificationSound*)defaultSound {
    static UNNotificationSound* const sound = [[UNNotificationSound alloc] init];
    return sound;
}
@end
@implementation UNNotificationContent
- (NSDictionary*)userInfo {
    return held(self, "userInfo");
}
@end
@implementation UNMutableNotificationContent
- (NSString*)title {
    return held(self, "title");
}
- (void)setTitle:(NSString*)title {
    hold(self, "title", title);
}
- (NSString*)body {
    return held(self, "body");
}
- (void)setBody:(NSString*)body {
    hold(self, "body", body);
}
- (UNNotificationSound*)sound {
    return held(self, "sound");
}
- (void)setSound:(UNNotificationSound*)sound {
    hold(self, "sound", sound);
}
- (void)setUserInfo:(NSDictionary*)userInfo {
    hold(self, "userInfo", userInfo);
}
@end
@implementation UNNotificationRequest
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    UNNotificationRequest* const request = [[UNNotificationRequest alloc] init];
    hold(request, "identifier", identifier);
    hold(request, "content", content);
    hold(request, "trigger", (id)trigger);
    return request;
}
- (UNNotificationContent*)content {
    return held(self, "content");
}
@end
@implementation UNNotification
- (UNNotificationRequest*)request {
    return held(self, "request");
}
@end
@implementation UNNotificationResponse
- (UNNotification*)notification {
    return held(self, "notification");
}
- (NSString*)actionIdentifier {
    return held(self, "action");
}
@end
@implementation UNUserNotificationCenter
+ (UNUserNotificationCenter*)currentNotificationCenter {
    if (![[[NSBundle mainBundle] bundlePath] hasSuffix:@".app"]) {
        [NSException raise:NSInternalInconsistencyException format:@"bundleProxyForCurrentProcess is nil"];
    }
    return g.centre;
}
- (id<UNUserNotificationCenterDelegate>)delegate {
    return g.delegate;
}
- (void)setDelegate:(id<UNUserNotificationCenterDelegate>)delegate {
    g.delegate = delegate;
}
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL, NSError*))completion {
    g.permissions = options;
    g.permissionAnswer = Block_copy(completion);
}
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError*))completion {
    [g.requests addObject:request];
}
@end

// The menu bar.

@implementation NSImage
+ (NSImage*)named:(NSString*)name {
    NSImage* const image = [[NSImage alloc] init];
    hold(image, "name", name);
    return image;
}
+ (NSImage*)imageNamed:(NSString*)name {
    return FoundationValues::string(name) == g.drawing ? [NSImage named:name] : nil;
}
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)words {
    return [NSImage named:[@"the system's " stringByAppendingString:name]];
}
- (BOOL)isTemplate {
    return held(self, "template") != nil;
}
- (void)setTemplate:(BOOL)flag {
    hold(self, "template", flag ? @"yes" : nil);
}
@end
@implementation NSEvent
- (NSUInteger)type {
    return g.eventType;
}
- (NSUInteger)modifierFlags {
    return g.modifiers;
}
+ (CGPoint)mouseLocation {
    return g.pointer;
}
@end
@implementation NSScreen
// The first has the menu bar; the other is higher, and stands at its right with the lower edges aligned.
+ (NSArray*)screens {
    NSScreen* const first = [[NSScreen alloc] init];
    hold(first, "first", @"yes");
    return [NSArray arrayWithObjects:first, [[NSScreen alloc] init], nil];
}
+ (NSScreen*)mainScreen { // of the window in front
    return [[NSScreen alloc] init];
}
- (CGRect)frame {
    return held(self, "first") != nil ? CGRect{{0, 0}, {1'440, 900}} : CGRect{{1'440, 0}, {1'920, 1'200}};
}
@end
@implementation NSResponder
@end
@implementation NSWindow
// It lies 1180 to the right and 870 above the corner of the screen.
- (CGRect)convertRectToScreen:(CGRect)place {
    place.origin.x += 1'180;
    place.origin.y += 870;
    return place;
}
@end
@implementation NSView
- (CGRect)bounds {
    return {{0, 0}, {60, 24}};
}
- (NSWindow*)window {
    return [[NSWindow alloc] init];
}
// It lies 20 to the right and 6 above the corner of its window, and 1 from each other view's.
- (CGRect)convertRect:(CGRect)place toView:(NSView*)view {
    place.origin.x += view == nil ? 20 : 1;
    place.origin.y += view == nil ? 6 : 1;
    return place;
}
- (NSString*)accessibilityLabel {
    return held(self, "label");
}
- (void)setAccessibilityLabel:(NSString*)label {
    hold(self, "label", label);
}
@end
@implementation NSStatusBarButton
- (NSString*)title {
    return held(self, "title");
}
- (void)setTitle:(NSString*)title {
    hold(self, "title", title);
}
- (NSImage*)image {
    return held(self, "image");
}
- (void)setImage:(NSImage*)image {
    hold(self, "image", image);
}
- (NSCellImagePosition)imagePosition {
    return static_cast<NSCellImagePosition>([held(self, "position") unsignedIntegerValue]);
}
- (void)setImagePosition:(NSCellImagePosition)position {
    hold(self, "position", [NSNumber numberWithUnsignedInteger:position]);
}
- (void)setTarget:(id)target {
    held(self, "target") = target; // weak
}
- (void)setAction:(SEL)action {
    hold(self, "action", NSStringFromSelector(action));
}
- (NSInteger)sendActionOn:(NSEventMask)mask {
    hold(self, "mask", [NSNumber numberWithUnsignedLongLong:mask]);
    return 0;
}
// A menu opens, or the action is sent.
- (void)performClick:(id)sender {
    if (NSMenu* const menu = [g.item menu]) {
        g.opened = menu;
        ++g.menusOpened;
        if (const auto deed = std::exchange(g.whileOpen, {})) {
            deed();
        }
        return;
    }
    [held(self, "target") performSelector:NSSelectorFromString(held(self, "action")) withObject:self];
}
@end
@implementation NSStatusItem
- (NSStatusBarButton*)button {
    return held(self, "button");
}
- (NSMenu*)menu {
    return held(self, "menu");
}
- (void)setMenu:(NSMenu*)menu {
    hold(self, "menu", menu);
}
- (BOOL)isVisible {
    return held(self, "hidden") == nil;
}
- (void)setVisible:(BOOL)flag {
    hold(self, "hidden", flag ? nil : @"yes");
}
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)path
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
    ++g.observers;
    [super addObserver:observer forKeyPath:path options:options context:context];
}
@end
@implementation NSStatusBar
+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* const bar = [[NSStatusBar alloc] init];
    return bar;
}
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    g.item = [[NSStatusItem alloc] init];
    hold(g.item, "button", [[NSStatusBarButton alloc] init]);
    g.items += length == NSVariableStatusItemLength ? 1 : 0;
    return g.item;
}
- (void)removeStatusItem:(NSStatusItem*)item {
    g.items -= item == g.item ? 1 : 0;
}
@end
@implementation NSMenuItem
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    hold(self, "title", title);
    hold(self, "action", NSStringFromSelector(action));
    return self;
}
+ (NSMenuItem*)separatorItem {
    return [[NSMenuItem alloc] init];
}
- (void)setTarget:(id)target {
    held(self, "target") = target;
}
- (void)setTag:(NSInteger)tag {
    hold(self, "tag", [NSNumber numberWithInteger:tag]);
}
- (NSInteger)tag {
    return [held(self, "tag") integerValue];
}
- (void)setEnabled:(BOOL)flag {
    hold(self, "disabled", flag ? nil : @"yes");
}
@end
@implementation NSMenu
- (instancetype)initWithTitle:(NSString*)title {
    hold(self, "lines", [NSMutableArray array]);
    hold(self, "automatic", @"yes"); // enabled by what their targets do, unless told otherwise
    return self;
}
- (void)addItem:(NSMenuItem*)item {
    [held(self, "lines") addObject:item];
}
- (void)setAutoenablesItems:(BOOL)flag {
    hold(self, "automatic", flag ? @"yes" : nil);
}
@end

// The look.

const NSAppearanceName NSAppearanceNameAqua = @"NSAppearanceNameAqua";
const NSAppearanceName NSAppearanceNameDarkAqua = @"NSAppearanceNameDarkAqua";
const NSNotificationName NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification = @"display options";

@implementation NSAppearance
// A dark one of high contrast is like the dark one.
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray*)names {
    NSString* const best =
        g.look.find("Dark") == std::string::npos ? NSAppearanceNameAqua : NSAppearanceNameDarkAqua;
    return [names containsObject:best] ? best : nil;
}
@end
@implementation NSApplication
+ (NSApplication*)sharedApplication {
    static NSApplication* const application = [[NSApplication alloc] init];
    return application;
}
- (NSEvent*)currentEvent {
    return [[NSEvent alloc] init];
}
- (NSAppearance*)effectiveAppearance {
    return [[NSAppearance alloc] init];
}
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)path
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
    ++g.observers;
    [super addObserver:observer forKeyPath:path options:options context:context];
}
@end
// GNUstep's does not copy the block, which the platform's does.
@interface StandInCentre : NSNotificationCenter
@end
@implementation StandInCentre
- (id)addObserverForName:(NSString*)name
                  object:(id)object
                   queue:(NSOperationQueue*)queue
              usingBlock:(void (^)(NSNotification*))block {
    return [super addObserverForName:name object:object queue:queue usingBlock:Block_copy(block)];
}
@end
@implementation NSWorkspace
+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* const workspace = [[NSWorkspace alloc] init];
    return workspace;
}
- (NSNotificationCenter*)notificationCenter {
    static NSNotificationCenter* const centre = [[StandInCentre alloc] init];
    return centre;
}
- (void)openApplicationAtURL:(NSURL*)url
               configuration:(NSWorkspaceOpenConfiguration*)configuration
           completionHandler:(void (^)(NSRunningApplication*, NSError*))completion {
    if (![configuration createsNewApplicationInstance]) {
        g.openedBundles.push_back(FoundationValues::string([url absoluteString]));
    }
    void (^kept)(NSRunningApplication*, NSError*) = Block_copy(completion);
    g_tellers.emplace_back([kept] {
        for (int i = 0; i < 1'000; ++i) {
            std::this_thread::yield(); // whoever doesn't wait is gone by then
        }
        ++g_toldOpenings;
        kept(nil, nil);
    });
}
- (BOOL)accessibilityDisplayShouldIncreaseContrast {
    return g.isContrastHigh;
}
- (BOOL)accessibilityDisplayShouldReduceMotion {
    return g.isMotionReduced;
}
@end

// Who runs.

@implementation NSRunningApplication (StandIn)
+ (NSArray*)runningApplicationsWithBundleIdentifier:(NSString*)identifier {
    NSMutableArray* const running = [NSMutableArray array];
    for (const int process : g.running[FoundationValues::string(identifier)]) {
        NSRunningApplication* const application = [[NSRunningApplication alloc] init];
        hold(application, "process", [NSNumber numberWithInt:process]);
        [running addObject:application];
    }
    return running;
}
- (int)processIdentifier {
    return [held(self, "process") intValue];
}
- (NSURL*)bundleURL {
    return g.runningBundle.empty() ? nil : [NSURL fileURLWithPath:FoundationValues::text(g.runningBundle)];
}
- (NSDate*)launchDate {
    const auto found = g.launches.find([self processIdentifier]);
    return found == g.launches.end() ? nil : [NSDate dateWithTimeIntervalSinceReferenceDate:found->second];
}
- (BOOL)activateWithOptions:(NSApplicationActivationOptions)options {
    g.activations.push_back({[held(self, "process") intValue], options});
    return YES;
}
@end

// Sparkle.

@implementation NSUserDefaults (StandIn)
- (BOOL)synchronize {
    g.sparkle.isAutomaticStored = g.sparkle.isAutomatic;
    return YES;
}
@end

@interface StandInUpdater : NSObject
@end
@implementation StandInUpdater
- (BOOL)automaticallyChecksForUpdates {
    return g.sparkle.isAutomatic;
}
- (void)setAutomaticallyChecksForUpdates:(BOOL)flag {
    g.sparkle.isAutomatic = flag;
}
- (BOOL)canCheckForUpdates {
    return held(self, "can") != nil;
}
- (void)setCanCheckForUpdates:(BOOL)flag {
    hold(self, "can", flag ? @"yes" : nil);
}
- (NSDate*)lastUpdateCheckDate {
    return held(self, "date");
}
- (void)setLastUpdateCheckDate:(NSDate*)date {
    hold(self, "date", date);
}
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)path
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
    ++g.observers;
    [super addObserver:observer forKeyPath:path options:options context:context];
}
@end
@interface SPUStandardUpdaterController : NSObject
@end
@implementation SPUStandardUpdaterController
- (instancetype)initWithStartingUpdater:(BOOL)starts
                        updaterDelegate:(id)delegate
                     userDriverDelegate:(id)driverDelegate {
    g.sparkle.wasStarted = starts;
    g.updater = [[StandInUpdater alloc] init];
    return self;
}
- (id)updater {
    return g.updater;
}
- (void)checkForUpdates:(id)sender {
    ++g.sparkle.checks;
}
@end

namespace quillane::StandIn {
namespace {

std::map<std::pair<const void*, std::string>, id> g_held;

std::string textIn(id object, const char* name) {
    const id text = held(object, name);
    return text == nil ? std::string() : FoundationValues::string(text);
}

int respond(NSDictionary* userInfo, NSString* action) {
    UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
    [content setUserInfo:userInfo];
    UNNotification* const notification = [[UNNotification alloc] init];
    hold(notification, "request",
         [UNNotificationRequest requestWithIdentifier:@"any" content:content trigger:nil]);
    UNNotificationResponse* const response = [[UNNotificationResponse alloc] init];
    hold(response, "notification", notification);
    hold(response, "action", action);
    __block int done = 0;
    [g.delegate userNotificationCenter:g.centre
        didReceiveNotificationResponse:response
                 withCompletionHandler:^{
                   ++done;
                 }];
    return done;
}

} // namespace

id& held(id object, const char* name) {
    return g_held[{(const void*)object, name}];
}

void hold(id object, const char* name, id value) {
    held(object, name) = [value retain];
}

void begin() {
    static NSAutoreleasePool* pool = nil;
    for (auto& teller : g_tellers) {
        teller.join();
    }
    g_tellers.clear();
    g_toldOpenings = 0;
    [pool drain];
    pool = [[NSAutoreleasePool alloc] init];
    g = State();
    g.centre = [[UNUserNotificationCenter alloc] init];
    g.requests = [[NSMutableArray alloc] init];
}

void setBundle(const Bundle& bundle) {
    g.bundle = bundle;
}

std::vector<Request> requests() {
    std::vector<Request> told;
    for (UNNotificationRequest* request in g.requests) {
        const id content = [request content];
        told.push_back({textIn(request, "identifier"), textIn(content, "title"), textIn(content, "body"),
                        [content sound] == [UNNotificationSound defaultSound],
                        held(request, "trigger") != nil});
    }
    return told;
}

unsigned long askedPermissions() {
    return g.permissions;
}

bool hasDelegate() {
    return g.delegate != nil;
}

int act(std::size_t request, Deed deed) {
    @autoreleasepool { // the system's own threads call, too
        UNNotificationRequest* const acted = [g.requests objectAtIndex:request];
        return respond([[acted content] userInfo],
                       deed == Deed::click ? UNNotificationDefaultActionIdentifier : @"it was dismissed");
    }
}

int clickOnForeign() {
    NSMutableDictionary* const userInfo = [NSMutableDictionary dictionary];
    [userInfo setObject:@"Overview" forKey:@"section"];
    [userInfo setObject:[NSNumber numberWithInt:1] forKey:@"number"];
    [userInfo setObject:@"number" forKey:[NSNumber numberWithInt:1]];
    return respond(userInfo, UNNotificationDefaultActionIdentifier);
}

void answerPermission() {
    std::thread([answer = g.permissionAnswer] { answer(NO, nil); }).join();
}

std::pair<unsigned long, int> presentation() {
    __block unsigned long told = 0;
    __block int count = 0;
    [g.delegate userNotificationCenter:g.centre
               willPresentNotification:[[UNNotification alloc] init]
                 withCompletionHandler:^(UNNotificationPresentationOptions options) {
                   told = options;
                   ++count;
                 }];
    return {told, count};
}

MenuBar menuBar() {
    const id button = held(g.item, "button");
    const id image = held(button, "image");
    return {g.items,
            textIn(button, "title"),
            textIn(button, "label"),
            textIn(image, "name"),
            [image isTemplate] != NO,
            [button imagePosition],
            [g.item menu] != nil};
}

std::vector<Line> openedMenu() {
    std::vector<Line> lines;
    const bool isAutomatic =
        held(g.opened, "automatic") != nil; // then each line that has a target can be chosen
    for (id line in (NSArray*)held(g.opened, "lines")) {
        lines.push_back({textIn(line, "title"), isAutomatic || held(line, "disabled") == nil});
    }
    return lines;
}

int menusOpened() {
    return g.menusOpened;
}

void setWhileOpen(std::function<void()> deed) {
    g.whileOpen = std::move(deed);
}

void choose(std::size_t line) {
    const id chosen = [held(g.opened, "lines") objectAtIndex:line];
    [held(chosen, "target") performSelector:NSSelectorFromString(held(chosen, "action")) withObject:chosen];
}

void click(Button button, bool isControlHeld, double x, double y) {
    g.eventType = button == Button::left    ? NSEventTypeLeftMouseUp
                  : button == Button::right ? NSEventTypeRightMouseUp
                                            : 0;
    g.modifiers = isControlHeld ? NSEventModifierFlagControl : 0;
    g.pointer = {x, y};
    const id target = held(g.item, "button");
    const auto heard = [held(target, "mask") unsignedLongLongValue];
    if (button == Button::none || (heard & (1ULL << g.eventType)) != 0) {
        [target performClick:nil];
    }
}

void setShown(bool isShown) {
    [g.item setVisible:isShown];
}

void setDrawing(const std::string& name) {
    g.drawing = name;
}

void setLook(const std::string& appearance) {
    NSApplication* const application = [NSApplication sharedApplication];
    [application willChangeValueForKey:@"effectiveAppearance"];
    g.look = appearance;
    [application didChangeValueForKey:@"effectiveAppearance"];
}

void setDisplayOptions(bool isContrastHigh, bool isMotionReduced) {
    g.isContrastHigh = isContrastHigh;
    g.isMotionReduced = isMotionReduced;
}

void tellDisplayOptions(bool byTheWorkspace) {
    NSNotificationCenter* const centre = byTheWorkspace ? [[NSWorkspace sharedWorkspace] notificationCenter]
                                                        : [NSNotificationCenter defaultCenter];
    [centre postNotificationName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification object:nil];
}

void carrySparkle() {
    g.carriesSparkle = true;
}

Sparkle sparkle() {
    return g.sparkle;
}

void setSparkle(bool canCheck, double lastCheck) {
    [g.updater setCanCheckForUpdates:canCheck];
    [g.updater setLastUpdateCheckDate:[NSDate dateWithTimeIntervalSinceReferenceDate:lastCheck]];
}

void setRunning(const std::string& identifier, const std::vector<int>& processes) {
    g.running[identifier] = processes;
}

std::vector<Activation> activations() {
    return g.activations;
}

void setLaunch(int process, double date) {
    g.launches[process] = date;
}

void setRunningBundle(const std::string& path) {
    g.runningBundle = path;
}

std::vector<std::string> openedBundles() {
    return g.openedBundles;
}

int toldOpenings() {
    return g_toldOpenings;
}

int mainQueues() {
    return g.mainQueues;
}

int observers() {
    return g.observers;
}

} // namespace quillane::StandIn
