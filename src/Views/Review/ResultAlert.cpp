#include "Review/ResultAlert.h"
#include "Components/Fonts.h"
#include "Components/Label.h"
#include "Components/PushButton.h"
#include "Components/ResultAlertButtons.h"
#include "Components/ShownText.h"
#include <QVBoxLayout>
#include <algorithm>

namespace quillane {

namespace {
constexpr int kWidth = 420;
}

ResultAlert::ResultAlert(const QString& title, const QString& message, bool anyAccessDenied,
                         const std::function<void()>& openSettings, QWidget* over)
    : Sheet({kWidth, kWidth}, over)
    , m_title(Label::wrapped(title, TextStyle::columnTitle()))
    , m_message(Label::wrapped(message, TextStyle::bodySecondary()))
    , m_buttons(new ResultAlertButtons(anyAccessDenied, openSettings, [this] { accept(); })) {
    setWindowTitle(title);
    setAccessibleName(title);
    setAccessibleDescription(message);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(20, 20, 20, 20);
    column->setSpacing(0);
    column->addWidget(m_title);
    column->addSpacing(6);
    column->addWidget(m_message);
    column->addSpacing(20);
    column->addWidget(m_buttons);
    Fonts::follow(this, [this, column] {
        column->activate();
        setWantedSize({kWidth, column->totalHeightForWidth(kWidth)});
    });
    m_buttons->buttons().back()->setFocus();
}

ResultAlert* ResultAlert::presentPutBack(const Uninstaller::Report& report,
                                         const std::function<void()>& openSettings, QWidget* over) {
    auto* const alert = new ResultAlert(
        QStringLiteral("Put Back Finished"), words(report.summary("Restored", "to their original locations")),
        std::ranges::any_of(report.failures, &Uninstaller::Failure::isAccessDenied), openSettings, over);
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->open();
    return alert;
}

} // namespace quillane
