#pragma once
#include <QAccessibleWidget>

namespace quillane {

class HeaderView;

// What assistive tools meet while a header has the focus: the heading of the column that the keys act on, and
// whether the rows are sorted by it. A press does then what a click on that heading does.
class HeaderAccessible : public QAccessibleWidget {
  public:
    explicit HeaderAccessible(HeaderView* header);

    // Every header is met so from now on. May be called again.
    static void install();

    QString text(QAccessible::Text which) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;

  private:
    HeaderView& header() const;
};

} // namespace quillane
