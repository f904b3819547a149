#pragma once
#include <QWidget>

namespace quillane {

class FittedLabel;
class Label;

// One statistic: a small label above its value. `emphasized` gives the value the accent colour.
class Stat : public QWidget {
    Q_OBJECT
  public:
    Stat(const QString& label, const QString& value, bool emphasized = false, QWidget* parent = nullptr);

    QString label() const;
    QString value() const;
    void setValue(const QString& value);
    void setLabel(const QString& label);
    void setEmphasized(bool emphasized);
    bool isEmphasized() const;

  private:
    Label* m_label;
    FittedLabel* m_value;
};

} // namespace quillane
