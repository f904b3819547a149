#pragma once
#include "Components/Card.h"
#include "UninstallerReport.h"
#include <functional>
#include <vector>

class QAbstractButton;
class QListView;

namespace quillane {

class PushButton;
class Rule;

// What a sweep could not take: one line, closed at first, that opens to a list.
class FailuresView : public Card {
    Q_OBJECT
  public:
    // `failures` is not empty. `onGrantAccess` opens the system's settings.
    FailuresView(std::vector<Uninstaller::Failure> failures, std::function<void()> onGrantAccess,
                 QWidget* parent = nullptr);

    static constexpr int kHighestList = 120;

    // "2 blocked by macOS"; empty when nothing failed for lack of access.
    static QString cause(const std::vector<Uninstaller::Failure>& failures);

    bool showingFailures() const { return m_showingFailures; }
    void setShowingFailures(bool showing);
    QAbstractButton* disclosure() const { return m_disclosure; }
    // Null when nothing failed for lack of access.
    PushButton* grantButton() const { return m_grant; }
    QListView* list() const { return m_list; }
    QString count() const { return m_count; }
    QString cause() const { return m_cause; }

  private:
    QString m_count;
    QString m_cause;
    bool m_showingFailures = false;
    QAbstractButton* m_disclosure;
    PushButton* m_grant = nullptr;
    Rule* m_rule;
    QListView* m_list;
};

} // namespace quillane
