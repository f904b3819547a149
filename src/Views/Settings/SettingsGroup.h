#pragma once
#include <QWidget>

class QVBoxLayout;

namespace quillane {

class Card;
class Label;

// Rows that belong together: on one card, perhaps with a heading above and a sentence below that tells more.
class SettingsGroup : public QWidget {
    Q_OBJECT
  public:
    // Empty words take no room.
    explicit SettingsGroup(const QString& heading = {}, const QString& footnote = {},
                           QWidget* parent = nullptr);

    // With a line above it when it is not the first.
    void addRow(QWidget* row);
    void setFootnote(const QString& words);
    Label* footnote() const { return m_footnote; }

  private:
    Label* m_heading;
    Card* m_card;
    QVBoxLayout* m_rows;
    Label* m_footnote;
};

} // namespace quillane
