#include "MacStorage.h"

namespace quillane {
namespace {

constexpr const char* kReserve = "Library/Application Support/org.quillane.Quillane/reserve";

} // namespace

MacStorage::MacStorage(SpaceReserve::Size size)
    : reserve(files.home().appending(kReserve).path(), size)
    , trash(files.home(), &reserve)
    , defaults(UserDefaults::lockPath(files.home())) {
    files.drawOn(reserve);
}

void MacStorage::keepRoom(TaskRunner& tasks) {
    tasks.run(Priority::background, [this] { (void)reserve.lay(); });
}

} // namespace quillane
