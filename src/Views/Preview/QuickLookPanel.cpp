#include "Preview/QuickLookPanel.h"
#include "AppLibrary.h"
#include "Clock.h"
#include "Components/Announcement.h"
#include "Components/DateWords.h"
#include "Components/Label.h"
#include "Components/LibraryObserver.h"
#include "Components/Rule.h"
#include "Components/ShownText.h"
#include "Components/Spinner.h"
#include "Components/SymbolButton.h"
#include "Components/Tokens.h"
#include "Formatting.h"
#include "Preview/PictureView.h"
#include "Sleep.h"
#include "State/ContentState.h"
#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTextDocument>
#include <QVBoxLayout>
#include <utility>

namespace quillane {

namespace {

constexpr int kMargin = 16;
constexpr int kSpinnerSide = 24;

QWidget* centred(QWidget* widget) {
    auto* const room = new QWidget;
    auto* const layout = new QVBoxLayout(room);
    layout->addWidget(widget, 0, Qt::AlignCenter);
    return room;
}

// Qt takes "[*]" in a title for a place of its own.
QString asTitle(QString name) {
    return name.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"));
}

bool movesInAList(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_Home || key == Qt::Key_End;
}

int stepOfPage(int key) {
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_PageUp:
        return -1;
    case Qt::Key_Right:
    case Qt::Key_PageDown:
        return 1;
    default:
        return 0;
    }
}

QString factsOf(const UserFile& file, const Clock& clock) {
    QString facts =
        words(rawValue(file.kind)) + QStringLiteral(" · ") + words(Formatting::byteCount(file.bytes));
    if (file.lastUsed) {
        facts += QStringLiteral(" · Last opened ") +
                 words(Formatting::relativeDescription(file.lastUsed, clock.now(), clock.calendar()));
    }
    return facts;
}

} // namespace

QuickLookPanel::QuickLookPanel(AppLibrary& library, ContentState& state, QWidget& window,
                               std::function<QWidget*()> list)
    : QDialog(&window)
    , m_library(library)
    , m_state(state)
    , m_contents(new QStackedWidget)
    , m_picture(new PictureView)
    , m_text(new QPlainTextEdit)
    , m_findList(std::move(list))
    , m_loader(library.platform(), [this](const auto& wish, const auto& look) { arrive(wish, look); })
    , m_tasks(library.platform().tasks) {
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(kLeastSize);
    resize(kDefaultSize);
    makeContents();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_contents, 1);
    layout->addWidget(new Rule(Rule::Weight::Edge, Qt::Horizontal));
    layout->addWidget(makeLowestRow());
    window.installEventFilter(this);
    m_observer = new LibraryObserver([this] { render(); }, this); // a child is told of, so after all members
    m_observer->renderNow();
}

// In the order of Content.
void QuickLookPanel::makeContents() {
    m_text->setReadOnly(true);
    m_text->setFrameShape(QFrame::NoFrame);
    m_text->setTabChangesFocus(true);
    m_text->document()->setDocumentMargin(kMargin);
    m_text->installEventFilter(this);
    m_contents->addWidget(new QWidget);
    m_contents->addWidget(centred(new Spinner(kSpinnerSide)));
    auto* const frame = new QWidget;
    auto* const layout = new QVBoxLayout(frame);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addWidget(m_picture);
    m_contents->addWidget(frame);
    m_contents->addWidget(m_text);
    m_contents->addWidget(makeFacts());
}

QWidget* QuickLookPanel::makeFacts() {
    m_icon = new PictureView;
    m_icon->setFixedSize(kIconSide, kIconSide);
    m_name = Label::wrapped({}, TextStyle::detailTitle());
    m_sentence = Label::wrapped({}, TextStyle::bodySecondary());
    m_name->setAlignment(Qt::AlignCenter);
    m_sentence->setAlignment(Qt::AlignCenter);
    auto* const facts = new QWidget;
    auto* const layout = new QVBoxLayout(facts);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->addStretch();
    layout->addWidget(m_icon, 0, Qt::AlignHCenter);
    layout->addWidget(m_name);
    layout->addWidget(m_sentence);
    layout->addStretch();
    return facts;
}

QWidget* QuickLookPanel::makeLowestRow() {
    m_facts = new Label({}, TextStyle::secondary());
    m_pages = new Label({}, TextStyle::secondary());
    m_pages->setTabular(true);
    m_previous = new SymbolButton(QStringLiteral("chevron.left"), QStringLiteral("Previous Page"));
    m_next = new SymbolButton(QStringLiteral("chevron.right"), QStringLiteral("Next Page"));
    connect(m_previous, &QPushButton::clicked, this, [this] { turnPage(-1); });
    connect(m_next, &QPushButton::clicked, this, [this] { turnPage(1); });
    auto* const row = new QWidget;
    row->setMinimumHeight(m_next->sizeHint().height() + kMargin); // nothing moves when a document comes
    auto* const layout = new QHBoxLayout(row);
    layout->setContentsMargins(kMargin, kMargin / 2, kMargin, kMargin / 2);
    layout->addWidget(m_facts, 1);
    layout->addWidget(m_previous);
    layout->addWidget(m_pages);
    layout->addWidget(m_next);
    return row;
}

QuickLookPanel::Content QuickLookPanel::content() const {
    return static_cast<Content>(m_contents->currentIndex());
}

QString QuickLookPanel::sentence() const {
    return m_sentence->text();
}

QString QuickLookPanel::facts() const {
    return m_facts->text();
}

QString QuickLookPanel::pageWords() const {
    return m_pages->isVisibleTo(this) ? m_pages->text() : QString();
}

// The state may change while it is drawn: opening moves the keyboard, and others listen to that.
void QuickLookPanel::render() {
    const auto url = m_state.quickLookURL.get();
    const auto section = m_state.section.get();
    if (!url) {
        dismiss();
    } else if (m_url && section != m_section) {
        m_state.quickLookURL = std::nullopt;
    } else if (!m_url) {
        m_section = section;
        begin(*url);
    } else if (*m_url != *url) {
        look(*url);
    }
}

void QuickLookPanel::begin(const FileURL& url) {
    m_keyboard = parentWidget()->focusWidget();
    m_list = m_findList();
    look(url);
    show();
    activateWindow();
    setFocus();
}

void QuickLookPanel::dismiss() {
    if (!m_url) {
        return;
    }
    m_url.reset();
    m_isLoading = false;
    ++m_loads;
    m_loader.drop();
    m_picture->setPicture(nullptr, {});
    m_text->clear();
    const bool hadKeyboard = isActiveWindow();
    hide();
    if (hadKeyboard) { // else the user has gone elsewhere by himself
        parentWidget()->activateWindow();
        if (m_keyboard && m_keyboard->isVisible()) {
            m_keyboard->setFocus();
        }
    }
}

void QuickLookPanel::look(const FileURL& url) {
    m_url = url;
    m_file.reset();
    m_pageCount = 1;
    const auto name = shownName(url.lastPathComponent());
    setWindowTitle(asTitle(name));
    m_name->setText(name);
    announce(*this, name);
    load(url, 0);
    showLowestRow();
}

// What was there goes at once: it would stand below the name of another file.
void QuickLookPanel::load(const FileURL& url, int page) {
    const double ratio = parentWidget()->devicePixelRatioF();
    const QSize most = parentWidget()->screen()->availableSize() * ratio;
    m_page = page;
    m_isLoading = true;
    m_contents->setCurrentIndex(static_cast<int>(Content::nothing));
    m_loader.load({.url = url,
                   .page = page,
                   .size = {most.width(), most.height()},
                   .iconSide = static_cast<int>(kIconSide * ratio)});
    m_tasks.start(
        [this, load = ++m_loads](StopToken stop) { return showWorkAfterAMoment(load, std::move(stop)); });
}

Task<> QuickLookPanel::showWorkAfterAMoment(int load, StopToken stop) {
    co_await Sleep(m_library.platform(), kMoment, std::move(stop));
    if (m_isLoading && load == m_loads) {
        m_contents->setCurrentIndex(static_cast<int>(Content::loading));
    }
}

void QuickLookPanel::arrive(const PreviewLoader::Wish& wish, const PreviewLoader::Look& look) {
    if (!m_url || wish.url != *m_url || wish.page != m_page) {
        return;
    }
    m_isLoading = false;
    m_file = look.file;
    if (look.page) {
        showPage(*look.page);
    } else {
        showIcon(look);
    }
    showLowestRow();
}

void QuickLookPanel::showPage(const PreviewPage& page) {
    m_pageCount = page.count;
    if (page.picture) {
        m_picture->setPicture(page.picture, m_name->text());
        m_contents->setCurrentIndex(static_cast<int>(Content::picture));
        return;
    }
    QFont font = TextStyle::row().font();
    font.setFamilies({QStringLiteral("monospace")});
    font.setStyleHint(QFont::Monospace);
    m_text->setFont(font);
    m_text->setPlainText(QString::fromStdString(page.text));
    m_text->setAccessibleName(m_name->text());
    m_contents->setCurrentIndex(static_cast<int>(Content::text));
}

void QuickLookPanel::showIcon(const PreviewLoader::Look& look) {
    m_icon->setPicture(look.icon, {});
    QString sentence;
    if (!look.isThere) {
        sentence = QStringLiteral("This file is no longer here.");
    } else if (m_page > 0) {
        sentence = QStringLiteral("This page can't be shown.");
    }
    m_sentence->setText(sentence);
    m_sentence->setVisible(!sentence.isEmpty());
    m_contents->setCurrentIndex(static_cast<int>(Content::facts));
    if (!sentence.isEmpty()) {
        announce(*this, m_name->text() + QStringLiteral(". ") + sentence);
    }
}

void QuickLookPanel::showLowestRow() {
    m_facts->setText(m_file ? factsOf(*m_file, m_library.platform().clock) : QString());
    const bool hasPages = m_pageCount > 1;
    m_pages->setText(
        words("Page " + Formatting::number(m_page + 1) + " of " + Formatting::number(m_pageCount)));
    for (auto* const widget : std::initializer_list<QWidget*>{m_previous, m_pages, m_next}) {
        widget->setVisible(hasPages);
    }
    m_previous->setEnabled(m_page > 0);
    m_next->setEnabled(m_page + 1 < m_pageCount);
}

void QuickLookPanel::turnPage(int steps) {
    const int page = m_page + steps;
    if (m_url && page >= 0 && page < m_pageCount) {
        load(*m_url, page);
        showLowestRow();
        announce(*this, m_name->text() + QStringLiteral(", ") + m_pages->text());
    }
}

void QuickLookPanel::reject() {
    m_state.quickLookURL = std::nullopt;
}

// Hidden at once: a window that stands refuses the program's end.
void QuickLookPanel::closeEvent(QCloseEvent* event) {
    reject();
    m_observer->renderNow();
    event->accept();
}

void QuickLookPanel::keyPressEvent(QKeyEvent* event) {
    const bool isSpace = event->key() == Qt::Key_Space;
    if ((isSpace && !event->isAutoRepeat()) || event->matches(QKeySequence::Close)) {
        reject();
    } else if (!isSpace && !pass(*event)) {
        QDialog::keyPressEvent(event);
    }
}

// True where the key has done its work.
bool QuickLookPanel::pass(const QKeyEvent& event) {
    if (movesInAList(event.key()) && m_list) {
        QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.text(), event.isAutoRepeat());
        QCoreApplication::sendEvent(m_list, &copy);
        return true;
    }
    const int step = stepOfPage(event.key());
    if (step != 0 && m_pageCount > 1) {
        turnPage(step);
        return true;
    }
    return scroll(event.key());
}

bool QuickLookPanel::scroll(int key) {
    if (content() != Content::text || (key != Qt::Key_PageUp && key != Qt::Key_PageDown)) {
        return false;
    }
    m_text->verticalScrollBar()->triggerAction(key == Qt::Key_PageUp ? QScrollBar::SliderPageStepSub
                                                                     : QScrollBar::SliderPageStepAdd);
    return true;
}

bool QuickLookPanel::event(QEvent* event) {
    if (m_url && dateWordsMayDiffer(*event)) {
        showLowestRow();
    }
    return QDialog::event(event);
}

// The text has keys of its own, but not for Space; and the window's end is the panel's.
bool QuickLookPanel::eventFilter(QObject* object, QEvent* event) {
    if (object == m_text && event->type() == QEvent::KeyPress) {
        auto* const press = static_cast<QKeyEvent*>(event);
        if (press->key() == Qt::Key_Space) {
            keyPressEvent(press);
            return true;
        }
    }
    if (object == parent() && event->type() == QEvent::Hide && !event->spontaneous() &&
        m_state.quickLookURL.get()) {
        m_state.quickLookURL = std::nullopt;
    }
    return QDialog::eventFilter(object, event);
}

} // namespace quillane
