// Expected: is only available on macOS 26.0 or newer
#import <Foundation/Foundation.h>

API_AVAILABLE(macos(26.0)) void later();

void now() {
    later();
}
