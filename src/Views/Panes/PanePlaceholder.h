#pragma once
#include <QWidget>

namespace quillane {

class EmptyState;

// The right column while nothing is selected.
class PanePlaceholder : public QWidget {
    Q_OBJECT
  public:
    PanePlaceholder(const QString& symbol, const QString& title, const QString& sentence,
                    QWidget* parent = nullptr);

    EmptyState* emptyState() const { return m_emptyState; }

  private:
    EmptyState* m_emptyState;
};

} // namespace quillane
