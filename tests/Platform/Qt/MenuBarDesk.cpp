#include "MenuBarDesk.h"

namespace quillane {

void FakePanelDesk::setPanel(bool isThere) {
    m_panel = isThere ? std::make_unique<FakePanel>(m_bus.connect()) : nullptr;
}

void FakePanelDesk::settle() {
    constexpr int kMostSteps = 4; // the owner of the name, the host and the registration, what comes of it
    for (int i = 0; i < kMostSteps; ++i) {
        m_tasks.runAll();
        if (const QDBusConnection client(m_client); client.isConnected()) {
            FakePanel::goAround(client);
        }
        if (m_panel) {
            FakePanel::goAround(m_panel->bus());
        }
    }
    m_tasks.runAll();
}

bool FakePanelDesk::panelHasIt(bool expected) {
    settle();
    return until([&] { return (m_panel && !m_panel->items.isEmpty()) == expected; });
}

std::string FakePanelDesk::figure() {
    return m_panel->property("XAyatanaLabel").toString().toStdString();
}

void FakePanelDesk::click(const MenuBarExtra::Press& press) {
    m_click = press;
    if (!press.activationToken.empty()) {
        m_panel->callItem("ProvideXdgActivationToken", {QString::fromStdString(press.activationToken)});
    }
    const auto place = press.place.value_or(MenuBarExtra::Place());
    m_panel->callItem("Activate", {place.x, place.y});
}

std::unique_ptr<MenuBarDesk> panelDesk() {
    return std::make_unique<FakePanelDesk>();
}

} // namespace quillane
