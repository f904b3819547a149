#pragma once
#include "PreviewPanel.h"
#include "TaskRunner.h"
#include <memory>

namespace quillane {

// Quick Look's panel. It asks the window that is in front who steers it, and its chain of responders has our answer only
// while a file is shown; where nobody is asked the panel is steered all the same. Main thread only; `tasks` must outlive
// it.
class MacPreviewPanel final : public PreviewPanel {
  public:
    explicit MacPreviewPanel(TaskRunner& tasks);
    ~MacPreviewPanel() override;
    MacPreviewPanel(const MacPreviewPanel&) = delete;
    MacPreviewPanel& operator=(const MacPreviewPanel&) = delete;

    bool isThere() const override { return true; }
    void setHandlers(Handlers handlers) override;
    void show(const FileURL& url, std::uintptr_t window) override;
    void hide() override;
    bool isShown() const override;

  private:
    struct System;
    std::unique_ptr<System> m_system;
};

} // namespace quillane
