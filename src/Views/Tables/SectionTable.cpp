#include "Tables/SectionTable.h"
#include "AppLibrary.h"
#include "Components/DateWords.h"
#include "Components/EmptyState.h"
#include "Components/LibraryObserver.h"
#include "Components/StatusRow.h"
#include "State/ContentState.h"
#include "Tables/TableView.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QShortcut>
#include <QVBoxLayout>
#include <utility>

namespace quillane {

SectionTable::SectionTable(const QString& name, QAbstractItemModel* model, std::vector<TableColumn> columns,
                           StatusRow* footer, QWidget* parent)
    : QWidget(parent)
    , m_table(new TableView(name))
    , m_footer(footer) {
    model->setParent(this);
    m_table->setModel(model);
    m_table->setColumns(std::move(columns));

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_table, 1);
    column->addWidget(footer);
    setFocusProxy(m_table);
}

bool SectionTable::event(QEvent* event) {
    if (dateWordsMayDiffer(*event)) {
        m_table->viewport()->update();
    }
    return QWidget::event(event);
}

void SectionTable::drawWith(std::function<void()> render) {
    auto* const observer = new LibraryObserver(std::move(render), this);
    observer->drawOnlyInSight(this);
    observer->renderNow();
}

MenuEntries::Present SectionTable::presentIn(ContentState& state) {
    return [&state](BulkRemoval removal) { state.removal = std::move(removal); };
}

// What joins a window last stands last in the order of Tab.
void SectionTable::putAbove(QWidget* controls) {
    auto* const column = static_cast<QVBoxLayout*>(layout());
    column->insertWidget(0, controls);
    m_table->setParent(nullptr);
    column->insertWidget(1, m_table, 1);
}

void SectionTable::copyPathsOf(std::function<std::vector<FileURL>()> selected) {
    auto* const copy = new QShortcut(QKeySequence::Copy, m_table);
    copy->setContext(Qt::WidgetShortcut);
    connect(copy, &QShortcut::activated, this, [selected = std::move(selected)] {
        QStringList paths;
        for (const auto& url : selected()) {
            paths << MenuEntries::rawText(url.path());
        }
        if (!paths.isEmpty()) {
            QGuiApplication::clipboard()->setText(paths.join(QLatin1Char('\n')));
        }
    });
}

void SectionTable::setEmptyWords(EmptyWords words) {
    m_emptyWords = std::move(words);
    m_emptyState = new EmptyState(m_emptyWords.symbol, m_emptyWords.title, m_emptyWords.sentence);
    m_table->setEmptyState(m_emptyState);
}

void SectionTable::explainEmptiness(const AppLibrary& library, AppLibrary::Phase::Kind foundBy,
                                    bool isListEmpty) {
    const bool isLooking = library.phase->kind <= foundBy; // the kinds stand in the order of a scan
    explainEmptiness(isLooking ? std::optional(m_emptyWords.looking) : std::nullopt, isListEmpty);
}

void SectionTable::explainEmptiness(const std::optional<QString>& looking, bool isListEmpty) {
    if (!isListEmpty) {
        m_emptyState->setContent(QStringLiteral("magnifyingglass"), QStringLiteral("No Results"),
                                 QStringLiteral("Nothing here matches the search."));
    } else if (looking) {
        m_emptyState->setLoading(*looking);
    } else {
        m_emptyState->setContent(m_emptyWords.symbol, m_emptyWords.title, m_emptyWords.sentence);
    }
}

} // namespace quillane
