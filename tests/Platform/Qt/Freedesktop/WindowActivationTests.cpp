// Where QUILLANE_WINDOW_MANAGER is set a window manager runs, and the window that is in front at first is another
// program's.
#include "WindowActivation.h"
#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QProcess>
#include <QTest>
#include <QWindow>
#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

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

// The texts about starts that come to all of the display, where it is one of X11.
class StartMessages final : public QAbstractNativeEventFilter {
  public:
    StartMessages() { qGuiApp->installNativeEventFilter(this); }
    ~StartMessages() override { qGuiApp->removeNativeEventFilter(this); }
    StartMessages(const StartMessages&) = delete;
    StartMessages& operator=(const StartMessages&) = delete;

    std::vector<std::string> texts; // that have come to their end
    std::vector<int> kinds;         // of the pieces: the atoms, in their order
    std::set<std::uint32_t> windows;

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) override {
        const auto& event = *static_cast<const xcb_client_message_event_t*>(message);
        if (type == "xcb_generic_event_t" && (event.response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
            event.format == 8) {
            hear(event);
        }
        return false;
    }

  private:
    void hear(const xcb_client_message_event_t& event) {
        const auto* const bytes = reinterpret_cast<const char*>(event.data.data8);
        const std::size_t length = strnlen(bytes, sizeof(event.data));
        m_text.append(bytes, length);
        kinds.push_back(static_cast<int>(event.type));
        windows.insert(event.window);
        if (length < sizeof(event.data)) {
            texts.push_back(std::exchange(m_text, {}));
        }
    }
    std::string m_text;
};

QByteArray nameOfAtom(int atom) {
    return outputOf(QStringLiteral("xlsatoms"), {QStringLiteral("-range"), QStringLiteral("%1-%1").arg(atom),
                                                 QStringLiteral("-format"), QStringLiteral("%s")})
        .split('\t')
        .last();
}

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

// Else the pointer tells of a start that has ended long ago, until the desktop gives it up. Texts of all lengths at the
// edges of the pieces that they are sent in.
TEST_F(WindowActivationTest, WhereThereIsX11TheStartThatATokenStandsForIsToldToHaveEnded) {
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        WindowActivation::activate(m_window, tokenOf(1)); // nobody is told, and nobody is missed
        return;
    }
    const std::string frame = R"(remove: ID="")";
    constexpr std::size_t kPiece = 20;
    for (const std::size_t length : {kPiece - 1, kPiece, kPiece + 1, 2 * kPiece, 9 * kPiece + 3}) {
        const StartMessages heard;
        const auto token = std::string(length - frame.size(), 'x');
        WindowActivation::activate(m_window, token);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !heard.texts.empty(); }, kLongWait));
        EXPECT_EQ(heard.texts, std::vector{"remove: ID=\"" + token + "\""});
        ASSERT_EQ(heard.kinds.size(), (length + kPiece) / kPiece) << "with the zero at the end";
        EXPECT_EQ(heard.windows.size(), 1U) << "the pieces belong together";
        EXPECT_EQ(nameOfAtom(heard.kinds[0]), "_NET_STARTUP_INFO_BEGIN");
        for (std::size_t i = 1; i < heard.kinds.size(); ++i) {
            EXPECT_EQ(nameOfAtom(heard.kinds[i]), "_NET_STARTUP_INFO");
        }
    }
}

TEST_F(WindowActivationTest, WithoutATokenNoStartIsToldToHaveEnded) {
    const StartMessages heard;
    WindowActivation::activate(m_window, {});
    EXPECT_TRUE(comesToTheFront());
    EXPECT_TRUE(heard.kinds.empty());
}

} // namespace
} // namespace quillane
