#pragma once
#include <QPoint>
#include <QString>
#include <QStringList>
#include <functional>

class QAbstractButton;
class QWidget;
class QTreeView;

// Eyes and hands of somebody in front of the window. Everything goes through events, as a person's input does.
namespace quillane::Visitor {

// Lets the event loop run until `done`, for at most so many seconds. False when the time is over.
bool waitUntil(const std::function<bool()>& done, int seconds = 60);
// Lets everything that is due happen, so that a picture shows it.
void settle();

// All words that assistive tools, and so people, find in the visible widgets below this one.
QStringList words(const QWidget* widget);
// The texts of a table's column, from the top.
QStringList column(const QTreeView* table, int column);

// The visible widget below this one that assistive tools call so; null when there is none.
QWidget* named(const QWidget* widget, const QString& name);
// Whether something visible below this one still turns, as it waits for what it will show.
bool isWaiting(const QWidget* widget);

void click(QTreeView* table, int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void click(QWidget* widget, const QPoint& at);
void push(QAbstractButton* button);
void clickHeader(QTreeView* table, int column);
void type(QWidget* window, const QString& text);
void press(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

// A picture of the whole window.
bool picture(QWidget* window, const QString& file);

} // namespace quillane::Visitor
