#include "Updates/UpdateWindow.h"
#include "Components/Announcement.h"
#include "Components/Card.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/Spinner.h"
#include "Components/SymbolView.h"
#include "Components/Tokens.h"
#include <QApplication>
#include <QDateTime>
#include <QDesktopServices>
#include <QHBoxLayout>
#include <QLocale>
#include <QPainter>
#include <QPlainTextEdit>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>
#include <cmath>
#include <utility>

namespace quillane {
namespace {

using Failure = UpdatePresenter::Failure;

constexpr int kWidth = 500;
constexpr int kMargin = 20;
constexpr int kIconSide = 48;
constexpr int kNotesHeight = 168;
constexpr int kNotesMargin = 10;

// The ground of the notes, with a ring while the keyboard is in them.
class NotesCard final : public Card {
  public:
    explicit NotesCard(const QWidget* notes)
        : m_notes(notes) {
        connect(qApp, &QApplication::focusChanged, this, qOverload<>(&QWidget::update));
    }

  protected:
    void paintEvent(QPaintEvent* event) override {
        Card::paintEvent(event);
        if (m_notes->hasFocus() && FocusRing::isShownFor(m_notes)) {
            QPainter painter(this);
            FocusRing::drawInside(painter, rect(), kRadius);
        }
    }

  private:
    const QWidget* m_notes;
};

// The day in UTC, so that everyone is told the same.
QString dayOf(Date date) {
    const auto seconds = static_cast<qint64>(std::floor(date.secondsSince1970()));
    return QLocale::c().toString(QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).date(),
                                 QStringLiteral("MMMM d, yyyy"));
}

QString sentenceFor(Failure failure) {
    switch (failure) {
    case Failure::unreachable:
        return QStringLiteral(
            "The place where new versions are announced could not be reached. Try again when you "
            "are connected.");
    case Failure::notSigned:
        return QStringLiteral(
            "What was found there does not come from the makers of Quillane, so it was not read.");
    case Failure::unreadable:
        return QStringLiteral("The announcement of the newest version could not be read. Try again later.");
    case Failure::outdated:
        return QStringLiteral(
            "What was found is older than what was announced before, so it was passed over. Try "
            "again later.");
    }
    return {};
}

} // namespace

UpdateWindow::UpdateWindow(QWidget* parent)
    : QDialog(parent)
    , m_spinner(new Spinner(16))
    , m_title(Label::wrapped({}, TextStyle::columnTitle()))
    , m_sentence(Label::wrapped({}, TextStyle::bodySecondary()))
    , m_notes(new QPlainTextEdit)
    , m_card(new NotesCard(m_notes))
    , m_promise(Label::wrapped(
          QStringLiteral(
              "Quillane downloads and installs nothing by itself. Get the new version from its page, "
              "or the way you got this one."),
          TextStyle::caption()))
    , m_other(new PushButton({}, {}, PushButton::Role::Normal, PushButton::Size::Sheet))
    , m_main(new PushButton({}, {}, PushButton::Role::Filled, PushButton::Size::Sheet)) {
    setWindowTitle(QStringLiteral("Software Update"));
    makeNotes();
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    row->setSpacing(16);
    row->addWidget(new SymbolView(QStringLiteral("AppIcon"), kIconSide), 0, Qt::AlignTop);
    row->addLayout(makeWords(), 1);
    connect(m_other, &QPushButton::clicked, this, &UpdateWindow::reject);
    connect(m_main, &QPushButton::clicked, this, [this] {
        if (m_stage == Stage::update) {
            openPage();
        }
        accept();
    });
    Fonts::follow(this, [this] { fit(); });
}

void UpdateWindow::makeNotes() {
    m_notes->setReadOnly(true);
    m_notes->setFrameShape(QFrame::NoFrame);
    m_notes->setTabChangesFocus(true);
    m_notes->viewport()->setAutoFillBackground(false);
    m_notes->document()->setDocumentMargin(kNotesMargin);
    m_notes->setAccessibleName(QStringLiteral("What Is New"));
    auto* const frame = new QVBoxLayout(m_card);
    frame->setContentsMargins(2, 2, 2, 2);
    frame->addWidget(m_notes);
}

QVBoxLayout* UpdateWindow::makeWords() {
    auto* const line = new QHBoxLayout;
    line->setSpacing(8);
    line->addWidget(m_spinner);
    line->addWidget(m_sentence, 1);
    auto* const column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(m_title);
    column->addSpacing(6);
    column->addLayout(line);
    column->addWidget(makeDetails());
    column->addSpacing(16);
    column->addWidget(makeButtons());
    return column;
}

// Of an update alone.
QWidget* UpdateWindow::makeDetails() {
    m_details = new QWidget;
    auto* const column = new QVBoxLayout(m_details);
    column->setContentsMargins(0, 14, 0, 0);
    column->setSpacing(10); // none for notes that are not there
    column->addWidget(m_card);
    column->addWidget(m_promise);
    return m_details;
}

QWidget* UpdateWindow::makeButtons() {
    auto* const buttons = new QWidget;
    auto* const row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addStretch();
    row->addWidget(m_other);
    row->addWidget(m_main);
    return buttons;
}

void UpdateWindow::showChecking(std::function<void()> cancel) {
    m_cancel = std::move(cancel);
    m_other->setLabel(QStringLiteral("Cancel"));
    enter(Stage::checking, QStringLiteral("Checking for Updates"),
          QStringLiteral("Asking which version is the newest…"));
}

void UpdateWindow::showUpdate(const AppUpdate& update, const VersionNumber& installed) {
    m_page = update.page;
    m_notes->setPlainText(words(update.notes));
    m_other->setLabel(QStringLiteral("Not Now"));
    m_main->setLabel(QStringLiteral("Open Download Page"));
    m_main->setToolTip(words(update.page));
    enter(Stage::update, QStringLiteral("Quillane %1 Is Available").arg(words(update.version.text())),
          QStringLiteral("You have version %1. The new one was announced on %2.")
              .arg(words(installed.text()), dayOf(update.date)));
}

void UpdateWindow::showUpToDate(const VersionNumber& installed) {
    enter(Stage::upToDate, QStringLiteral("You Have the Newest Version"),
          QStringLiteral("Nothing newer than Quillane %1 was announced.").arg(words(installed.text())));
}

void UpdateWindow::showFailure(Failure failure) {
    enter(Stage::failure, QStringLiteral("Update Check Failed"), sentenceFor(failure));
}

void UpdateWindow::enter(Stage stage, const QString& title, const QString& sentence) {
    const bool hasChanged = std::exchange(m_stage, stage) != stage;
    const auto* const focused = focusWidget();
    const bool isChecking = stage == Stage::checking;
    const bool isUpdate = stage == Stage::update;
    if (!isChecking) {
        m_cancel = {};
    }
    if (!isUpdate) {
        m_main->setLabel(QStringLiteral("OK"));
        m_main->setToolTip({});
        m_notes->clear();
    }
    m_title->setText(title);
    m_sentence->setText(sentence);
    m_spinner->setVisible(isChecking);
    m_card->setVisible(!m_notes->document()->isEmpty());
    m_details->setVisible(isUpdate);
    m_other->setVisible(isChecking || isUpdate);
    m_main->setVisible(!isChecking);
    if (hasChanged || focused == nullptr || !focused->isVisibleTo(this)) {
        rest();
    }
    fit();
    announce(*this, title + QStringLiteral(". ") + sentence);
}

void UpdateWindow::rest() {
    auto* const harmless = m_other->isHidden() ? m_main : m_other;
    harmless->setDefault(true);
    harmless->setFocus();
}

void UpdateWindow::fit() {
    m_notes->setFont(TextStyle::body().font());
    m_card->setFixedHeight(static_cast<int>(kNotesHeight * Fonts::scale()));
    m_details->layout()->activate(); // the one outside asks what it knows of this one
    layout()->activate();
    setFixedSize(kWidth, layout()->totalHeightForWidth(kWidth));
}

void UpdateWindow::openPage() {
    const QUrl page(words(m_page), QUrl::StrictMode);
    if (page.isValid() && page.scheme() == QLatin1String("https")) {
        QDesktopServices::openUrl(page);
    }
}

void UpdateWindow::reject() {
    if (const auto cancel = std::exchange(m_cancel, {})) {
        cancel();
    }
    QDialog::reject();
}

void UpdateWindow::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), Tokens::current().page);
}

} // namespace quillane
