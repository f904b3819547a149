#pragma once
#include "AppUpdate.h"
#include <functional>

namespace quillane {

// Shows what comes of a check for a newer version. Each call takes the place of what was shown before. Main thread only.
class UpdatePresenter {
  public:
    // Who has asked for the check: the person waits for it, the program itself does not.
    enum class Asked { byPerson, byItself };
    enum class Failure {
        unreachable, // nobody answered in time, or not over a connection that can be trusted
        notSigned,   // what was found is not from the makers of this program
        unreadable, // somebody answered with what is no page or too large, or the makers with no announcement
        outdated,   // it is older than what was seen before
    };

    virtual ~UpdatePresenter() = default;
    // A check of the person's runs. `cancel` ends it; it may be called at any time, also when the check is over.
    virtual void showChecking(std::function<void()> cancel) = 0;
    // A version newer than this one. What the program found by itself takes the keyboard from nobody.
    virtual void showUpdate(const AppUpdate& update, const VersionNumber& installed, Asked asked) = 0;
    virtual void showUpToDate(const VersionNumber& installed) = 0;
    virtual void showFailure(Failure failure) = 0;
};

} // namespace quillane
