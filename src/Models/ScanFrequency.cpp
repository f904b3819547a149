#include "ScanFrequency.h"

namespace quillane {

std::string_view label(ScanFrequency frequency) {
    switch (frequency) {
    case ScanFrequency::everySixHours:
        return "Every 6 hours";
    case ScanFrequency::daily:
        return "Daily";
    case ScanFrequency::weekly:
        return "Weekly";
    }
    __builtin_unreachable();
}

} // namespace quillane
