#include "Tables/TypeAhead.h"
#include <QApplication>
#include <algorithm>

namespace quillane {

bool TypeAhead::isGoingOn() const {
    return !m_word.isEmpty() && m_lastLetter.isValid() &&
           m_lastLetter.elapsed() < QApplication::keyboardInputInterval();
}

QModelIndex TypeAhead::type(const QString& letters, const QAbstractItemModel& model, int column,
                            int currentRow) {
    const bool goesOn = isGoingOn();
    m_lastLetter.start();
    m_word = goesOn ? m_word + letters : letters;
    if (m_word.isEmpty()) {
        return {};
    }
    const bool steps = m_word.count(m_word.front(), Qt::CaseInsensitive) == m_word.size();
    const QString wanted = steps ? m_word.left(1) : m_word;
    const int from = goesOn && !steps ? std::max(currentRow, 0) : (currentRow + 1) % model.rowCount();
    const QModelIndexList hits = model.match(model.index(from, column), Qt::DisplayRole, wanted, 1,
                                             Qt::MatchStartsWith | Qt::MatchWrap);
    return hits.isEmpty() ? QModelIndex() : hits.front();
}

} // namespace quillane
