#include "Settings/SettingsView.h"

namespace quillane {

SettingsView::SettingsView(AppLibrary&, NotificationCenter&, Scenes&, QWidget* parent)
    : QWidget(parent) {
    setWindowTitle(QStringLiteral("Settings"));
}

void SettingsView::showTab(Scenes::SettingsTab tab) {
    m_tab = tab;
}

} // namespace quillane
