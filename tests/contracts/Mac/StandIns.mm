#include "StandIns.h"
#include "FoundationValues.h"
#include "HalfText.h"
#import <AppKit/AppKit.h>
#include <gtest/gtest.h>
#include <map>
#include <objc/runtime.h>
#include <utility>

@implementation QuillaneHalfText
- (NSUInteger)length {
    return 1;
}
- (unichar)characterAtIndex:(NSUInteger)index {
    (void)index;
    return 0xDCA9;
}
- (NSData*)dataUsingEncoding:(NSStringEncoding)encoding {
    (void)encoding;
    return nil;
}
@end

@interface QuillaneStandInApplication : NSObject {
    std::size_t m_entry; // in the list
}
- (void)setEntry:(std::size_t)entry;
@end

namespace quillane::StandIns {
namespace {

std::function<Trashed(const FileURL&)>& trashAnswer() {
    static std::function<Trashed(const FileURL&)> answer;
    return answer;
}

NSString* domain(const std::string& name) {
    const std::map<std::string, NSString*> known{
        {"Cocoa", NSCocoaErrorDomain}, {"POSIX", NSPOSIXErrorDomain}, {"OSStatus", NSOSStatusErrorDomain}};
    const auto found = known.find(name);
    return found != known.end() ? found->second : FoundationValues::text(name);
}

NSError* errorOf(const std::vector<Cause>& causes) {
    NSError* error = nil;
    for (auto cause = causes.rbegin(); cause != causes.rend(); ++cause) {
        NSMutableDictionary* const told = [NSMutableDictionary dictionary];
        if (error != nil) {
            [told setObject:error forKey:NSUnderlyingErrorKey];
        }
        error = [NSError errorWithDomain:domain(cause->domain) code:cause->code userInfo:told];
    }
    return error;
}

using TrashItem = BOOL (*)(id, SEL, NSURL*, NSURL* __autoreleasing*, NSError* __autoreleasing*);
TrashItem systemTrashItem = nullptr;

BOOL trashItem(id self, SEL selector, NSURL* url, NSURL* __autoreleasing* landed,
               NSError* __autoreleasing* error) {
    if (!trashAnswer()) {
        return systemTrashItem(self, selector, url, landed, error);
    }
    const auto answer = trashAnswer()(FoundationValues::fileURL(url).value_or(FileURL("/no/location")));
    if (landed != nullptr && answer.landed) {
        *landed = FoundationValues::location(*answer.landed);
    }
    if (error != nullptr && !answer.isDone) {
        *error = errorOf(answer.error);
    }
    return answer.isDone ? YES : NO;
}

NSArray* running(id /*self*/, SEL /*selector*/, NSString* identifier) {
    NSMutableArray* const found = [NSMutableArray arrayWithCapacity:1];
    const auto wanted = FoundationValues::string(identifier);
    for (std::size_t i = 0; i < applications().size(); ++i) {
        if (applications()[i].identifier == wanted) {
            QuillaneStandInApplication* const application = [[QuillaneStandInApplication alloc] init];
            [application setEntry:i];
            [found addObject:application];
        }
    }
    return found;
}

std::function<void()>& storingWatch() {
    static std::function<void()> watch;
    return watch;
}

using Synchronize = BOOL (*)(id, SEL);
Synchronize systemSynchronize = nullptr;

BOOL synchronize(id self, SEL selector) {
    if (storingWatch()) {
        storingWatch()();
    }
    return systemSynchronize(self, selector);
}

std::function<void(const std::string&)>& removingWatch() {
    static std::function<void(const std::string&)> watch;
    return watch;
}

// Of a text in which half of a character is missing, and of an array that holds it.
std::pair<std::string, std::string>& halfKeys() {
    static std::pair<std::string, std::string> keys;
    return keys;
}

using ObjectForKey = id (*)(id, SEL, NSString*);
ObjectForKey systemObjectForKey = nullptr;

id objectForKey(id self, SEL selector, NSString* key) {
    const auto asked = FoundationValues::string(key);
    if (asked != halfKeys().first && asked != halfKeys().second) {
        return systemObjectForKey(self, selector, key);
    }
    NSString* const half = [[QuillaneHalfText alloc] init];
    NSMutableArray* const texts = [NSMutableArray arrayWithCapacity:2];
    [texts addObject:@"whole"];
    [texts addObject:half];
    return asked == halfKeys().first ? static_cast<id>(half) : static_cast<id>(texts);
}

using RemoveObject = void (*)(id, SEL, NSString*);
RemoveObject systemRemoveObject = nullptr;

void removeObject(id self, SEL selector, NSString* key) {
    if (removingWatch()) {
        removingWatch()(FoundationValues::string(key));
    }
    systemRemoveObject(self, selector, key);
}

// Gives back what the system had there.
void* replace(Class type, SEL selector, void* own) {
    auto* const before = reinterpret_cast<void*>(class_getMethodImplementation(type, selector));
    class_replaceMethod(type, selector, reinterpret_cast<IMP>(own),
                        method_getTypeEncoding(class_getInstanceMethod(type, selector)));
    return before;
}

class InPlace final : public testing::Environment {
    void SetUp() override {
        @autoreleasepool {
            systemTrashItem = reinterpret_cast<TrashItem>(
                replace([NSFileManager class], @selector(trashItemAtURL:resultingItemURL:error:),
                        reinterpret_cast<void*>(&trashItem)));
            systemSynchronize = reinterpret_cast<Synchronize>(replace(
                [NSUserDefaults class], @selector(synchronize), reinterpret_cast<void*>(&synchronize)));
            systemObjectForKey = reinterpret_cast<ObjectForKey>(replace(
                [NSUserDefaults class], @selector(objectForKey:), reinterpret_cast<void*>(&objectForKey)));
            systemRemoveObject =
                reinterpret_cast<RemoveObject>(replace([NSUserDefaults class], @selector(removeObjectForKey:),
                                                       reinterpret_cast<void*>(&removeObject)));
            replace(object_getClass([NSRunningApplication class]),
                    @selector(runningApplicationsWithBundleIdentifier:), reinterpret_cast<void*>(&running));
        }
    }
};

// Before any test, in each program that links this.
[[maybe_unused]] const auto* const kInPlace = testing::AddGlobalTestEnvironment(new InPlace);

} // namespace

void answerTrash(std::function<Trashed(const FileURL& item)> answer) {
    trashAnswer() = std::move(answer);
}

std::vector<Application>& applications() {
    static std::vector<Application> all;
    return all;
}

void forgetDefaults() {
    halfKeys() = {};
    @autoreleasepool {
        NSUserDefaults* const defaults = [NSUserDefaults standardUserDefaults];
        [defaults removePersistentDomainForName:[[NSProcessInfo processInfo] processName]];
        [defaults synchronize];
    }
}

void storeDictionary(const std::string& key) {
    @autoreleasepool {
        [[NSUserDefaults standardUserDefaults] setObject:[NSMutableDictionary dictionary]
                                                  forKey:FoundationValues::text(key)];
    }
}

void storeUnsigned(const std::string& key, std::uint64_t number) {
    @autoreleasepool {
        [[NSUserDefaults standardUserDefaults] setObject:[NSNumber numberWithUnsignedLongLong:number]
                                                  forKey:FoundationValues::text(key)];
    }
}

void answerHalfCharacter(const std::string& key, const std::string& arrayKey) {
    halfKeys() = {key, arrayKey};
}

bool isStored(const std::string& key) {
    @autoreleasepool {
        return [[NSUserDefaults standardUserDefaults] objectForKey:FoundationValues::text(key)] != nil;
    }
}

void watchRemoving(std::function<void(const std::string& key)> watch) {
    removingWatch() = std::move(watch);
}

void watchStoring(std::function<void()> watch) {
    storingWatch() = std::move(watch);
}

} // namespace quillane::StandIns

@implementation QuillaneStandInApplication
- (void)setEntry:(std::size_t)entry {
    m_entry = entry;
}
- (BOOL)isTerminated {
    return quillane::StandIns::applications()[m_entry].isTerminated ? YES : NO;
}
- (int)processIdentifier {
    return quillane::StandIns::applications()[m_entry].process;
}
- (BOOL)terminate {
    auto& application = quillane::StandIns::applications()[m_entry];
    ++application.asked;
    application.isTerminated = application.isTerminated || !application.isStubborn;
    return YES;
}
@end
