#pragma once
#include <QWidget>

class QAbstractButton;
class QButtonGroup;
class QHBoxLayout;

namespace quillane {

// The tabs of the settings, each a symbol above a word. One is always in front. Left and right arrows go to the next
// one; Tab enters at the one in front and leaves. Assistive tools meet a list of tabs, of which one is selected.
class SettingsTabs : public QWidget {
    Q_OBJECT
  public:
    explicit SettingsTabs(QWidget* parent = nullptr);

    // The first one is in front.
    void add(const QString& symbol, const QString& words);
    int count() const;
    QAbstractButton* tab(int index) const;
    QString symbol(int index) const;

    int currentIndex() const;
    // Does not emit when the index is the current one or there is no such tab. The keyboard goes along when it was at
    // a tab.
    void setCurrentIndex(int index);

  signals:
    void currentChanged(int index);

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void noticeTab(int index, bool isCurrent);

    QButtonGroup* m_group;
    QHBoxLayout* m_row;
};

} // namespace quillane
