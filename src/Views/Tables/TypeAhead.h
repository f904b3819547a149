#pragma once
#include <QElapsedTimer>
#include <QModelIndex>
#include <QString>

namespace quillane {

// Letters that are typed while a table has the focus, and the row that they lead to. Letters that follow each
// other within the system's interval are one word.
class TypeAhead {
  public:
    // Whether a letter typed now would go on with the word.
    bool isGoingOn() const;
    // The next row whose text in `column` begins with what has been typed, `letters` included: from the current
    // row on, which is -1 where there is none, and round the end. The same letter again and again steps through
    // the rows that begin with it. Invalid when there is no such row.
    QModelIndex type(const QString& letters, const QAbstractItemModel& model, int column, int currentRow);

  private:
    QString m_word;
    QElapsedTimer m_lastLetter;
};

} // namespace quillane
