#include "Startup/StartupDetailView.h"
#include "AppLibrary.h"
#include "Components/Announcement.h"
#include "Components/DetailHeader.h"
#include "Components/DetailRow.h"
#include "Components/Label.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/PathLabel.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/Rule.h"
#include "Components/ShownText.h"
#include "Components/Tile.h"
#include "Components/ToolTipText.h"
#include "FileSystem.h"
#include "Panes/SelectedRecords.h"
#include "Workspace.h"
#include <QPointer>
#include <QVBoxLayout>
#include <algorithm>
#include <string_view>

namespace quillane {

namespace {

constexpr int kTileSide = 48;
constexpr int kBelowCaption = 2;
constexpr int kBetweenPlaces = 8;
constexpr std::size_t kMostComplaint = 2000; // bytes of what launchctl says: it may print anything

using Health = StartupItem::Health;

// Each line as it is, made safe for the eye.
QString shownLines(std::string_view text) {
    QStringList lines;
    const bool isCut = text.size() > kMostComplaint;
    text = text.substr(0, kMostComplaint);
    while (true) {
        const auto end = text.find('\n');
        lines << shownName(text.substr(0, end));
        if (end == std::string_view::npos) {
            break;
        }
        text.remove_prefix(end + 1);
    }
    return lines.join(QLatin1Char('\n')) + (isCut ? QStringLiteral("…") : QString());
}

QString liveSentence(const StartupItem& item) {
    return QStringLiteral("A live part of ") +
           (item.ownerName ? shownName(*item.ownerName) : QStringLiteral("an installed app")) +
           QStringLiteral(". Leave it unless you know why you'd stop it.");
}

Note* adminNote() {
    return new Note(QStringLiteral("lock.fill"),
                    QStringLiteral("Lives outside your home folder. Removing it needs admin rights, which "
                                   "Quillane doesn't ask for - use Finder with your password."));
}

Note* protectedNote() {
    return new Note(ProtectedMark::symbolName(),
                    QStringLiteral("Protected. Quillane will not remove this until you lift the protection."),
                    Tint::Green);
}

} // namespace

StartupDetailView::StartupDetailView(AppLibrary& library, QWidget* parent)
    : StartupDetailView(library,
                        new PushButton(QStringLiteral("Stop Until Login"), QStringLiteral("stop.circle")),
                        parent) {}

// Tab goes over the buttons in the order in which they join.
StartupDetailView::StartupDetailView(AppLibrary& library, PushButton* stop, QWidget* parent)
    : DetailPane(QStringLiteral("Move to Trash"), QStringLiteral("Details of the startup item"), parent,
                 RemoveButton::InToolbar, stop)
    , m_library(library)
    , m_header(new DetailHeader(new Tile(QStringLiteral("power"), Tint::Startup, kTileSide), {}))
    , m_explanation(new Note({}, {}))
    , m_adminNote(quillane::adminNote())
    , m_protectedNote(quillane::protectedNote())
    , m_stopError(new Note(QStringLiteral("exclamationmark.triangle"), {}, Tint::Red))
    , m_stop(stop)
    , m_facts(new Panel)
    , m_kind(new DetailRow(QStringLiteral("Kind"), {}))
    , m_runs(new DetailRow(QStringLiteral("Runs"), {}))
    , m_loaded(new DetailRow(QStringLiteral("Loaded now"), {}))
    , m_loadedRow(new QWidget)
    , m_programCaption(new Label(QStringLiteral("Program"), TextStyle::caption()))
    , m_program(new PathLabel(TextStyle::row()))
    , m_programGap(new QWidget)
    , m_definedIn(new PathLabel(TextStyle::row())) {
    setToolTipText(*m_stop,
                   QStringLiteral("Unloads it now. It comes back at next login unless the file is removed."));
    connect(m_stop, &QPushButton::clicked, this, [this] { stopItem(); });
    addBlocks();
}

void StartupDetailView::addBlocks() {
    auto* const loaded = new QVBoxLayout(m_loadedRow);
    loaded->setContentsMargins(0, 0, 0, 0);
    loaded->setSpacing(0);
    loaded->addWidget(new Rule(Rule::Weight::Row));
    loaded->addWidget(m_loaded);
    m_facts->addRow(m_kind);
    m_facts->addRow(m_runs);
    m_facts->contentLayout()->addWidget(m_loadedRow);

    auto* const places = new Panel;
    auto* const definedCaption = new Label(QStringLiteral("Defined in"), TextStyle::caption());
    m_programCaption->setBuddy(m_program);
    definedCaption->setBuddy(m_definedIn);
    m_programCaption->setContentsMargins(0, 0, 0, kBelowCaption);
    m_program->setContentsMargins(0, 0, 0, 0);
    definedCaption->setContentsMargins(0, 0, 0, kBelowCaption);
    places->contentLayout()->addWidget(m_programCaption);
    places->contentLayout()->addWidget(m_program);
    m_programGap->setFixedHeight(kBetweenPlaces);
    places->contentLayout()->addWidget(m_programGap);
    places->contentLayout()->addWidget(definedCaption);
    places->contentLayout()->addWidget(m_definedIn);

    for (QWidget* const block : {static_cast<QWidget*>(m_header), static_cast<QWidget*>(m_explanation),
                                 static_cast<QWidget*>(m_adminNote), static_cast<QWidget*>(m_protectedNote),
                                 static_cast<QWidget*>(m_facts), static_cast<QWidget*>(places),
                                 static_cast<QWidget*>(m_stopError)}) {
        blocks()->addWidget(block);
    }
    setStopError(std::nullopt);
}

void StartupDetailView::show(const StartupItem& item) {
    if (!m_item || m_item->url != item.url) {
        scrollToTop();
        setStopError(std::nullopt);
    }
    m_item = item;
    const bool isProtected = m_library.isProtected(item.url);
    m_header->setTexts(shownName(item.label),
                       item.ownerName ? QStringLiteral("Installed by ") + shownName(*item.ownerName)
                                      : QString());
    explain(item);
    m_adminNote->setVisible(!item.isAtHome(m_library.platform().files.home()));
    m_protectedNote->setVisible(isProtected);
    showFacts(item);
    showButtons(item, isProtected);
}

void StartupDetailView::forget() {
    m_item.reset();
    setStopError(std::nullopt);
}

void StartupDetailView::explain(const StartupItem& item) {
    switch (item.health) {
    case Health::orphaned:
        m_explanation->setContent(
            QStringLiteral("questionmark.circle"),
            QStringLiteral("Left behind when its app was removed. launchd still loads it. Safe to remove."),
            Tint::Orange);
        return;
    case Health::broken:
        m_explanation->setContent(QStringLiteral("exclamationmark.triangle"),
                                  QStringLiteral("The program it launches no longer exists, so launchd fails "
                                                 "it every time. Safe to remove."),
                                  Tint::Red);
        return;
    case Health::ok:
        m_explanation->setContent(QStringLiteral("checkmark.circle"), liveSentence(item), Tint::Green);
        return;
    }
    __builtin_unreachable();
}

void StartupDetailView::showFacts(const StartupItem& item) {
    m_kind->setValue(words(rawValue(item.kind)));
    m_runs->setValue(words(item.schedule()));
    m_loaded->setValue(item.isLoaded.value_or(false) ? QStringLiteral("Yes") : QStringLiteral("No"));
    m_loadedRow->setVisible(item.isLoaded.has_value());
    m_program->setText(shownName(item.program.value_or(std::string())));
    m_program->setVisible(item.program.has_value());
    m_programCaption->setVisible(item.program.has_value());
    m_programGap->setVisible(item.program.has_value());
    m_definedIn->setText(shownName(item.url.path()));
}

void StartupDetailView::showButtons(const StartupItem& item, bool isProtected) {
    const bool isAtHome = item.isAtHome(m_library.platform().files.home());
    m_stop->setVisible(item.kind == StartupItem::Kind::agent && isAtHome && item.isLoaded == true);
    m_stop->setEnabled(!m_stopping.contains(item.url));
    removeButton()->setEnabled(isAtHome && !isProtected);
}

// The task belongs to the library, so that a pane that goes doesn't stop it half way.
void StartupDetailView::stopItem() {
    if (!m_item || !m_stopping.insert(m_item->url).second) {
        return;
    }
    m_stop->setEnabled(false);
    m_library.tasks().start(
        [&library = m_library, item = *m_item, self = QPointer(this)](StopToken stop) -> Task<> {
            const auto message = co_await library.stopStartupItem(item, stop);
            if (self) {
                self->stopped(item.url, message);
            }
        });
}

void StartupDetailView::stopped(const FileURL& url, const std::optional<std::string>& message) {
    m_stopping.erase(url);
    if (m_item && m_item->url == url) {
        m_stop->setEnabled(true);
        setStopError(message);
    }
}

void StartupDetailView::setStopError(const std::optional<std::string>& message) {
    m_stopError->setVisible(message.has_value());
    m_stopError->setContent(QStringLiteral("exclamationmark.triangle"),
                            message ? shownLines(*message) : QString(), Tint::Red);
    if (message) {
        announce(*m_stopError, m_stopError->text());
    }
}

void StartupDetailView::reveal() {
    if (m_item) {
        m_library.platform().workspace.reveal({m_item->url});
    }
}

// What is shown may be a turn behind the library.
void StartupDetailView::askToRemove() {
    if (!m_item) {
        return;
    }
    const auto removal = m_library.removalForStartupItems(selectedStartupItems(m_library, {m_item->url}));
    if (!removal.entries.empty()) {
        emit removalWanted(removal);
    }
}

} // namespace quillane
