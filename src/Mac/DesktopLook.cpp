#include "DesktopLook.h"
#include "Appearance.h"
#include "Components/Look.h"

namespace quillane {

namespace {

// Text has no scale of its own here.
void tell(const Appearance::Values& values) {
    Look::setDark(values.isDark);
    Look::setHighContrast(values.isHighContrast);
    Look::setReducedMotion(values.isMotionReduced);
}

} // namespace

struct DesktopLook::Sources {
    Appearance appearance{tell};
};

DesktopLook::DesktopLook(TaskRunner& /*tasks*/)
    : m_sources(std::make_unique<Sources>()) {
    tell(m_sources->appearance.values());
}

DesktopLook::~DesktopLook() = default;

} // namespace quillane
