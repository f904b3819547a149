#pragma once
#include "Bytes.h"
#include "SweepCategory.h"
#include <QWidget>

namespace quillane {

// What one category gave back: its symbol and title, and the size at the right.
class SweepResultRow : public QWidget {
    Q_OBJECT
  public:
    SweepResultRow(SweepCategory category, Bytes bytes, QWidget* parent = nullptr);

    SweepCategory category() const { return m_category; }
    QString sizeText() const { return m_size; }

  private:
    SweepCategory m_category;
    QString m_size;
};

} // namespace quillane
