#include "UnheardNotice.h"
#include "SessionInstance.h"
#include <QMessageBox>
#include <QTimer>
#include <cstdlib>
#include <unistd.h>

namespace quillane {
namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): nobody sets it by now
    return value != nullptr && *value != '\0';
}

} // namespace

bool UnheardNotice::isWanted() {
    return ::isatty(STDERR_FILENO) == 0 && (isSet("WAYLAND_DISPLAY") || isSet("DISPLAY"));
}

void UnheardNotice::show(std::chrono::milliseconds patience) {
    QMessageBox box(QMessageBox::Information, QStringLiteral("Quillane"),
                    QString::fromUtf8(SessionInstance::kUnheard), QMessageBox::Ok);
    QTimer::singleShot(patience, &box, &QDialog::reject);
    box.exec();
}

} // namespace quillane
