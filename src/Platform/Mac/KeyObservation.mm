#include "KeyObservation.h"
#include <utility>

@interface QuillaneKeyObserver : NSObject {
    std::function<void()> m_changed;
}
- (instancetype)initWithChanged:(std::function<void()>)changed;
// The system's. Declared once more, so that a definition of another spelling leaves this one without any.
- (void)observeValueForKeyPath:(NSString*)path
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context;
@end

@implementation QuillaneKeyObserver

- (instancetype)initWithChanged:(std::function<void()>)changed {
    self = [super init];
    if (self != nil) {
        m_changed = std::move(changed);
    }
    return self;
}

- (void)observeValueForKeyPath:(NSString*)path
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    if (context == (__bridge void*)self) {
        const auto changed = m_changed; // which may end the observation
        changed();
    } else {
        [super observeValueForKeyPath:path ofObject:object change:change context:context];
    }
}

@end

namespace quillane {

KeyObservation::KeyObservation(NSObject* object, NSString* key, std::function<void()> changed)
    : m_object(object)
    , m_key(key)
    , m_observer([[QuillaneKeyObserver alloc] initWithChanged:std::move(changed)]) {
    [m_object addObserver:m_observer forKeyPath:m_key options:0 context:(__bridge void*)m_observer];
}

KeyObservation::~KeyObservation() {
    [m_object removeObserver:m_observer forKeyPath:m_key context:(__bridge void*)m_observer];
}

} // namespace quillane
