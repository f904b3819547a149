#include "UnheardNotice.h"
#include <QApplication>
#include <QByteArray>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <tuple>
#include <unistd.h>
#include <utility>
#include <vector>

namespace quillane {
namespace {

using namespace std::chrono_literals;

// Another place where what goes to the terminal is written, for as long as this lives.
class ErrorsGoTo {
  public:
    explicit ErrorsGoTo(int file)
        : m_before(::dup(STDERR_FILENO)) {
        ::dup2(file, STDERR_FILENO);
    }
    ~ErrorsGoTo() {
        ::dup2(m_before, STDERR_FILENO);
        ::close(m_before);
    }
    ErrorsGoTo(const ErrorsGoTo&) = delete;
    ErrorsGoTo& operator=(const ErrorsGoTo&) = delete;

  private:
    int m_before;
};

// The displays that there are, as before once this goes.
class Displays {
  public:
    Displays() {
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY"}) {
            m_before.emplace_back(name, qgetenv(name));
            qunsetenv(name);
        }
    }
    ~Displays() {
        for (const auto& [name, value] : m_before) {
            value.isNull() ? (void)qunsetenv(name) : (void)qputenv(name, value);
        }
    }
    Displays(const Displays&) = delete;
    Displays& operator=(const Displays&) = delete;

  private:
    std::vector<std::pair<const char*, QByteArray>> m_before;
};

TEST(UnheardNotice, IsWantedOnADisplayWhereNobodyReadsATerminal) {
    const Displays none;
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    const int person = ::posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_EQ(::grantpt(person), 0);
    ASSERT_EQ(::unlockpt(person), 0);
    const int terminal = ::open(::ptsname(person), O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(terminal, 0);
    for (const char* display : {"DISPLAY", "WAYLAND_DISPLAY"}) {
        for (const auto& [value, file, isWanted] :
             {std::tuple{":1", nowhere, true}, std::tuple{":1", terminal, false},
              std::tuple{"", nowhere, false}, std::tuple{"", terminal, false}}) {
            qputenv(display, value);
            const ErrorsGoTo errors(file);
            EXPECT_EQ(UnheardNotice::isWanted(), isWanted) << display << "=" << value << " " << file;
        }
        qunsetenv(display);
    }
    for (const int file : {nowhere, person, terminal}) {
        ::close(file);
    }
}

TEST(UnheardNotice, SaysWhatIsTheMatterUntilItIsClosed) {
    QString text;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            text = box->text();
            QTest::mouseClick(box->button(QMessageBox::Ok), Qt::LeftButton);
        }
    });
    timer.start(0ms);
    UnheardNotice::show(1h);
    EXPECT_EQ(text, "Quillane is already running, here or on another machine, and does not answer.");
}

TEST(UnheardNotice, GoesWhereNobodyClosesIt) {
    UnheardNotice::show(1ms);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

} // namespace
} // namespace quillane
