#include "MenuBarDesk.h"
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QSettings>
#include <QStyleHints>
#include <cstdlib>

namespace quillane {
namespace {

// A panel at the upper edge of the display in which there is nothing but items.
constexpr auto kPanelSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="30"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
)";

// The program that keeps the settings of Xfce, which the bus would start.
QString settingsProgram() {
    return QSettings(QStringLiteral("/usr/share/dbus-1/services/org.xfce.Xfconf.service"),
                     QSettings::IniFormat)
        .value(QStringLiteral("D-BUS Service/Exec"))
        .toString();
}

QImage upperPart(int y, int height) {
    QScreen* const screen = QGuiApplication::primaryScreen();
    return screen->grabWindow(0, 0, y, screen->size().width(), height).toImage();
}

// Where the icon is on the display, by its colour; empty where it is not.
QRect findIcon() {
    constexpr int kHeight = 40; // of the panel, and a little more
    constexpr int kNear = 48;   // edges are mixed with the ground
    constexpr QRgb kColor = 0xFF5C7AEB;
    const QImage image = upperPart(0, kHeight);
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb point = image.pixel(x, y);
            const int distance = std::abs(qRed(point) - qRed(kColor)) +
                                 std::abs(qGreen(point) - qGreen(kColor)) +
                                 std::abs(qBlue(point) - qBlue(kColor));
            found = distance < kNear ? found.united(QRect(x, y, 1, 1)) : found;
        }
    }
    return found;
}

// Below the panel there is nothing but a menu, or the words under the pointer.
bool hasMenuOpen() {
    constexpr int kPanel = 40;
    constexpr int kHeight = 60;
    QImage image = upperPart(kPanel, kHeight);
    const QRgb ground = image.pixel(0, image.height() - 1);
    QImage bare(image.size(), image.format());
    bare.fill(ground);
    return image != bare;
}

std::string shown(const std::string& words, bool isEnabled) {
    return isEnabled ? words : "[" + words + "]";
}

std::vector<std::string> linesOf(const MenuBarDesk::Menu& menu) {
    std::vector<std::string> lines;
    for (const auto& entry : menu) {
        lines.push_back(shown(entry.words, entry.isEnabled));
    }
    return lines;
}

QByteArray mouseAndKeys(const QStringList& arguments) {
    QProcess program;
    program.start(QStringLiteral("xdotool"), arguments);
    EXPECT_TRUE(program.waitForFinished());
    return program.readAllStandardOutput().trimmed();
}

} // namespace

std::vector<std::string> FakeMenuBarDesk::menu() {
    return linesOf(m_item.menu);
}

void StatusItemDesk::setPanel(bool isThere) {
    m_bar.hasRoom = isThere;
    if (m_bar.hasItem) {
        m_bar.item.shownChanged();
    }
}

void StatusItemDesk::click(const MenuBarExtra::Press& press) {
    m_click = press;
    m_bar.item.pressed(press.place);
}

std::vector<std::string> StatusItemDesk::menu() {
    return linesOf(m_bar.menu);
}

void StatusItemDesk::choose(const Menu& /*menu*/, std::size_t line, const std::string& /*token*/) {
    const auto& entry = m_bar.menu.at(line);
    if (entry.isEnabled && !entry.words.empty()) {
        m_bar.item.chosen(entry.id);
    }
}

bool BusMenuBarDesk::until(const std::function<bool()>& condition) {
    return QTest::qWaitFor(
        [&] {
            m_tasks.runAll();
            return condition();
        },
        FakePanel::kPatience);
}

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

std::vector<std::string> FakePanelDesk::menu() {
    std::vector<std::string> lines;
    for (const auto& line : m_panel->menu()) {
        auto label = line.properties.value(QStringLiteral("label")).toString();
        label.replace(QStringLiteral("__"), QStringLiteral("_")); // as it is drawn
        lines.push_back(
            shown(label.toStdString(), line.properties.value(QStringLiteral("enabled"), true).toBool()));
    }
    return lines;
}

void FakePanelDesk::choose(const Menu& /*menu*/, std::size_t line, const std::string& token) {
    if (!token.empty()) {
        m_panel->callItem("ProvideXdgActivationToken", {QString::fromStdString(token)});
    }
    m_panel->clickMenu(m_panel->menu().at(static_cast<qsizetype>(line)).id);
}

XfcePanelDesk::XfcePanelDesk(Bus bus)
    : m_connection(bus == Bus::same ? m_bus.connect() : m_otherBus.connect()) {
    QGuiApplication::styleHints()->setMouseDoubleClickInterval(0); // in a tray, two clicks are two
    m_home.file("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml", kPanelSettings);
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                       bus == Bus::same ? m_bus.address() : m_otherBus.address());
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"}) {
        environment.insert(QString::fromLatin1(variable), QString::fromStdString(m_home.path()));
    }
    environment.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
    m_settings.setProcessEnvironment(environment);
    m_panel.setProcessEnvironment(environment);
    m_settings.start(settingsProgram(), QStringList());
    EXPECT_TRUE(QTest::qWaitFor(
        [this] {
            return m_connection.interface()->isServiceRegistered(QStringLiteral("org.xfce.Xfconf")).value();
        },
        FakePanel::kPatience));
}

XfcePanelDesk::~XfcePanelDesk() {
    m_item.reset();
    setPanel(false);
    m_settings.kill();
    m_settings.waitForFinished();
}

// Items have a process of their own in it.
bool XfcePanelDesk::hasWatcher() const {
    return m_connection.interface()->isServiceRegistered(QString::fromLatin1(FakePanel::kName)).value();
}

void XfcePanelDesk::setPanel(bool isThere) {
    if (isThere) {
        m_panel.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
    } else {
        m_panel.kill();
        m_panel.waitForFinished();
    }
    EXPECT_TRUE(until([&] { return hasWatcher() == isThere; }))
        << m_panel.readAllStandardError().toStdString();
}

void XfcePanelDesk::settle() {
    constexpr int kMostSteps = 6;
    for (int i = 0; i < kMostSteps; ++i) {
        m_tasks.runAll();
        if (const QDBusConnection client(m_client); client.isConnected()) {
            FakePanel::goAround(client);
        }
    }
    m_tasks.runAll();
}

bool XfcePanelDesk::panelHasIt(bool expected) {
    return until([&] { return findIcon().isEmpty() != expected && m_item->isShown() == expected; });
}

void XfcePanelDesk::click(const MenuBarExtra::Press& /*press*/) {
    m_icon = findIcon();
    const QPoint place = m_icon.center();
    mouseAndKeys({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                  QStringLiteral("click"), QStringLiteral("1")});
}

// On the icon, or on the room that the panel gives it.
bool XfcePanelDesk::isThatClick(const MenuBarExtra::Press& press) const {
    constexpr int kRoom = 16;
    return press.place &&
           m_icon.adjusted(-kRoom, -kRoom, kRoom, kRoom).contains(press.place->x, press.place->y);
}

void XfcePanelDesk::choose(const Menu& menu, std::size_t line, const std::string& /*token*/) {
    const QPoint place = findIcon().center();
    mouseAndKeys({QStringLiteral("mousemove"), QStringLiteral("800"), QStringLiteral("800")});
    EXPECT_TRUE(until([] { return !hasMenuOpen(); }));
    mouseAndKeys({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
                  QStringLiteral("click"), QStringLiteral("3")});
    EXPECT_TRUE(until(hasMenuOpen));
    QStringList keys = {QStringLiteral("key")};
    for (std::size_t i = 0; i <= line; ++i) {
        const bool isPassedOver = menu.at(i).words.empty() || !menu.at(i).isEnabled;
        keys.append(isPassedOver ? QStringList() : QStringList{QStringLiteral("Down")});
    }
    mouseAndKeys(keys << QStringLiteral("Return"));
    EXPECT_TRUE(until([] { return !hasMenuOpen(); }));
}

std::unique_ptr<MenuBarDesk> panelDesk() {
    const auto name = qEnvironmentVariable("QUILLANE_PANEL");
    if (name == QLatin1String("xfce4-panel")) {
        return std::make_unique<XfcePanelDesk>(XfcePanelDesk::Bus::same);
    }
    if (name == QLatin1String("xfce4-panel-tray")) {
        return std::make_unique<XfcePanelDesk>(XfcePanelDesk::Bus::other);
    }
    return std::make_unique<FakePanelDesk>();
}

} // namespace quillane
