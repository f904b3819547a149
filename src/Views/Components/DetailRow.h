#pragma once
#include <QWidget>

namespace quillane {

class Label;
class ValueField;

// One row of a detail list: label on the left, value on the right. The value can be selected; when it is too
// long it is elided in the middle and stands whole in the tooltip.
class DetailRow : public QWidget {
    Q_OBJECT
  public:
    DetailRow(const QString& label, const QString& value, QWidget* parent = nullptr);

    QString label() const;
    QString value() const;
    void setValue(const QString& value);

  private:
    Label* m_label;
    ValueField* m_value;
};

} // namespace quillane
