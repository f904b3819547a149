// Where QUILLANE_WINDOW_MANAGER is set a window manager runs, and the window that is in front at first is another
// program's.
#include "WindowActivation.h"
#include <QProcess>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <memory>

namespace quillane {
namespace {

QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished());
    return process.readAllStandardOutput().trimmed();
}

constexpr int kLongWait = 60'000; // milliseconds, after which what should have come never comes

bool isManaged() {
    return qEnvironmentVariableIsSet("QUILLANE_WINDOW_MANAGER");
}

// A window that is in front of all others when it has been made.
class Neighbour {
  public:
    Neighbour() {
        if (isManaged()) {
            m_program.start(QStringLiteral("xev"), {});
            EXPECT_TRUE(QTest::qWaitFor(isProgramInFront, kLongWait));
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
    for (const char* token : {"", "0f3c-no-token-of-x11", "server-1-quillane_TIME4000000000"}) {
        m_neighbour = nullptr;
        m_neighbour = std::make_unique<Neighbour>();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !m_window.isActive(); }, kLongWait));
        WindowActivation::activate(m_window, token);
        EXPECT_TRUE(comesToTheFront()) << token;
    }
}

// Where there is no X11 nobody reads it, and nothing stays behind in the environment of programs that are started.
TEST_F(WindowActivationTest, TheTimeOfATokenIsToldToAWindowManagerOfX11) {
    WindowActivation::activate(m_window, "server-1-quillane_TIME123456");
    EXPECT_TRUE(comesToTheFront());
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    if (isManaged()) {
        EXPECT_EQ(outputOf(QStringLiteral("xprop"), {QStringLiteral("-id"), QString::number(m_window.winId()),
                                                     QStringLiteral("_NET_WM_USER_TIME")}),
                  "_NET_WM_USER_TIME(CARDINAL) = 123456");
    }
}

} // namespace
} // namespace quillane
