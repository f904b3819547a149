#include "Components/AccessBanner.h"
#include "Components/Hairline.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/SymbolView.h"
#include "Components/Tokens.h"
#include <QHBoxLayout>
#include <QPainter>

namespace quillane {

AccessBanner::AccessBanner(std::function<void()> onGrantAccess, std::function<void()> onRelaunch,
                           QWidget* parent)
    : QWidget(parent)
    , m_grant(new PushButton(QStringLiteral("Grant Access"), {}, PushButton::Role::Filled))
    , m_relaunch(new PushButton(QStringLiteral("Relaunch"))) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(16, 12, 16, 13);
    row->setSpacing(12);
    row->addWidget(new SymbolView(symbolName(), 24, Tint::Orange), 0, Qt::AlignVCenter);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addWidget(Label::wrapped(heading(), TextStyle::heading()));
    texts->addWidget(Label::wrapped(text(), TextStyle::note()));
    row->addLayout(texts, 1);
    row->addSpacing(4);
    row->addWidget(m_grant);
    row->addWidget(m_relaunch);
    setAccessibleName(heading());
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum); // as high as its width asks for
    connect(m_grant, &QPushButton::clicked, this, [call = std::move(onGrantAccess)] { call(); });
    connect(m_relaunch, &QPushButton::clicked, this, [call = std::move(onRelaunch)] { call(); });
}

QString AccessBanner::symbolName() {
    return QStringLiteral("lock.shield.fill");
}

QString AccessBanner::heading() {
    return QStringLiteral("Quillane can't see everything yet");
}

QString AccessBanner::text() {
    return QStringLiteral(
        "macOS protects the Trash, app containers, and the Desktop and Documents folders. Grant Full Disk "
        "Access and this banner will go away by itself within a few seconds. If it doesn't, relaunch.");
}

void AccessBanner::paintEvent(QPaintEvent*) {
    const Tokens& tokens = Tokens::current();
    QPainter painter(this);
    painter.fillRect(rect(), tokens.orangeSoft);
    Hairline::fill(painter, QRect(0, height() - 1, width(), 1), tokens.line);
}

} // namespace quillane
