#include "QuickLookThumbnails.h"
#include "AwaitedPicture.h"
#include "DrawnImage.h"
#include "FoundationValues.h"
#include "ThumbnailSize.h"
#import <QuickLookThumbnailing/QuickLookThumbnailing.h>
#include <utility>

namespace quillane {
namespace {

// Points that are pixels. No icon, and none of the quick looks that come before the true one.
QLThumbnailGenerationRequest* requestFor(NSURL* location, PixelSize size) {
    return [[QLThumbnailGenerationRequest alloc]
          initWithFileAtURL:location
                       size:{static_cast<CGFloat>(size.width), static_cast<CGFloat>(size.height)}
                      scale:1
        representationTypes:QLThumbnailGenerationRequestRepresentationTypeThumbnail];
}

// The system's picture is lent, and gone when its block ends.
AwaitedPicture::Picture drawn(QLThumbnailRepresentation* thumbnail, PixelSize asked) {
    const CGImageRef picture = [thumbnail CGImage];
    const PixelSize whole = {static_cast<int>(CGImageGetWidth(picture)),
                             static_cast<int>(CGImageGetHeight(picture))};
    if (whole.width <= 0 || whole.height <= 0) {
        return nullptr;
    }
    auto image = DrawnImage::of(picture, ThumbnailSize::kept(whole, asked));
    return image ? std::make_shared<const IconImage>(std::move(*image)) : nullptr;
}

} // namespace

std::shared_ptr<const IconImage> QuickLookThumbnails::thumbnail(const FileURL& url, PixelSize size,
                                                                const StopToken& stop) const {
    @autoreleasepool {
        NSURL* const location = stop.stopRequested() ? nil : FoundationValues::location(url);
        if (location == nil) {
            return nullptr;
        }
        const auto asked = ThumbnailSize::sensible(size);
        const auto awaited = std::make_shared<AwaitedPicture>();
        QLThumbnailGenerationRequest* const request = requestFor(location, asked);
        QLThumbnailGenerator* const generator = [QLThumbnailGenerator sharedGenerator];
        [generator generateBestRepresentationForRequest:request
                                      completionHandler:^(QLThumbnailRepresentation* thumbnail, NSError*) {
                                        awaited->give(thumbnail == nil ? nullptr : drawn(thumbnail, asked));
                                      }];
        const auto picture = awaited->wait(stop, m_clock, kPatience);
        if (!picture) {
            [generator cancelRequest:request];
        }
        return picture.value_or(nullptr);
    }
}

} // namespace quillane
