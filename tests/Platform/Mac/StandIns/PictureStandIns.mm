#include "PictureStandIns.h"
#include "FoundationValues.h"
#include "Held.h"
#import <AppKit/AppKit.h>
#include <Block.h>
#import <QuickLookThumbnailing/QuickLookThumbnailing.h>
#include <cstring>
#include <utility>

struct CGImage {
    quillane::StandIn::Picture picture;
};
struct CGContext {
    std::uint8_t* data;
    std::size_t width;
    std::size_t height;
    std::size_t row;
};
struct CGColorSpace {};

namespace {

using namespace quillane;
using Completion = void (^)(QLThumbnailRepresentation*, NSError*);

struct State {
    std::optional<StandIn::Picture> icon;
    std::vector<StandIn::IconRequest> icons;
    NSImage* lent = nil;
    int drawingObjects = 0;
    std::vector<std::string> opened;
    std::vector<std::vector<std::string>> revealed;
    int ends = 0;
    std::optional<StandIn::Picture> thumbnail;
    StandIn::Answer answer = StandIn::Answer::atOnce;
    std::vector<StandIn::ThumbnailRequest> thumbnails;
    std::function<void()> whenAsked;
    Completion late = nil;
};
State g;

CGImageRef imageOf(const std::optional<StandIn::Picture>& picture) {
    return picture ? new CGImage{*picture} : nullptr;
}

double sideOf(id image) {
    return [StandIn::held(image, "side") doubleValue];
}

} // namespace

// Pictures.

const CFStringRef kCGColorSpaceSRGB = nullptr;

size_t CGImageGetWidth(CGImageRef image) {
    return image == nullptr ? 0 : static_cast<size_t>(image->picture.width);
}
size_t CGImageGetHeight(CGImageRef image) {
    return image == nullptr ? 0 : static_cast<size_t>(image->picture.height);
}
CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name) {
    ++g.drawingObjects;
    return new CGColorSpace;
}
void CGColorSpaceRelease(CGColorSpaceRef space) {
    g.drawingObjects -= space == nullptr ? 0 : 1;
    delete space;
}
// Knows one layout.
CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bits, size_t row,
                                   CGColorSpaceRef space, CGBitmapInfo info) {
    if (bits != 8 || space == nullptr || info != (1U | 4U << 12U) || row != 4 * width) {
        return nullptr;
    }
    ++g.drawingObjects;
    return new CGContext{static_cast<std::uint8_t*>(data), width, height, row};
}
void CGContextSetInterpolationQuality(CGContextRef context, CGInterpolationQuality quality) {}
void CGContextDrawImage(CGContextRef context, CGRect place, CGImageRef image) {
    const auto& from = image->picture;
    for (std::size_t y = 0; y < static_cast<std::size_t>(place.size.height); ++y) {
        for (std::size_t x = 0; x < static_cast<std::size_t>(place.size.width); ++x) {
            const std::size_t fromX = x * static_cast<std::size_t>(from.width) / context->width;
            const std::size_t fromY = y * static_cast<std::size_t>(from.height) / context->height;
            std::memcpy(context->data + y * context->row + 4 * x,
                        from.rgba.data() + 4 * (fromY * static_cast<std::size_t>(from.width) + fromX), 4);
        }
    }
}
void CGContextRelease(CGContextRef context) {
    g.drawingObjects -= context == nullptr ? 0 : 1;
    delete context;
}

@implementation NSImage (Pictures)
- (CGSize)size {
    return {sideOf(self), sideOf(self)};
}
- (void)setSize:(CGSize)size {
    StandIn::hold(self, "side", [NSNumber numberWithDouble:size.width]);
}
- (id)copyWithZone:(NSZone*)zone {
    NSImage* const copy = [[NSImage alloc] init];
    StandIn::hold(copy, "path", StandIn::held(self, "path"));
    return copy;
}
- (CGImageRef)CGImageForProposedRect:(CGRect*)place
                             context:(NSGraphicsContext*)context
                               hints:(NSDictionary*)hints {
    g.icons.push_back({FoundationValues::string(StandIn::held(self, "path")), place->size.width, sideOf(self),
                       sideOf(g.lent)});
    return imageOf(g.icon);
}
@end

// The workspace.

@implementation NSWorkspaceOpenConfiguration
+ (instancetype)configuration {
    return [[NSWorkspaceOpenConfiguration alloc] init];
}
@end
@implementation NSWorkspace (Pictures)
- (NSImage*)iconForFile:(NSString*)path {
    g.lent = [[NSImage alloc] init];
    StandIn::hold(g.lent, "path", path);
    StandIn::hold(g.lent, "side", [NSNumber numberWithDouble:32]);
    return g.lent;
}
- (void)openURL:(NSURL*)url
        configuration:(NSWorkspaceOpenConfiguration*)configuration
    completionHandler:(void (^)(NSRunningApplication*, NSError*))completion {
    if (configuration != nil) {
        g.opened.push_back(FoundationValues::string([url absoluteString]));
    }
}
- (void)activateFileViewerSelectingURLs:(NSArray*)urls {
    auto& shown = g.revealed.emplace_back();
    for (NSURL* url in urls) {
        shown.push_back(FoundationValues::string([url absoluteString]));
    }
}
@end
@implementation NSApplication (Pictures)
- (void)terminate:(id)sender {
    ++g.ends;
}
@end

// Quick Look.

@implementation QLThumbnailGenerationRequest
- (instancetype)initWithFileAtURL:(NSURL*)url
                             size:(CGSize)size
                            scale:(CGFloat)scale
              representationTypes:(QLThumbnailGenerationRequestRepresentationTypes)types {
    StandIn::hold(self, "number", [NSNumber numberWithUnsignedLong:g.thumbnails.size()]);
    g.thumbnails.push_back(
        {FoundationValues::string([url absoluteString]), size.width, size.height, scale, types});
    return self;
}
@end
@implementation QLThumbnailRepresentation
- (CGImageRef)CGImage {
    return imageOf(g.thumbnail);
}
@end
@implementation QLThumbnailGenerator
+ (QLThumbnailGenerator*)sharedGenerator {
    static QLThumbnailGenerator* const generator = [[QLThumbnailGenerator alloc] init];
    return generator;
}
- (void)generateBestRepresentationForRequest:(QLThumbnailGenerationRequest*)request
                           completionHandler:(Completion)completion {
    g.late = Block_copy(completion);
    if (g.whenAsked) {
        g.whenAsked();
    }
    if (g.answer == StandIn::Answer::atOnce) {
        StandIn::answerLate();
    }
}
- (void)cancelRequest:(QLThumbnailGenerationRequest*)request {
    g.thumbnails.at([StandIn::held(request, "number") unsignedLongValue]).isCancelled = true;
}
@end

namespace quillane::StandIn {

void beginPictures() {
    g = State();
}

void setIcon(const std::optional<Picture>& picture) {
    g.icon = picture;
}

std::vector<IconRequest> iconRequests() {
    return g.icons;
}

int drawingObjects() {
    return g.drawingObjects;
}

std::vector<std::string> opened() {
    return g.opened;
}

std::vector<std::vector<std::string>> revealed() {
    return g.revealed;
}

int ends() {
    return g.ends;
}

std::vector<ThumbnailRequest> thumbnailRequests() {
    return g.thumbnails;
}

void setThumbnail(const std::optional<Picture>& picture, Answer answer) {
    g.thumbnail = picture;
    g.answer = answer;
}

void setWhenAsked(std::function<void()> deed) {
    g.whenAsked = std::move(deed);
}

void answerLate() {
    const Completion completion = std::exchange(g.late, nil);
    completion(g.thumbnail ? [[QLThumbnailRepresentation alloc] init] : nil, nil);
    Block_release(completion);
}

} // namespace quillane::StandIn
