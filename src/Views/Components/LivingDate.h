#pragma once
#include "Components/RelativeDateTimer.h"
#include "Date.h"
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

class QWidget;

namespace quillane {

// Keeps words that say how long ago something was true while a widget shows them: they are told anew when they have
// become others, and when the widget comes back in sight or in front. While it is hidden this costs nothing.
// Main thread only.
class LivingDate : public QObject {
    Q_OBJECT
  public:
    // `tell` puts the words of now on the widget, which owns this. The clock outlives both.
    LivingDate(Clock& clock, std::function<void()> tell, QWidget* widget);

    // This date from now on, or none; the words are told anew.
    void follow(const std::optional<Date>& date);
    const std::optional<Date>& date() const { return m_date; }
    // "3 minutes ago"; "Never" without a date.
    QString words() const;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void wait();

    Clock& m_clock;
    std::function<void()> m_tell;
    QWidget& m_widget;
    std::optional<Date> m_date;
    RelativeDateTimer m_timer;
};

} // namespace quillane
