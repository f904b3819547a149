#pragma once
#include "UpdatePresenter.h"
#include <QPointer>
#include <functional>
#include <utility>

class QWidget;

namespace quillane {

class UpdateWindow;

// Shows updates in a window of their own, of which there is one at most. Main thread only.
class UpdateWindows final : public UpdatePresenter {
  public:
    // Told of a window that is about to open and deletes itself when it is closed, and whether a person asked for it.
    using Opening = std::function<void(QWidget& window, bool isAskedFor)>;

    UpdateWindows() = default;
    ~UpdateWindows() override;
    UpdateWindows(const UpdateWindows&) = delete;
    UpdateWindows& operator=(const UpdateWindows&) = delete;

    void showChecking(std::function<void()> cancel) override;
    void showUpdate(const AppUpdate& update, const VersionNumber& installed, Asked asked) override;
    void showUpToDate(const VersionNumber& installed) override;
    void showFailure(Failure failure) override;

    void setOpening(Opening opening) { m_opening = std::move(opening); }
    // Null while it is closed.
    UpdateWindow* window() const;

  private:
    UpdateWindow& opened();
    void present(Asked asked);

    Opening m_opening;
    QPointer<UpdateWindow> m_window; // deletes itself when it is closed
};

} // namespace quillane
