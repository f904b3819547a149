#include "Files/FileDetailView.h"
#include "AppLibrary.h"
#include "Clock.h"
#include "Components/DetailHeader.h"
#include "Components/Note.h"
#include "Components/Panel.h"
#include "Components/ProtectedMark.h"
#include "Components/PushButton.h"
#include "Components/ShownText.h"
#include "Components/StatGrid.h"
#include "Components/ValueField.h"
#include "FileSystem.h"
#include "Files/FilePreview.h"
#include "Formatting.h"
#include "Panes/DaysAgo.h"
#include "Panes/SelectedRecords.h"
#include "Workspace.h"
#include <utility>

namespace quillane {

namespace {

Note* placeholderNote() {
    return new Note(
        QStringLiteral("icloud"),
        QStringLiteral("Only a placeholder is stored on this Mac. Trashing it evicts the local copy; "
                       "the file stays in the cloud."));
}

Note* installedNote() {
    return new Note(
        QStringLiteral("checkmark.seal"),
        QStringLiteral("An app with this name is already installed, so this installer has done its job."));
}

Note* protectedNote() {
    return new Note(ProtectedMark::symbolName(),
                    QStringLiteral("Protected. Quillane will not remove this until you lift the protection."),
                    Tint::Green);
}

} // namespace

FileDetailView::FileDetailView(AppLibrary& library, QWidget* parent)
    : DetailPane(QStringLiteral("Move to Trash"), QStringLiteral("Details of the file"), parent)
    , m_library(library)
    , m_preview(new FilePreview)
    , m_header(new DetailHeader(nullptr, {}))
    , m_placeholderNote(quillane::placeholderNote())
    , m_installedNote(quillane::installedNote())
    , m_protectedNote(quillane::protectedNote())
    , m_stats(new StatGrid)
    , m_folder(new ValueField({}))
    , m_thumbnail(library.platform(), kThumbnail, [this](const std::shared_ptr<const IconImage>& picture) {
        m_preview->setPicture(picture);
    }) {
    blocks()->addWidget(m_preview);
    blocks()->addWidget(m_header);
    blocks()->addWidget(m_placeholderNote);
    blocks()->addWidget(m_installedNote);
    blocks()->addWidget(m_protectedNote);
    blocks()->addWidget(new Panel(std::nullopt, m_stats));
    blocks()->addWidget(m_folder);
    m_folder->setAlignment(Qt::AlignLeft);
    m_folder->setTint(Tint::Secondary);
    m_folder->setAccessibleName(QStringLiteral("Folder"));
    connect(m_preview, &QPushButton::clicked, this, [this] {
        if (m_url) {
            emit lookWanted(*m_url);
        }
    });
}

void FileDetailView::show(const UserFile& file) {
    if (m_url != file.url) {
        scrollToTop();
        m_preview->setPicture(nullptr);
        m_url = file.url;
        m_thumbnail.load(file.url);
    }
    const bool isProtected = m_library.isProtected(file.url);
    m_preview->setKind(file.kind);
    m_header->setTexts(shownName(file.name()), words(rawValue(file.kind)));
    m_placeholderNote->setVisible(file.isCloudPlaceholder);
    m_installedNote->setVisible(file.installsAnInstalledApp);
    m_protectedNote->setVisible(isProtected);
    showStats(file);
    m_folder->setText(shownName(file.folder(m_library.platform().files.home())));
    removeButton()->setEnabled(!isProtected);
}

void FileDetailView::forget() {
    m_url.reset();
    m_thumbnail.forget();
}

// The two sizes stand side by side only where they mean different things.
void FileDetailView::showStats(const UserFile& file) {
    const auto& clock = m_library.platform().clock;
    std::vector<StatGrid::Entry> stats = {
        {QStringLiteral("On Disk"), words(Formatting::byteCount(file.bytes)), true},
        {QStringLiteral("Last Opened"), daysAgo(file.daysSinceUsed(clock.now(), clock.calendar()))}};
    if (file.isCloudPlaceholder) {
        stats.push_back({QStringLiteral("In the Cloud"), words(Formatting::byteCount(file.logicalBytes))});
    }
    m_stats->setStats(stats);
}

void FileDetailView::reveal() {
    if (m_url) {
        m_library.platform().workspace.reveal({*m_url});
    }
}

void FileDetailView::askToRemove() {
    if (!m_url || m_library.isProtected(*m_url)) {
        return;
    }
    const auto files = selectedFiles(m_library, {*m_url});
    if (!files.empty()) {
        emit removalWanted(m_library.removalForFiles(files));
    }
}

} // namespace quillane
