#pragma once
#include "Components/Tint.h"
#include <QSize>
#include <QWidget>

class QPainter;
class QRectF;

namespace quillane {

// A small capsule with a word, and before it a symbol where there is one, in the tint.
class Badge : public QWidget {
    Q_OBJECT
  public:
    enum class Kind {
        Chip,      // 22 high: facts about the selected thing
        Capsule,   // 18 high, semibold: counts and states in lists
        State,     // 18 high, semibold and a little smaller: the state of a row
        Permanent, // 16 high, small capitals: "PERMANENT"
    };
    Badge(const QString& text, const QString& symbol, Tint tint = Tint::Secondary, Kind kind = Kind::Chip,
          QWidget* parent = nullptr);
    // The word "PERMANENT" in red.
    static Badge* permanent(QWidget* parent = nullptr);

    QString text() const { return m_text; }
    QString symbol() const { return m_symbol; }
    Tint tint() const { return m_tint; }
    void setContent(const QString& text, const QString& symbol, Tint tint);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    // The same mark for delegates. With `onSelection` it is drawn white on white, for a selected row that has
    // the focus.
    static QSize sizeOf(const QString& text, const QString& symbol, Kind kind);
    static void draw(QPainter& painter, const QRectF& rect, const QString& text, const QString& symbol,
                     Tint tint, Kind kind, bool onSelection = false);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString m_text;
    QString m_symbol;
    Tint m_tint;
    Kind m_kind;
};

} // namespace quillane
