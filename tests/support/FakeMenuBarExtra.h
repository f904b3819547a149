#pragma once
#include "MenuBarExtra.h"
#include "TaskRunner.h"
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// An item in a panel that the test takes away and brings back, and that the test clicks. Main thread.
class FakeMenuBarExtra final : public MenuBarExtra {
  public:
    // Handlers are called at a turn of this runner's main thread.
    explicit FakeMenuBarExtra(TaskRunner& tasks)
        : m_tasks(tasks) {}

    bool isInserted = false;
    std::string figure;
    int figuresSet = 0; // how often, whatever they were
    std::vector<Entry> menu;
    int menusSet = 0;

    void setPanel(bool isThere) {
        const bool before = isShown();
        m_hasPanel = isThere;
        tellOfChange(before);
    }
    // Nothing happens while the item does not show.
    void press(const Press& press = {}) {
        m_tasks.post([this, press] {
            if (isShown() && m_handlers.pressed) {
                m_handlers.pressed(press);
            }
        });
    }
    // Nothing happens while the item does not show, or for an entry that can't be chosen.
    void choose(const Choice& choice) {
        const auto isThat = [&](const Entry& entry) {
            return entry.id == choice.id && entry.isEnabled && !entry.words.empty();
        };
        if (isShown() && std::ranges::any_of(menu, isThat)) {
            m_tasks.post([this, choice] {
                if (isShown() && m_handlers.chosen) {
                    const auto chosen = m_handlers.chosen; // it may set others
                    chosen(choice);
                }
            });
        }
    }

    void insert() override {
        const bool before = isShown();
        isInserted = true;
        tellOfChange(before);
    }
    void withdraw() override {
        const bool before = isShown();
        isInserted = false;
        tellOfChange(before);
    }
    bool isShown() const override { return isInserted && m_hasPanel; }
    void setFigure(const std::string& text) override {
        figure = text;
        ++figuresSet;
    }
    void setMenu(const std::vector<Entry>& entries) override {
        menu = entries;
        ++menusSet;
    }
    void setHandlers(Handlers handlers) override { m_handlers = std::move(handlers); }

  private:
    void tellOfChange(bool before) {
        if (before != isShown()) {
            m_tasks.post([this] {
                if (m_handlers.shownChanged) {
                    m_handlers.shownChanged();
                }
            });
        }
    }

    TaskRunner& m_tasks;
    bool m_hasPanel = true;
    Handlers m_handlers;
};

} // namespace quillane
