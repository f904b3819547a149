#include "Visitor.h"
#include "Components/Spinner.h"
#include <QAbstractAnimation>
#include <QAbstractButton>
#include <QAccessible>
#include <QAccessibleInterface>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QHeaderView>
#include <QTest>
#include <QTreeView>
#include <algorithm>

namespace quillane::Visitor {
namespace {

constexpr int kStepMilliseconds = 10;

// Whether something is on its way to where it will stand; what turns for ever is not waited for.
bool isMoving() {
    for (const auto* const window : QApplication::topLevelWidgets()) {
        for (const auto* const animation : window->findChildren<QAbstractAnimation*>()) {
            if (animation->state() == QAbstractAnimation::Running && animation->loopCount() > 0) {
                return true;
            }
        }
    }
    return false;
}

// Keys go to whoever has the focus, as on a real keyboard.
QWidget* target(QWidget* window) {
    QWidget* const focused = window->window()->focusWidget();
    return focused != nullptr ? focused : window;
}

} // namespace

bool waitUntil(const std::function<bool()>& done, int seconds) {
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > seconds * 1000LL) {
            return false;
        }
        QApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, kStepMilliseconds);
        QTest::qWait(1);
    }
    return true;
}

void settle() {
    for (int turn = 0; turn < 5; ++turn) {
        QTest::qWait(kStepMilliseconds);
    }
    waitUntil([] { return !isMoving(); });
}

QStringList words(const QWidget* widget) {
    QStringList found;
    for (auto* const child : widget->findChildren<QWidget*>()) {
        if (!child->isVisibleTo(widget)) {
            continue;
        }
        if (const auto* const interface = QAccessible::queryAccessibleInterface(child)) {
            for (const auto kind : {QAccessible::Name, QAccessible::Value}) {
                if (const auto text = interface->text(kind); !text.isEmpty()) {
                    found.append(text);
                }
            }
        }
    }
    return found;
}

QStringList column(const QTreeView* table, int column) {
    QStringList texts;
    const auto* const model = table->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        texts.append(model->index(row, column).data().toString());
    }
    return texts;
}

QWidget* named(const QWidget* widget, const QString& name) {
    for (auto* const child : widget->findChildren<QWidget*>()) {
        const auto* const interface =
            child->isVisibleTo(widget) ? QAccessible::queryAccessibleInterface(child) : nullptr;
        if (interface != nullptr && interface->text(QAccessible::Name) == name) {
            return child;
        }
    }
    return nullptr;
}

bool isWaiting(const QWidget* widget) {
    const auto spinners = widget->findChildren<Spinner*>();
    return std::ranges::any_of(spinners,
                               [&](const Spinner* spinner) { return spinner->isVisibleTo(widget); });
}

void click(QTreeView* table, int row, int column, Qt::KeyboardModifiers modifiers) {
    const auto index = table->model()->index(row, column);
    table->scrollTo(index);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, modifiers, table->visualRect(index).center());
    settle();
}

void click(QWidget* widget, const QPoint& at) {
    QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, at);
    settle();
}

void push(QAbstractButton* button) {
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
}

void clickHeader(QTreeView* table, int column) {
    auto* const header = table->header();
    const QPoint at(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                    header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, at);
    settle();
}

void type(QWidget* window, const QString& text) {
    QTest::keyClicks(target(window), text);
    settle();
}

void press(QWidget* window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(target(window), key, modifiers);
    settle();
}

bool picture(QWidget* window, const QString& file) {
    settle();
    QDir().mkpath(QFileInfo(file).path());
    return window->window()->grab().save(file);
}

} // namespace quillane::Visitor
