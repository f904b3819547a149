#include "Files/LensBar.h"
#include "AppLibrary.h"
#include "Components/FocusRing.h"
#include "Components/Hairline.h"
#include "Components/LibraryObserver.h"
#include "Components/Picker.h"
#include "Components/PushButton.h"
#include "Components/SegmentedControl.h"
#include "Components/ShownText.h"
#include "Components/TextField.h"
#include "Components/Tokens.h"
#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

namespace quillane {

namespace {

constexpr int kEdge = 16;
constexpr int kAbove = 10;
constexpr int kGap = 8;
constexpr int kFieldHeight = 30;

QStringList lensNames() {
    QStringList names;
    for (const auto mode : kAllFilesModes) {
        names << words(rawValue(mode));
    }
    return names;
}

int indexOf(FilesMode mode) {
    return static_cast<int>(std::ranges::find(kAllFilesModes, mode) - kAllFilesModes.begin());
}

// The picker's first entry is any kind.
int indexOf(std::optional<UserFile::Kind> kind) {
    return kind
               ? 1 + static_cast<int>(std::ranges::find(kAllUserFileKinds, *kind) - kAllUserFileKinds.begin())
               : 0;
}

} // namespace

LensBar::LensBar(AppLibrary& library, QWidget* parent)
    : QWidget(parent)
    , m_library(library)
    , m_lenses(new SegmentedControl(QStringLiteral("Files to show"), lensNames()))
    , m_text(new TextField)
    , m_kind(new QComboBox)
    , m_search(new PushButton(QStringLiteral("Search"), {}, PushButton::Role::Filled))
    , m_searchRow(makeSearchRow()) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(kEdge, kAbove, kEdge, kAbove);
    column->setSpacing(kAbove);
    column->addWidget(m_lenses, 0, Qt::AlignHCenter);
    column->addWidget(m_searchRow);
    connect(m_lenses, &SegmentedControl::currentChanged, this, &LensBar::choose);
    connect(m_text, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_library.fileSearchText = text.toStdString(); });
    connect(m_text, &QLineEdit::returnPressed, this, [this] { m_library.loadFiles(); });
    connect(m_kind, &QComboBox::activated, this, &LensBar::chooseKind);
    connect(m_search, &QPushButton::clicked, this, [this] { m_library.loadFiles(); });
    auto* const observer = new LibraryObserver([this] { render(); }, this);
    observer->renderNow();
}

QWidget* LensBar::makeSearchRow() {
    m_text->setPlaceholderText(QStringLiteral("Name, or text inside the file"));
    m_text->setAccessibleName(QStringLiteral("Name, or text inside the file"));
    m_text->setMinimumHeight(kFieldHeight);
    m_kind->setAccessibleName(QStringLiteral("Kind"));
    m_kind->setAccessibleDescription(QStringLiteral("Kind")); // on Linux its name is what is chosen
    m_kind->setMinimumHeight(kFieldHeight);
    m_search->setMinimumHeight(kFieldHeight);
    fillKinds();
    chooseWhatIsSelected(*m_kind);
    auto* const searchRow = new QWidget;
    auto* const row = new QHBoxLayout(searchRow);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(kGap);
    row->addWidget(m_text, 1);
    row->addWidget(m_kind);
    row->addWidget(m_search);
    return searchRow;
}

void LensBar::fillKinds() {
    m_kind->addItem(QStringLiteral("Any kind"));
    for (const auto kind : kAllUserFileKinds) {
        m_kind->addItem(words(rawValue(kind)));
    }
}

// What is typed stays as it is: the library has the same words, and the cursor its place.
void LensBar::render() {
    m_lenses->setCurrentIndex(indexOf(m_library.filesMode()));
    const auto text = QString::fromStdString(*m_library.fileSearchText);
    if (m_text->text() != text) {
        m_text->setText(text);
    }
    m_kind->setCurrentIndex(indexOf(*m_library.fileSearchKind));
    m_searchRow->setVisible(m_library.filesMode() == FilesMode::search);
}

// A click on the search lens means to type; who walks through the lenses by keys stays among them.
void LensBar::choose(int lens) {
    const auto mode = kAllFilesModes.at(static_cast<std::size_t>(lens));
    m_library.setFilesMode(mode);
    if (mode == FilesMode::search && !FocusRing::isShownFor(QApplication::focusWidget())) {
        m_searchRow->show();
        m_text->setFocus(Qt::OtherFocusReason);
    }
}

void LensBar::chooseKind(int index) {
    const auto kind =
        index == 0 ? std::nullopt : std::optional(kAllUserFileKinds.at(static_cast<std::size_t>(index - 1)));
    if (kind != m_library.fileSearchKind.peek()) {
        m_library.fileSearchKind = kind;
        m_library.loadFiles();
    }
}

// Return searches wherever it is pressed. The field has done so itself when its key comes by.
void LensBar::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!isReturn || !m_searchRow->isVisible()) {
        QWidget::keyPressEvent(event);
    } else if (!m_text->hasFocus() && !event->isAutoRepeat()) {
        m_library.loadFiles();
    }
}

void LensBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens::current().base);
    Hairline::fill(painter, QRect(0, height() - 1, width(), 1), Tokens::current().line);
}

} // namespace quillane
