#pragma once
#include "BulkRemoval.h"
#include "Components/ColumnGround.h"
#include "Components/Look.h"
#include "Components/Stat.h"
#include "Components/StatGrid.h"
#include "Panes/SummaryList.h"
#include "Shell/ContentView.h"
#include "State/ContentState.h"
#include "WindowPicture.h"
#include "WindowTest.h"
#include <QListView>
#include <QVBoxLayout>
#include <memory>
#include <utility>
#include <vector>

namespace quillane {

// The right column of a section by itself, as narrow as the window ever makes it, over a library and a selection
// that the test fills by hand.
template <class Column>
class SectionDetailTest : public WindowTest {
  protected:
    using Pairs = std::vector<std::pair<QString, QString>>;

    ~SectionDetailTest() override {
        m_ground.reset();
        Look::setDark(false);
    }

    Column& openColumn(int width = ContentView::kDetailNarrowest, int height = 760) {
        m_ground = std::make_unique<ColumnGround>(ColumnGround::Ground::Page);
        column = new Column(library, state);
        auto* const layout = new QVBoxLayout(m_ground.get());
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(column);
        m_ground->resize(width, height);
        m_ground->show();
        m_ground->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_ground.get()));
        turn();
        return *column;
    }
    QWidget& ground() const { return *m_ground; }

    bool showsNone() const { return column->currentWidget() == column->placeholder(); }
    bool showsOne() const { return column->currentWidget() == column->one(); }
    bool showsSeveral() const { return column->currentWidget() == column->several(); }

    static Pairs figures(const StatGrid& grid) {
        Pairs shown;
        for (const auto* cell : grid.cells()) {
            shown.emplace_back(cell->label(), cell->value());
        }
        return shown;
    }
    QStringList listed() const { // in the pane for several
        QStringList shown;
        const auto* const model = column->several()->list()->list()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            shown << model->index(row, 0).data(Qt::AccessibleTextRole).toString();
        }
        return shown;
    }
    // In light and in dark, for whoever wants to look.
    void keepBoth(const QString& name) {
        for (const bool dark : {false, true}) {
            Look::setDark(dark);
            turn();
            EXPECT_TRUE(keepPicture(pictureOf(ground()), dark ? name + "-dark" : name));
        }
        Look::setDark(false);
    }

    static void press(QWidget* button) { QTest::mouseClick(button, Qt::LeftButton); }

    // What the review would list; fails without a request.
    std::vector<FileURL> asked() const {
        std::vector<FileURL> urls;
        EXPECT_TRUE(state.removal->has_value());
        if (state.removal->has_value()) {
            for (const auto& entry : (*state.removal)->entries) {
                urls.push_back(entry.url);
            }
        }
        return urls;
    }
    std::string askedLabel() const { return state.removal->has_value() ? (*state.removal)->label : ""; }

    Date daysBack(int days) const { return clock.now().addingSeconds(-86'400.0 * days); }

    ContentState state{LibrarySection::orphans};
    Column* column = nullptr;

  private:
    std::unique_ptr<ColumnGround> m_ground;
};

} // namespace quillane
