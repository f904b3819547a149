#pragma once
#include <vector>

namespace quillane {

class ObservableField;

// Someone who wants to know when fields change. Which fields those are is found by reading them while a
// Tracking of this observer lives. Main thread only.
class Observer {
  public:
    // Around every store into an observed field: before, with the old value still there, and after.
    virtual void fieldWillChange() {}
    virtual void fieldDidChange() = 0;

    // Is told no more until it tracks again. May be called from inside a notification.
    void forgetFields();

    Observer() = default;
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    // While it lives, every field that is read is observed by `observer`, which forgets what it observed
    // before. Trackings nest: the innermost one gets the reads.
    class Tracking {
      public:
        explicit Tracking(Observer& observer);
        ~Tracking();
        Tracking(const Tracking&) = delete;
        Tracking& operator=(const Tracking&) = delete;

      private:
        Observer* m_previous;
    };

  protected:
    ~Observer() { forgetFields(); }

  private:
    friend class ObservableField;
    std::vector<const ObservableField*> m_fields; // each at most once
};

} // namespace quillane
