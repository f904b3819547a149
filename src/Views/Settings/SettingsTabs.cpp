#include "Settings/SettingsTabs.h"
#include "Components/FocusRing.h"
#include "Components/Fonts.h"
#include "Components/Symbols.h"
#include "Components/Tokens.h"
#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

namespace quillane {

namespace {

constexpr int kWidth = 92;
constexpr int kGap = 4;
constexpr int kAboveSymbol = 4;
constexpr int kSymbol = 21;
constexpr int kAboveWord = 4;
constexpr int kBelowWord = 6;
constexpr int kBesideWord = 12;
constexpr double kRadius = 8;

QFont fontOf(bool isCurrent) {
    return Fonts::of(12, isCurrent ? QFont::DemiBold : QFont::Normal);
}

class SettingsTab : public QAbstractButton {
  public:
    SettingsTab(const QString& symbol, const QString& words)
        : m_symbol(symbol)
        , m_words(words) {
        setAccessibleName(words);
        setCheckable(true);
        setFocusPolicy(Qt::ClickFocus);
        setAttribute(Qt::WA_Hover);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        setProperty("focusRadius", kRadius);
        Fonts::follow(this, [this] { updateGeometry(); });
    }

    QString symbol() const { return m_symbol; }

    // The same whether it is in front or not, so that tabs stand still.
    QSize sizeHint() const override {
        const QFontMetrics words(fontOf(true));
        return {std::max(kWidth, words.horizontalAdvance(m_words) + 2 * kBesideWord),
                kAboveSymbol + kSymbol + kAboveWord + words.height() + kBelowWord};
    }

  protected:
    void paintEvent(QPaintEvent*) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void paintGround(QPainter& painter) const;

    QString m_symbol;
    QString m_words;
};

void SettingsTab::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintGround(painter);
    Symbols::draw(painter, {(width() - kSymbol) / 2.0, kAboveSymbol}, kSymbol, m_symbol,
                  isChecked() ? tokens.link : tokens.text2);
    painter.setFont(fontOf(isChecked()));
    painter.setPen(isChecked() ? tokens.text : tokens.text2);
    painter.drawText(rect().adjusted(0, kAboveSymbol + kSymbol + kAboveWord, 0, -kBelowWord),
                     Qt::AlignCenter | Qt::TextSingleLine, m_words);
}

void SettingsTab::paintGround(QPainter& painter) const {
    const Tokens& tokens = Tokens::current();
    if (isChecked() || isDown() || underMouse()) {
        painter.setPen(isChecked() && tokens.highContrast ? QPen(tokens.line) : QPen(Qt::NoPen));
        painter.setBrush(isChecked() || isDown() ? tokens.side : faded(tokens.side, 0.45));
        const double inset = tokens.highContrast ? 0.5 : 0;
        painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), kRadius, kRadius);
    }
}

// The base moves within a group too, but without showing where the keyboard is.
void SettingsTab::keyPressEvent(QKeyEvent* event) {
    if (FocusRing::movesCursor(event->key())) {
        event->ignore();
    } else {
        QAbstractButton::keyPressEvent(event);
    }
}

// Not a button that can be checked, as the base would have it.
class TabAccessible : public QAccessibleWidget {
  public:
    explicit TabAccessible(SettingsTab* tab)
        : QAccessibleWidget(tab, QAccessible::PageTab)
        , m_tab(*tab) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = m_tab.isChecked();
        return state;
    }
    QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override {
        if (name == pressAction()) {
            m_tab.setChecked(true);
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

  private:
    SettingsTab& m_tab;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    if (auto* const tab = dynamic_cast<SettingsTab*>(object)) {
        return new TabAccessible(tab);
    }
    auto* const tabs = qobject_cast<SettingsTabs*>(object);
    return tabs != nullptr ? new QAccessibleWidget(tabs, QAccessible::PageTabList) : nullptr;
}

} // namespace

SettingsTabs::SettingsTabs(QWidget* parent)
    : QWidget(parent)
    , m_group(new QButtonGroup(this))
    , m_row(new QHBoxLayout(this)) {
    QAccessible::installFactory(makeAccessible); // which leaves out what is installed
    setAccessibleName(QStringLiteral("Settings"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(kGap);
    m_group->setExclusive(true);
    connect(m_group, &QButtonGroup::idToggled, this, &SettingsTabs::noticeTab);
}

void SettingsTabs::add(const QString& symbol, const QString& words) {
    auto* const tab = new SettingsTab(symbol, words);
    m_group->addButton(tab, count());
    m_row->addWidget(tab);
    if (currentIndex() < 0) {
        tab->setChecked(true);
    }
}

// Only the one in front is a stop of Tab.
void SettingsTabs::noticeTab(int index, bool isCurrent) {
    QAbstractButton* const button = tab(index);
    // Or would have it, once the window is in front.
    const bool hadKeyboard = isAncestorOf(window()->focusWidget());
    button->setFocusPolicy(isCurrent ? Qt::StrongFocus : Qt::ClickFocus);
    if (!isCurrent) {
        return;
    }
    setFocusProxy(button);
    if (hadKeyboard) {
        button->setFocus(Qt::OtherFocusReason);
    }
    emit currentChanged(index);
}

int SettingsTabs::count() const {
    return static_cast<int>(m_group->buttons().size());
}

QAbstractButton* SettingsTabs::tab(int index) const {
    return m_group->button(index);
}

QString SettingsTabs::symbol(int index) const {
    return static_cast<SettingsTab*>(tab(index))->symbol();
}

int SettingsTabs::currentIndex() const {
    return m_group->checkedId();
}

void SettingsTabs::setCurrentIndex(int index) {
    if (QAbstractButton* const button = tab(index)) {
        button->setChecked(true);
    }
}

void SettingsTabs::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    if (step == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    const int next = std::clamp(currentIndex() + step, 0, count() - 1);
    tab(next)->setFocus(Qt::TabFocusReason);
    setCurrentIndex(next);
}

} // namespace quillane
