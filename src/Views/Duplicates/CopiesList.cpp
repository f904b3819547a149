#include "Duplicates/CopiesList.h"
#include "Components/ProtectedMark.h"
#include "Components/ShownText.h"
#include "Components/ToolTipText.h"
#include "Duplicates/CopiesAccessible.h"
#include "Duplicates/CopiesDelegate.h"
#include "Tables/RowModel.h"
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <utility>

namespace quillane {

class CopiesModel : public RowModel<CopiesList::Row, FileURL> {
  public:
    explicit CopiesModel(QObject* parent)
        : RowModel(parent) {}

    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
            return {};
        }
        const auto& shown = row(index.row());
        switch (role) {
        case Qt::DisplayRole:
            return shown.folder;
        case Qt::CheckStateRole:
            return static_cast<int>(shown.isChosen ? Qt::Checked : Qt::Unchecked);
        case Qt::ToolTipRole:
            return toolTipText(shownName(shown.url.path()));
        case Qt::AccessibleTextRole:
            return spoken(shown);
        case Qt::AccessibleDescriptionRole:
            return shownName(shown.url.path());
        case CopiesList::SecondLineRole:
            return secondLine(shown);
        case CopiesList::NewestRole:
            return shown.isNewest;
        case CopiesList::ProtectedRole:
            return shown.isProtected;
        default:
            return {};
        }
    }

  protected:
    const FileURL& key(const CopiesList::Row& row) const override { return row.url; }

  private:
    static QString secondLine(const CopiesList::Row& row) {
        return row.name.isEmpty() ? row.opened : row.opened + QStringLiteral(" • ") + row.name;
    }
    static QString spoken(const CopiesList::Row& row) {
        QStringList parts{row.folder};
        if (row.isNewest) {
            parts << CopiesDelegate::newestWord();
        }
        parts << row.opened << row.name;
        if (row.isProtected) {
            parts << ProtectedMark::helpText();
        }
        parts.removeAll(QString());
        return parts.join(QStringLiteral(", "));
    }
};

CopiesList::CopiesList(const QString& name, QWidget* parent)
    : PaneList(parent) {
    CopiesAccessible::install(); // first, as whoever asks before is given another one for good
    setAccessibleName(name);
    m_model = new CopiesModel(this);
    setModel(m_model);
    setItemDelegate(new CopiesDelegate(this));
}

QString CopiesList::lookName() {
    return QStringLiteral("Quick Look");
}

void CopiesList::setRows(std::vector<Row> rows) {
    const QPersistentModelIndex before = chosenRow();
    fill([&] { m_model->update(std::move(rows)); });
    CopiesAccessible::forgetGone(*this);
    if (const QModelIndex now = chosenRow(); now != before) {
        CopiesAccessible::tellChoice(*this, before);
        CopiesAccessible::tellChoice(*this, now);
    }
}

int CopiesList::rowHeight() const {
    return CopiesDelegate::rowHeight();
}

QModelIndex CopiesList::chosenRow() const {
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_model->row(row).isChosen) {
            return m_model->index(row, 0);
        }
    }
    return {};
}

QRect CopiesList::placeOf(const QModelIndex& row, Part part) const {
    const QRect whole = visualRect(row);
    return part == Part::Look ? CopiesDelegate::lookOf(whole) : whole;
}

std::optional<CopiesList::Place> CopiesList::placeAt(const QPoint& at) const {
    const QModelIndex row = indexAt(at);
    if (!row.isValid()) {
        return std::nullopt;
    }
    return Place{row, placeOf(row, Part::Look).contains(at) ? Part::Look : Part::Choice};
}

void CopiesList::press(const QModelIndex& row, Part part) {
    if (!row.isValid()) {
        return;
    }
    const FileURL copy = m_model->keyAt(row.row()); // the answer may fill the list anew
    if (part == Part::Choice) {
        emit chosen(copy);
    } else {
        emit lookWanted(copy);
    }
}

void CopiesList::go(const QModelIndex& row, Part part) {
    setFocus(Qt::OtherFocusReason);
    setCurrentIndex(row);
    setPart(part);
}

void CopiesList::setPart(Part part) {
    if (std::exchange(m_part, part) != part) {
        viewport()->update();
        if (hasFocus()) {
            CopiesAccessible::tellFocus(*this);
        }
    }
}

// The keys that go sideways stay in the row.
QModelIndex CopiesList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    if (action == MoveLeft || action == MoveRight) {
        setPart(action == MoveRight ? Part::Look : Part::Choice);
        return currentIndex();
    }
    return PaneList::moveCursor(action, modifiers);
}

bool CopiesList::focusNextPrevChild(bool next) {
    const Part other = next ? Part::Look : Part::Choice;
    if (currentIndex().isValid() && m_part != other) {
        setPart(other);
        return true;
    }
    return PaneList::focusNextPrevChild(next);
}

void CopiesList::focusInEvent(QFocusEvent* event) {
    const bool isTab = event->reason() == Qt::TabFocusReason;
    if (isTab || event->reason() == Qt::BacktabFocusReason) {
        m_part = isTab ? Part::Choice : Part::Look;
        setCurrentIndex(chosenRow());
    }
    PaneList::focusInEvent(event);
    QMetaObject::invokeMethod(
        this,
        [this] { // in the next turn, as the focus of the list itself is told after this
            if (hasFocus()) {
                CopiesAccessible::tellFocus(*this);
            }
        },
        Qt::QueuedConnection);
}

void CopiesList::keyPressEvent(QKeyEvent* event) {
    const bool isPress =
        event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isPress || event->modifiers() & ~Qt::KeypadModifier) {
        const QPersistentModelIndex before = currentIndex();
        PaneList::keyPressEvent(event);
        if (const QModelIndex now = currentIndex(); now.isValid() && now != before) {
            emit wentTo(m_model->keyAt(now.row()));
        }
    } else if (!event->isAutoRepeat()) {
        press(currentIndex(), m_part);
    }
}

void CopiesList::mousePressEvent(QMouseEvent* event) {
    PaneList::mousePressEvent(event);
    m_pressed = event->button() == Qt::LeftButton ? placeAt(event->pos()) : std::nullopt;
    if (m_pressed) {
        setPart(m_pressed->part);
    }
}

void CopiesList::mouseReleaseEvent(QMouseEvent* event) {
    PaneList::mouseReleaseEvent(event);
    const auto pressed = std::exchange(m_pressed, std::nullopt);
    if (event->button() == Qt::LeftButton && pressed && placeAt(event->pos()) == pressed) {
        press(pressed->row, pressed->part);
    }
}

// Leaves QListView out, which tells assistive tools of rows alone.
void CopiesList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
    if (hasFocus()) {
        CopiesAccessible::tellFocus(*this);
    }
}

} // namespace quillane
