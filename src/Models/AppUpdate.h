#pragma once
#include "Date.h"
#include "VersionNumber.h"
#include <string>

namespace quillane {

// A version of this program, as it was announced.
struct AppUpdate {
    VersionNumber version;
    Date date;         // of the announcement
    std::string page;  // where it can be had: an address that begins with "https://"
    std::string notes; // what is new, as plain text of several lines; may be empty

    friend bool operator==(const AppUpdate&, const AppUpdate&) = default;
};

} // namespace quillane
