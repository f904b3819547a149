#pragma once
#include <QWidget>

namespace quillane {

class Label;
class Spinner;
class SymbolView;

// What a table or pane says when it has nothing to show: symbol, title and a sentence, centred. While
// something is being looked for a spinner stands in the symbol's place.
class EmptyState : public QWidget {
    Q_OBJECT
  public:
    // The sentence breaks at `textWidth`: 340 in a section, 240 in the detail pane.
    static constexpr int kSectionWidth = 340;
    static constexpr int kDetailWidth = 240;

    EmptyState(const QString& symbol, const QString& title, const QString& sentence,
               int textWidth = kSectionWidth, QWidget* parent = nullptr);

    void setContent(const QString& symbol, const QString& title, const QString& sentence);
    void setLoading(const QString& title, const QString& sentence = {});
    bool isLoading() const;
    QString symbol() const;
    QString title() const;
    QString sentence() const;
    // Below the sentence, centred: at most one button or row of them.
    void setAction(QWidget* action);

  private:
    void setTexts(const QString& title, const QString& sentence);
    void fitTexts();

    SymbolView* m_symbol;
    Spinner* m_spinner;
    Label* m_title;
    Label* m_sentence;
};

} // namespace quillane
