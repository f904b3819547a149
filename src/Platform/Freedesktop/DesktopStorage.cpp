#include "DesktopStorage.h"

namespace quillane {

DesktopStorage::DesktopStorage(const Clock& clock, SpaceReserve::Size size)
    : reserve(FileDefaults::userPath(files.home().path()) + ".reserve", size)
    , trash(FreedesktopTrash::Places::ofThisUser(files.home()), clock, &reserve)
    , defaults(FileDefaults::userPath(files.home().path()), {}, &reserve) {
    files.drawOn(reserve);
}

void DesktopStorage::keepRoom(TaskRunner& tasks) {
    tasks.run(Priority::background, [this] { (void)reserve.lay(); });
}

} // namespace quillane
