#pragma once
#include "DesktopMenuBarExtra.h"
#include "FakeMenuBarExtra.h"
#include "FakePanel.h"
#include "FakeStatusItem.h"
#include "MacMenuBarExtra.h"
#include "PrivateBus.h"
#include "StepTaskRunner.h"
#include "TemporaryFolder.h"
#include <QProcess>
#include <QRect>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillane {

// A desktop with its panel, and a person who clicks.
class MenuBarDesk {
  public:
    virtual ~MenuBarDesk() = default;
    virtual MenuBarExtra& item() = 0;
    virtual StepTaskRunner& tasks() = 0;
    // There is none at first.
    virtual void setPanel(bool isThere) = 0;
    // What was said on either side has arrived at the other, and has been told.
    virtual void settle() = 0;
    // Runs the program until then, or until that is not to be expected any more.
    virtual bool until(const std::function<bool()>& condition) = 0;
    // Whether the panel has the item, or does not, now or before long.
    virtual bool panelHasIt(bool expected) = 0;
    // The figure that the panel knows.
    virtual std::string figure() = 0;
    // On the item, which has been heard and not been told when this returns.
    virtual void click(const MenuBarExtra::Press& press) = 0;
    // The words of the menu's lines that the panel knows, empty for a rule; those that can't be chosen in brackets.
    virtual std::vector<std::string> menu() = 0;
    using Menu = std::vector<MenuBarExtra::Entry>;
    // Chooses that line, from 0, of the menu that stands, which has been heard and not been told when this returns.
    // Nothing comes of it where it can't be chosen.
    virtual void choose(const Menu& menu, std::size_t line, const std::string& token) = 0;
    // Whether the panel gives a token along with a choice.
    virtual bool givesTokens() const { return true; }
    // Whether it was the last click.
    virtual bool isThatClick(const MenuBarExtra::Press& press) const = 0;
};

class FakeMenuBarDesk final : public MenuBarDesk {
  public:
    FakeMenuBarDesk() { m_item.setPanel(false); }

    MenuBarExtra& item() override { return m_item; }
    StepTaskRunner& tasks() override { return m_tasks; }
    void setPanel(bool isThere) override { m_item.setPanel(isThere); }
    void settle() override { m_tasks.runAll(); }
    bool until(const std::function<bool()>& condition) override { return m_tasks.runUntil(condition); }
    bool panelHasIt(bool expected) override { return m_item.isShown() == expected; }
    std::string figure() override { return m_item.figure; }
    void click(const MenuBarExtra::Press& press) override {
        m_click = press;
        m_item.press(press);
    }
    bool isThatClick(const MenuBarExtra::Press& press) const override { return press == m_click; }
    std::vector<std::string> menu() override;
    void choose(const Menu& menu, std::size_t line, const std::string& token) override {
        m_item.choose({.id = menu.at(line).id, .activationToken = token});
    }

  private:
    StepTaskRunner m_tasks;
    FakeMenuBarExtra m_item{m_tasks};
    MenuBarExtra::Press m_click;
};

// The Mac's adapter over a menu bar of the test's own, which has room or has none. It knows of no token.
class StatusItemDesk final : public MenuBarDesk {
  public:
    StatusItemDesk() { m_bar.hasRoom = false; }

    MenuBarExtra& item() override { return m_item; }
    StepTaskRunner& tasks() override { return m_tasks; }
    void setPanel(bool isThere) override;
    void settle() override { m_tasks.runAll(); }
    bool until(const std::function<bool()>& condition) override { return m_tasks.runUntil(condition); }
    bool panelHasIt(bool expected) override { return (m_bar.hasItem && m_bar.hasRoom) == expected; }
    std::string figure() override { return m_bar.figure; }
    void click(const MenuBarExtra::Press& press) override;
    bool isThatClick(const MenuBarExtra::Press& press) const override {
        return press == MenuBarExtra::Press{.place = m_click.place, .activationToken = {}};
    }
    std::vector<std::string> menu() override;
    void choose(const Menu& menu, std::size_t line, const std::string& token) override;
    bool givesTokens() const override { return false; }

  private:
    StepTaskRunner m_tasks;
    FakeMenuBar m_bar;
    MacMenuBarExtra m_item{m_tasks,
                           [this](StatusItem::Handlers handlers) { return m_bar.make(std::move(handlers)); }};
    MenuBarExtra::Press m_click;
};

// The adapter over a panel on a bus of their own.
class BusMenuBarDesk : public MenuBarDesk {
  public:
    MenuBarExtra& item() override { return *m_item; }
    StepTaskRunner& tasks() override { return m_tasks; }

    bool until(const std::function<bool()>& condition) override;

  protected:
    PrivateBus m_bus;
    StepTaskRunner m_tasks;
    QString m_client; // the connection that the item has: its name, as one that is held is not closed
    std::unique_ptr<DesktopMenuBarExtra> m_item = std::make_unique<DesktopMenuBarExtra>(m_tasks, [this] {
        const auto connection = m_bus.connect();
        m_client = connection.name();
        return connection;
    });
};

// A panel of the test's own.
class FakePanelDesk final : public BusMenuBarDesk {
  public:
    void setPanel(bool isThere) override;
    void settle() override;
    bool panelHasIt(bool expected) override;
    std::string figure() override;
    void click(const MenuBarExtra::Press& press) override;
    bool isThatClick(const MenuBarExtra::Press& press) const override { return press == m_click; }
    std::vector<std::string> menu() override;
    void choose(const Menu& menu, std::size_t line, const std::string& token) override;

  private:
    std::unique_ptr<FakePanel> m_panel;
    MenuBarExtra::Press m_click;
};

// "xfce4-panel" on the display that there is, which a mouse clicks. Where it has a bus of its own, it and the item know
// each other by the display alone.
class XfcePanelDesk final : public BusMenuBarDesk {
  public:
    enum class Bus { same, other };

    explicit XfcePanelDesk(Bus bus);
    ~XfcePanelDesk() override;

    void setPanel(bool isThere) override;
    void settle() override;
    bool panelHasIt(bool expected) override;
    std::string figure() override { return {}; } // it shows none
    void click(const MenuBarExtra::Press& press) override;
    bool isThatClick(const MenuBarExtra::Press& press) const override;
    std::vector<std::string> menu() override { return {}; } // nobody can read what it draws
    // By the right button and the keyboard, which passes over what can't be chosen.
    void choose(const Menu& menu, std::size_t line, const std::string& token) override;
    bool givesTokens() const override { return false; }

  private:
    bool hasWatcher() const;

    PrivateBus m_otherBus;
    QDBusConnection m_connection; // on the panel's bus
    TemporaryFolder m_home;
    QProcess m_settings;
    QProcess m_panel;
    QRect m_icon; // that was clicked
};

// The one that QUILLANE_PANEL names, which is "xfce4-panel" with the item's bus or "xfce4-panel-tray" without it, or the
// test's own.
std::unique_ptr<MenuBarDesk> panelDesk();

} // namespace quillane
