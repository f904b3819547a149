#include "Components/Picker.h"
#include "Components/Fonts.h"
#include <QAbstractItemView>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

namespace quillane {

// In the next turn, as whoever moves through the list selects first and makes current then.
void chooseWhatIsSelected(QComboBox& box) {
    const auto choose = [&box] {
        const auto selected = box.view()->selectionModel()->selectedIndexes();
        const bool isOpen = box.view()->isVisible();
        if (isOpen && !selected.isEmpty() && selected.front() != box.view()->currentIndex()) {
            const int row = selected.front().row();
            box.setCurrentIndex(row);
            box.hidePopup();
            emit box.activated(row);
        }
    };
    QObject::connect(box.view()->selectionModel(), &QItemSelectionModel::selectionChanged, &box, choose,
                     Qt::QueuedConnection);
}

Picker::Picker(const QString& name, const QStringList& choices, QWidget* parent)
    : QComboBox(parent) {
    setAccessibleName(name);
    setAccessibleDescription(name); // on Linux its name is what is chosen
    addItems(choices);
    setCurrentIndex(-1);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    Fonts::follow(this, [this] { setFont(Fonts::of(13, QFont::Medium)); });
    chooseWhatIsSelected(*this);
    connect(this, &QComboBox::currentIndexChanged, this, [this] { updateGeometry(); });
}

QSize Picker::sizeHint() const {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QSize words(fontMetrics().horizontalAdvance(currentText()), fontMetrics().height());
    return style()->sizeFromContents(QStyle::CT_ComboBox, &option, words, this);
}

// The list is as wide as its longest choice, whichever is chosen now.
void Picker::showPopup() {
    constexpr int kSides = 24;
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + kSides);
    QComboBox::showPopup();
}

void Picker::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace quillane
