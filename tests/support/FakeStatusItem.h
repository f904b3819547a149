#pragma once
#include "StatusItem.h"
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quillane {

// A menu bar as a person sees it, and the items that are made in it. Outlives them. Main thread.
struct FakeMenuBar {
    bool hasItem = false;
    int itemsMade = 0;
    bool hasRoom = true;
    std::string figure;
    std::vector<MenuBarExtra::Entry> menu;
    StatusItem::Handlers item; // of the one that stands

    std::unique_ptr<StatusItem> make(StatusItem::Handlers handlers);
};

class FakeStatusItem final : public StatusItem {
  public:
    FakeStatusItem(FakeMenuBar& bar, Handlers handlers)
        : m_bar(bar) {
        m_bar.hasItem = true;
        ++m_bar.itemsMade;
        m_bar.item = std::move(handlers);
    }
    ~FakeStatusItem() override {
        m_bar.hasItem = false;
        m_bar.item = {};
        m_bar.figure.clear();
        m_bar.menu.clear();
    }
    FakeStatusItem(const FakeStatusItem&) = delete;
    FakeStatusItem& operator=(const FakeStatusItem&) = delete;

    bool isShown() const override { return m_bar.hasRoom; }
    void setFigure(const std::string& figure) override { m_bar.figure = figure; }
    void setMenu(const std::vector<MenuBarExtra::Entry>& menu) override { m_bar.menu = menu; }

  private:
    FakeMenuBar& m_bar;
};

inline std::unique_ptr<StatusItem> FakeMenuBar::make(StatusItem::Handlers handlers) {
    return std::make_unique<FakeStatusItem>(*this, std::move(handlers));
}

} // namespace quillane
