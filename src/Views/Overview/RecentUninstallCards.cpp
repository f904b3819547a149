#include "Overview/RecentUninstallCards.h"
#include "Components/CardSlot.h"
#include "Components/SymbolButton.h"
#include "Overview/RecentUninstallCard.h"
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

namespace quillane {

RecentUninstallCards::RecentUninstallCards(Clock& clock, int gap, QWidget* before, QWidget* parent)
    : QWidget(parent)
    , m_clock(clock)
    , m_gap(gap)
    , m_before(before)
    , m_column(new QVBoxLayout(this)) {
    m_column->setContentsMargins(0, 0, 0, 0);
    m_column->setSpacing(0);
}

void RecentUninstallCards::show(const std::vector<RecentUninstall>& records) {
    if (std::ranges::equal(m_places, records, {}, [](const Place& place) -> const RecentUninstall& {
            return place.card->record();
        })) {
        return;
    }
    auto before = std::exchange(m_places, {});
    for (const auto& record : records) {
        m_places.push_back(takeOrMake(before, record));
        m_places.back().card->setRecord(record);
    }
    for (const auto& gone : before) {
        letGo(*gone.slot);
    }
    arrange();
    orderTab();
}

std::vector<RecentUninstallCard*> RecentUninstallCards::cards() const {
    std::vector<RecentUninstallCard*> cards;
    cards.reserve(m_places.size());
    for (const auto& place : m_places) {
        cards.push_back(place.card);
    }
    return cards;
}

// What was stored may hold two records with one id: each has a card.
RecentUninstallCards::Place RecentUninstallCards::takeOrMake(std::vector<Place>& before,
                                                             const RecentUninstall& record) {
    const auto known = std::ranges::find_if(
        before, [&](const Place& place) { return place.card->record().id() == record.id(); });
    if (known == before.end()) {
        return make();
    }
    const Place place = *known;
    before.erase(known);
    return place;
}

RecentUninstallCards::Place RecentUninstallCards::make() {
    auto* const card = new RecentUninstallCard(m_clock);
    connect(card, &RecentUninstallCard::reviewWanted, this,
            [this, card] { emit reviewWanted(card->record()); });
    connect(card, &RecentUninstallCard::dismissWanted, this,
            [this, card] { emit dismissWanted(card->record()); });
    return {new CardSlot(card, m_gap, this), card};
}

void RecentUninstallCards::letGo(CardSlot& slot) {
    connect(&slot.departure(), &QAbstractAnimation::finished, &slot, &QObject::deleteLater);
    slot.setShown(false);
    if (slot.departure().state() != QAbstractAnimation::Running) { // out of sight nothing fades
        slot.deleteLater();
    }
}

// Those that are going stay where they are.
void RecentUninstallCards::arrange() {
    const auto isGoing = [this](const QLayoutItem* item) {
        return item != nullptr && std::ranges::find(m_places, item->widget(), &Place::slot) == m_places.end();
    };
    int at = 0;
    for (const auto& place : m_places) {
        while (isGoing(m_column->itemAt(at))) {
            ++at;
        }
        if (m_column->indexOf(place.slot) != at) {
            m_column->removeWidget(place.slot);
            m_column->insertWidget(at, place.slot);
        }
        place.slot->setShown(true);
        ++at;
    }
}

void RecentUninstallCards::orderTab() const {
    QWidget* before = m_before;
    for (const auto& [slot, card] : m_places) {
        for (QWidget* const button :
             {static_cast<QWidget*>(card->reviewButton()), static_cast<QWidget*>(card->dismissButton()),
              static_cast<QWidget*>(card->closeButton())}) {
            QWidget::setTabOrder(before, button);
            before = button;
        }
    }
}

} // namespace quillane
