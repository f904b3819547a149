#pragma once
#include "Trash.h"
#include <functional>
#include <optional>
#include <set>
#include <utility>

namespace quillane {

// A Trash in which one step fails: the n-th call of those that change something, counted from 0. The step is
// not carried out. `before` sees each call that changes something, for what must happen in the middle.
class FaultTrash final : public Trash {
  public:
    explicit FaultTrash(Trash& trash)
        : m_trash(trash) {}

    void failStep(int step, PlatformError error) {
        m_failingStep = step;
        m_error = error;
    }
    void refuseListing(std::optional<PlatformError> error) { m_listingError = error; }
    // The move of this item is made, and where it landed is not told.
    void keepLandingOf(const FileURL& url) { m_untold.insert(url); }
    // What the Trash says of where every item came from, whatever its records say.
    void answerOrigin(std::optional<Result<bool>> answer) { m_origin = answer; }
    std::function<void(int step, const FileURL& url)> before;
    int steps() const { return m_steps; }

    std::optional<FileURL> location() const override { return m_trash.location(); }
    Result<std::vector<FileURL>> items() const override {
        if (m_listingError) {
            return *m_listingError;
        }
        return m_trash.items();
    }
    Result<std::optional<FileURL>> moveToTrash(const FileURL& url) override {
        if (fails(url)) {
            return m_error;
        }
        auto landed = m_trash.moveToTrash(url);
        if (landed && m_untold.contains(url)) {
            return std::optional<FileURL>();
        }
        return landed;
    }
    Result<bool> cameFrom(const FileURL& inTrash, const FileURL& original) const override {
        return m_origin ? *m_origin : m_trash.cameFrom(inTrash, original);
    }
    Result<> moveOut(const FileURL& inTrash, const FileURL& original) override {
        if (fails(inTrash)) {
            return m_error;
        }
        return m_trash.moveOut(inTrash, original);
    }
    Result<> deleteItem(const FileURL& inTrash) override {
        if (fails(inTrash)) {
            return m_error;
        }
        return m_trash.deleteItem(inTrash);
    }

  private:
    bool fails(const FileURL& url) {
        const int step = m_steps++;
        if (before) {
            before(step, url);
        }
        return step == m_failingStep;
    }

    Trash& m_trash;
    int m_steps = 0;
    int m_failingStep = -1;
    PlatformError m_error;
    std::optional<PlatformError> m_listingError;
    std::optional<Result<bool>> m_origin;
    std::set<FileURL> m_untold;
};

} // namespace quillane
