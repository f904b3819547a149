#include "FilesMode.h"

namespace quillane {

std::string_view rawValue(FilesMode mode) {
    switch (mode) {
    case FilesMode::large:
        return "Large & Old";
    case FilesMode::screenshots:
        return "Screenshots";
    case FilesMode::installers:
        return "Installers";
    case FilesMode::search:
        return "Search";
    }
    __builtin_unreachable();
}

} // namespace quillane
