#pragma once
#include "StatusItem.h"
#include "TaskRunner.h"
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quillane {

// The item in the menu bar of macOS, which is always there. What the system's item tells within a call of its own is
// told at a later turn. Main thread only; `tasks` must outlive it.
class MacMenuBarExtra final : public MenuBarExtra {
  public:
    using MakeItem = std::function<std::unique_ptr<StatusItem>(StatusItem::Handlers)>;

    // `makeItem` is called at each insertion.
    MacMenuBarExtra(TaskRunner& tasks, MakeItem makeItem);
    ~MacMenuBarExtra() override;
    MacMenuBarExtra(const MacMenuBarExtra&) = delete;
    MacMenuBarExtra& operator=(const MacMenuBarExtra&) = delete;

    void insert() override;
    void withdraw() override;
    bool isShown() const override;
    void setFigure(const std::string& figure) override;
    void setMenu(const std::vector<Entry>& menu) override;
    void setHandlers(Handlers handlers) override;

  private:
    StatusItem::Handlers ears();
    void press(const Press& press);
    void choose(int id);
    void tellOfChange();
    template <class Tell>
    void later(Tell tell);

    TaskRunner& m_tasks;
    MakeItem m_makeItem;
    Handlers m_handlers;
    std::string m_figure;
    std::vector<Entry> m_menu;
    bool m_wasShown = false; // when it was looked at last
    std::unique_ptr<StatusItem> m_item;
    // Jobs hold it weakly and look at it on the main thread, where this is destroyed.
    std::shared_ptr<MacMenuBarExtra*> m_self = std::make_shared<MacMenuBarExtra*>(this);
};

} // namespace quillane
