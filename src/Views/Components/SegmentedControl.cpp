#include "Components/SegmentedControl.h"
#include "Components/Fonts.h"
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

constexpr int kHeight = 30;
constexpr double kTrackRadius = 8;
constexpr double kSegmentRadius = 6;
constexpr int kInset = 2;
constexpr int kSides = 32;

class Segment : public QAbstractButton {
  public:
    explicit Segment(const QString& text) {
        setText(QString(text).replace(QLatin1Char('&'), QLatin1String("&&")));
        setAccessibleName(text);
        setCheckable(true);
        setFocusPolicy(Qt::ClickFocus);
        Fonts::follow(this, [this] { setFont(Fonts::of(13, QFont::Medium)); });
        setProperty("focusRadius", kSegmentRadius);
        m_label = text;
    }

    QSize sizeHint() const override {
        return {fontMetrics().horizontalAdvance(m_label) + kSides, Fonts::rowHeight(kHeight) - 2 * kInset};
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        const Tokens& tokens = Tokens::current();
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setOpacity(isEnabled() ? 1 : 0.45);
        if (isChecked()) {
            const QRectF ground = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
            painter.setPen(tokens.line);
            painter.setBrush(tokens.ctl);
            painter.drawRoundedRect(ground, kSegmentRadius, kSegmentRadius);
        }
        painter.setPen(isChecked() || isDown() ? tokens.text : tokens.text2);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, m_label);
    }

  private:
    QString m_label;
};

// One of several, and no box that is checked on its own, as the base would have it.
class SegmentAccessible : public QAccessibleWidget {
  public:
    explicit SegmentAccessible(Segment* segment)
        : QAccessibleWidget(segment, QAccessible::RadioButton)
        , m_segment(*segment) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = m_segment.isChecked();
        return state;
    }
    QStringList actionNames() const override {
        return m_segment.isEnabled() ? QStringList{toggleAction()} + QAccessibleWidget::actionNames()
                                     : QStringList();
    }
    void doAction(const QString& name) override {
        if (name == toggleAction()) {
            m_segment.setChecked(true);
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

  private:
    Segment& m_segment;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
    auto* const segment = dynamic_cast<Segment*>(object);
    return segment != nullptr ? new SegmentAccessible(segment) : nullptr;
}

} // namespace

SegmentedControl::SegmentedControl(const QString& name, const QStringList& segments, QWidget* parent)
    : QWidget(parent)
    , m_group(new QButtonGroup(this)) {
    QAccessible::installFactory(makeAccessible); // which leaves out what is installed
    setAccessibleName(name);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kInset, kInset, kInset, kInset);
    row->setSpacing(0);
    m_group->setExclusive(true);
    for (const QString& text : segments) {
        auto* segment = new Segment(text);
        m_group->addButton(segment, count());
        row->addWidget(segment);
    }
    connect(m_group, &QButtonGroup::idToggled, this, [this](int index, bool on) {
        // Only the chosen one is a stop of Tab.
        m_group->button(index)->setFocusPolicy(on ? Qt::StrongFocus : Qt::ClickFocus);
        if (on) {
            emit currentChanged(index);
        }
    });
    setCurrentIndex(0);
}

int SegmentedControl::count() const {
    return static_cast<int>(m_group->buttons().size());
}

int SegmentedControl::currentIndex() const {
    return m_group->checkedId();
}

void SegmentedControl::setCurrentIndex(int index) {
    if (QAbstractButton* button = m_group->button(index)) {
        button->setChecked(true);
    }
}

void SegmentedControl::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Right ? 1 : event->key() == Qt::Key_Left ? -1 : 0;
    if (step == 0 || count() == 0) {
        QWidget::keyPressEvent(event);
        return;
    }
    setCurrentIndex(std::clamp(currentIndex() + step, 0, count() - 1));
    m_group->button(currentIndex())->setFocus(Qt::TabFocusReason);
}

void SegmentedControl::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Tokens::current().fill);
    painter.drawRoundedRect(rect(), kTrackRadius, kTrackRadius);
}

} // namespace quillane
