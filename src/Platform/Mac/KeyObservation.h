#pragma once
#import <Foundation/Foundation.h>
#include <functional>

@class QuillaneKeyObserver;

namespace quillane {

// Hears of each change of one property of an object, for as long as it lives. For the adapters alone: this header is
// Objective-C++. Main thread, and so must the changes be.
class KeyObservation final {
  public:
    // `changed` is called within the change. The property must be observable; its name is no path.
    KeyObservation(NSObject* object, NSString* key, std::function<void()> changed);
    ~KeyObservation();
    KeyObservation(const KeyObservation&) = delete;
    KeyObservation& operator=(const KeyObservation&) = delete;

  private:
    NSObject* m_object; // kept: an object that goes while it is observed is an error
    NSString* m_key;
    QuillaneKeyObserver* m_observer;
};

} // namespace quillane
