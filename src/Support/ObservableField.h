#pragma once
#include <vector>

namespace quillane {

class Observer;

// The part of a Published that does not depend on its type: who observes it. Main thread only.
class ObservableField {
  public:
    ObservableField(const ObservableField&) = delete;
    ObservableField& operator=(const ObservableField&) = delete;

  protected:
    ObservableField() = default;
    // Must not happen inside a notification of this field.
    ~ObservableField();

    // Tells the field to whoever tracks now, if anyone.
    void track() const;
    void tellWillChange() const;
    void tellDidChange() const;

  private:
    friend class Observer;
    void join(Observer& observer) const;
    void leave(Observer& observer) const;
    void tell(void (Observer::*message)()) const;

    // An observer that leaves during a notification leaves a null behind, so that indices stay true; one
    // that joins comes after the end of the notification and is not told.
    mutable std::vector<Observer*> m_observers;
    mutable int m_telling = 0;
};

} // namespace quillane
