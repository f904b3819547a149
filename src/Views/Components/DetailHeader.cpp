#include "Components/DetailHeader.h"
#include "Components/ElidedLabel.h"
#include <QHBoxLayout>

namespace quillane {

DetailHeader::DetailHeader(QWidget* icon, const QString& title, const QString& subtitle, QWidget* parent)
    : QWidget(parent)
    , m_title(new ElidedLabel(title, TextStyle::detailTitle(), Qt::ElideMiddle))
    , m_subtitle(new ElidedLabel(subtitle, TextStyle::secondary(), Qt::ElideMiddle)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    if (icon != nullptr) {
        row->addWidget(icon, 0, Qt::AlignVCenter);
    }
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addStretch();
    texts->addWidget(m_title);
    texts->addWidget(m_subtitle);
    texts->addStretch();
    row->addLayout(texts, 1);
    setTexts(title, subtitle);
}

QString DetailHeader::title() const {
    return m_title->text();
}

QString DetailHeader::subtitle() const {
    return m_subtitle->text();
}

void DetailHeader::setTexts(const QString& title, const QString& subtitle) {
    m_title->setText(title);
    m_subtitle->setText(subtitle);
    m_subtitle->setVisible(!subtitle.isEmpty());
}

} // namespace quillane
