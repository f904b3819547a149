// Where QUILLANE_WINDOW_MANAGER is set a window manager runs, and the window that is in front at first is another
// program's.
#include "WindowActivation.h"
#include <QProcess>
#include <QTest>
#include <QWindow>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace quillane {
namespace {

QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished());
    return process.readAllStandardOutput().trimmed();
}

constexpr int kLongWait = 60'000; // milliseconds, after which what should have come never comes

// As of a click just now. The clock of a display is the one that goes steadily, on every server that we know of.
std::uint32_t displayTime() {
    return static_cast<std::uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(
                                          std::chrono::steady_clock::now().time_since_epoch())
                                          .count());
}

std::string tokenOf(std::uint32_t time) {
    return "server-1-quillane_TIME" + std::to_string(time);
}

bool isManaged() {
    return qEnvironmentVariableIsSet("QUILLANE_WINDOW_MANAGER");
}

// A window that is in front of all others when it has been made.
class Neighbour {
  public:
    Neighbour() {
        if (isManaged()) {
            m_program.start(QStringLiteral("xev"), {});
            EXPECT_TRUE(QTest::qWaitFor(comesToFront, kLongWait));
        } else {
            m_window = std::make_unique<QWindow>();
            m_window->show();
            m_window->requestActivate();
            EXPECT_TRUE(QTest::qWaitForWindowActive(m_window.get()));
        }
    }
    ~Neighbour() {
        m_program.kill();
        m_program.waitForFinished();
    }
    Neighbour(const Neighbour&) = delete;
    Neighbour& operator=(const Neighbour&) = delete;

  private:
    // Some managers leave a new window behind the one that is in front: it is asked for.
    static bool comesToFront() {
        if (isProgramInFront()) {
            return true;
        }
        outputOf(QStringLiteral("xdotool"),
                 {QStringLiteral("search"), QStringLiteral("--name"), QStringLiteral("Event Tester"),
                  QStringLiteral("windowactivate")});
        return false;
    }
    static bool isProgramInFront() {
        return outputOf(QStringLiteral("xdotool"), {QStringLiteral("getactivewindow"),
                                                    QStringLiteral("getwindowname")}) == "Event Tester";
    }
    QProcess m_program;
    std::unique_ptr<QWindow> m_window;
};

class WindowActivationTest : public testing::Test {
  protected:
    WindowActivationTest() {
        m_window.setGeometry(0, 0, 200, 100);
        m_window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&m_window));
        m_neighbour = std::make_unique<Neighbour>();
    }
    bool isInFront() const {
        return m_window.isActive() &&
               (!isManaged() ||
                outputOf(QStringLiteral("xdotool"), {QStringLiteral("getactivewindow")}).toULongLong() ==
                    m_window.winId());
    }
    bool comesToTheFront() {
        return QTest::qWaitFor([this] { return isInFront(); }, kLongWait);
    }

    QWindow m_window;
    std::unique_ptr<Neighbour> m_neighbour;
};

TEST_F(WindowActivationTest, AWindowComesBeforeTheOneThatIsInFrontWithATokenAndWithout) {
    for (const bool isTimed : {false, true}) {
        m_neighbour = nullptr;
        m_neighbour = std::make_unique<Neighbour>();
        const auto token = isTimed ? tokenOf(displayTime()) : "0f3c-no-token-of-x11";
        EXPECT_TRUE(QTest::qWaitFor([this] { return !m_window.isActive(); }, kLongWait));
        WindowActivation::activate(m_window, token);
        EXPECT_TRUE(comesToTheFront()) << token;
    }
}

// Where there is no X11 nobody reads it, and nothing stays behind in the environment of programs that are started.
TEST_F(WindowActivationTest, TheTimeOfATokenIsToldToAWindowManagerOfX11) {
    const auto time = displayTime();
    WindowActivation::activate(m_window, tokenOf(time));
    EXPECT_TRUE(comesToTheFront());
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    if (isManaged()) {
        EXPECT_EQ(outputOf(QStringLiteral("xprop"), {QStringLiteral("-id"), QString::number(m_window.winId()),
                                                     QStringLiteral("_NET_WM_USER_TIME")}),
                  "_NET_WM_USER_TIME(CARDINAL) = " + QByteArray::number(time));
    }
}

} // namespace
} // namespace quillane
