#include "Components/ResultAlertButtons.h"
#include "Components/PushButton.h"
#include <QHBoxLayout>

namespace quillane {

ResultAlertButtons::ResultAlertButtons(bool anyAccessDenied, const std::function<void()>& openSettings,
                                       const std::function<void()>& dismiss, QWidget* parent)
    : QWidget(parent) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addStretch();
    // The slots hold copies: dismiss may take the button away under the call.
    const auto add = [&](const QString& text, PushButton::Role role, std::function<void()> call) {
        auto* button = new PushButton(text, {}, role, PushButton::Size::Sheet);
        connect(button, &QPushButton::clicked, this, [call = std::move(call)] {
            const auto own = call;
            own();
        });
        row->addWidget(button);
        m_buttons.push_back(button);
    };
    if (anyAccessDenied) {
        add(QStringLiteral("Grant Full Disk Access…"), PushButton::Role::Normal, [openSettings, dismiss] {
            openSettings();
            dismiss();
        });
    }
    add(QStringLiteral("OK"), PushButton::Role::Filled, dismiss);
    m_buttons.back()->setDefault(true);
}

} // namespace quillane
