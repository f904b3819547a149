#pragma once
#include "FileURL.h"
#include "Panes/PaneList.h"
#include <optional>
#include <vector>

namespace quillane {

class CopiesModel;

// The copies of a group, one of which is to stay. A row is two controls: the copy itself, as a radio button, and a
// button that looks at it. The keyboard is on one of them: up and down go to other rows, left and right from one
// control of the row to the other, and so does Tab, which leaves the list behind the second; Space and Return press.
// Who comes by Tab comes to the copy that would stay. Assistive tools meet the same; see CopiesAccessible.
class CopiesList : public PaneList {
    Q_OBJECT
  public:
    struct Row {
        FileURL url; // identity
        QString folder;
        QString opened;
        QString name;          // behind `opened`; empty where the folder says enough
        bool isNewest = false; // bears that word
        bool isChosen = false;
        bool isProtected = false; // bears the mark of what stays
        friend bool operator==(const Row&, const Row&) = default;
    };
    enum class Part { Choice, Look };
    // Beyond Qt's own: DisplayRole is the folder, CheckStateRole whether it would stay, AccessibleTextRole all of it.
    enum Role { SecondLineRole = Qt::UserRole, NewestRole, ProtectedRole };

    // `name` is what assistive tools call the list.
    explicit CopiesList(const QString& name, QWidget* parent = nullptr);

    void setRows(std::vector<Row> rows);
    // What the keyboard is on in the current row.
    Part part() const { return m_part; }
    // Where this part of a row lies, in the viewport.
    QRect placeOf(const QModelIndex& row, Part part) const;
    // As a click would.
    void press(const QModelIndex& row, Part part);
    // Brings the keyboard there.
    void go(const QModelIndex& row, Part part);

    static QString lookName();

  signals:
    void chosen(const quillane::FileURL& copy);
    void lookWanted(const quillane::FileURL& copy);
    // A key has brought the keyboard to this row.
    void wentTo(const quillane::FileURL& copy);

  protected:
    int rowHeight() const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    bool focusNextPrevChild(bool next) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

  private:
    struct Place {
        QPersistentModelIndex row;
        Part part = Part::Choice;
        friend bool operator==(const Place&, const Place&) = default;
    };
    std::optional<Place> placeAt(const QPoint& at) const;
    QModelIndex chosenRow() const;
    void setPart(Part part);

    CopiesModel* m_model;
    Part m_part = Part::Choice;
    std::optional<Place> m_pressed; // where the button of the mouse went down
};

} // namespace quillane
