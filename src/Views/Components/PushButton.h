#pragma once
#include "Components/Tint.h"
#include <QPushButton>

namespace quillane {

// A push button with a part to play. Nothing here is the default button of a dialog unless setDefault makes
// it so; a destructive one never should be.
class PushButton : public QPushButton {
    Q_OBJECT
  public:
    enum class Role {
        Normal,
        Filled,      // the one main action of its place
        Destructive, // red words on a normal button
        Permanent,   // white on red: deletes for good
        Plain,       // without an edge
    };
    enum class Size { Small = 22, Regular = 28, Sheet = 32, Hero = 40 };

    // `text` is shown as it is: an ampersand in it is an ampersand.
    explicit PushButton(const QString& text, const QString& symbol = {}, Role role = Role::Normal,
                        Size size = Size::Regular, QWidget* parent = nullptr);

    Role role() const { return m_role; }
    void setRole(Role role);
    Size buttonSize() const { return m_size; }
    QString label() const { return m_label; }
    void setLabel(const QString& label);
    QString symbol() const { return m_symbol; }
    void setSymbol(const QString& symbol);
    // Shows the symbol alone, with the label as tooltip and accessible name. Only with a symbol.
    void setCompact(bool compact);
    bool isCompact() const { return m_compact; }
    static constexpr int kCompactWidth = 30;
    // The width with the label, whether it is shown now or not.
    int fullWidth() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void wearFont();
    void dress();
    QSize sizeFor(bool compact) const;

    QString m_label;
    QString m_symbol;
    Role m_role;
    Size m_size;
    bool m_compact = false;
};

} // namespace quillane
