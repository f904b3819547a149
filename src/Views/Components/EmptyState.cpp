#include "Components/EmptyState.h"
#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/Spinner.h"
#include "Components/SymbolView.h"
#include <QVBoxLayout>
#include <algorithm>

namespace quillane {

namespace {
constexpr int kSymbol = 42;
constexpr int kSpinner = 28;
} // namespace

EmptyState::EmptyState(const QString& symbol, const QString& title, const QString& sentence, int textWidth,
                       QWidget* parent)
    : QWidget(parent)
    , m_symbol(new SymbolView(symbol, kSymbol, Tint::Tertiary))
    , m_spinner(new Spinner(kSpinner))
    , m_title(Label::wrapped(title, TextStyle::columnTitle()))
    , m_sentence(Label::wrapped(sentence, TextStyle::bodySecondary())) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(16, 16, 16, 16);
    column->setSpacing(4);
    column->addStretch();
    column->addWidget(m_symbol, 0, Qt::AlignHCenter);
    column->addWidget(m_spinner, 0, Qt::AlignHCenter);
    column->addSpacing(10);
    for (Label* label : {m_title, m_sentence}) {
        label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        label->setFixedWidth(textWidth);
        column->addWidget(label, 0, Qt::AlignHCenter);
    }
    column->addStretch();
    setContent(symbol, title, sentence);
    Fonts::follow(this, [this] { fitTexts(); }); // behind the labels, which take their fonts first
}

void EmptyState::setContent(const QString& symbol, const QString& title, const QString& sentence) {
    m_symbol->setSymbol(symbol, Tint::Tertiary);
    m_symbol->setVisible(!symbol.isEmpty());
    m_spinner->setVisible(false);
    setTexts(title, sentence);
}

void EmptyState::setLoading(const QString& title, const QString& sentence) {
    m_symbol->setVisible(false);
    m_spinner->setVisible(true);
    setTexts(title, sentence);
}

void EmptyState::setTexts(const QString& title, const QString& sentence) {
    m_title->setText(title);
    m_title->setVisible(!title.isEmpty());
    m_sentence->setText(sentence);
    m_sentence->setVisible(!sentence.isEmpty());
    fitTexts();
}

void EmptyState::fitTexts() {
    // A centred item of a box layout does not get the height that its width asks for.
    for (Label* label : {m_title, m_sentence}) {
        label->setMinimumHeight(0); // a label counts its own least height in
        label->setFixedHeight(std::max(0, label->heightForWidth(label->width())));
    }
}

bool EmptyState::isLoading() const {
    return !m_spinner->isHidden();
}

QString EmptyState::symbol() const {
    return m_symbol->symbol();
}

QString EmptyState::title() const {
    return m_title->text();
}

QString EmptyState::sentence() const {
    return m_sentence->text();
}

void EmptyState::setAction(QWidget* action) {
    auto* column = static_cast<QVBoxLayout*>(layout());
    const int behindSentence = column->indexOf(m_sentence) + 1;
    column->insertSpacing(behindSentence, 8);
    column->insertWidget(behindSentence + 1, action, 0, Qt::AlignHCenter);
}

} // namespace quillane
