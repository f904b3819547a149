#include "AppFilter.h"

namespace quillane {

std::string_view rawValue(AppFilter filter) {
    switch (filter) {
    case AppFilter::all:
        return "All Apps";
    case AppFilter::thirdParty:
        return "Third-Party";
    case AppFilter::rosetta:
        return "Intel Only";
    case AppFilter::unused:
        return "Unused 6 Months";
    case AppFilter::large:
        return "Over 500 MB";
    }
    __builtin_unreachable();
}

} // namespace quillane
