#pragma once
#include "PreviewPanel.h"
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace quillane {

// A panel of the system that the test closes and presses keys in, and that takes notes. Main thread.
class FakePreviewPanel final : public PreviewPanel {
  public:
    bool isInSystem = false;     // to be said before a window is made
    std::optional<FileURL> file; // absent while it is closed
    std::vector<FileURL> shown;  // each that was asked for, in order
    std::uintptr_t window = 0;   // of the last
    bool hasHandlers() const { return m_handlers.closed && m_handlers.pressed; }

    // As by its own button. Who closes it without a word is seen only in that it is not shown any more.
    void close(bool withoutAWord = false) {
        file.reset();
        if (!withoutAWord && m_handlers.closed) {
            m_handlers.closed();
        }
    }
    // False where the key is the panel's own.
    bool press(Key key, bool withShift = false) {
        return file && m_handlers.pressed && m_handlers.pressed(key, withShift);
    }

    bool isThere() const override { return isInSystem; }
    void setHandlers(Handlers handlers) override { m_handlers = std::move(handlers); }
    void show(const FileURL& url, std::uintptr_t view) override {
        file = url;
        shown.push_back(url);
        window = view;
    }
    void hide() override { file.reset(); }
    bool isShown() const override { return file.has_value(); }

  private:
    Handlers m_handlers;
};

} // namespace quillane
