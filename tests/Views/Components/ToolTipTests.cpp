#include "Components/ElidedLabel.h"
#include "Components/ListRow.h"
#include "Components/TextStyle.h"
#include "Components/ToolTipText.h"
#include "Panes/SummaryList.h"
#include "Review/FailuresModel.h"
#include "ToolTip.h"
#include <QHelpEvent>
#include <QListView>
#include <QTest>
#include <QToolTip>
#include <gtest/gtest.h>

namespace quillane {
namespace {

TEST(ToolTip, WordsAreReadAsTheyStandWhateverTheyLookLike) {
    for (const char* words :
         {"plain", "ben&jerry", "a > b", "a < b", "\"quoted\"", "<b>bold</b>", "<h1>x", "<img src=x>",
          "&amp;", "&lt;b&gt;", "two  blanks", "<!-- gone -->", "</span>", "line\nand line", "größer", " "}) {
        EXPECT_EQ(readIn(toolTipText(QString::fromUtf8(words))), QString::fromUtf8(words));
    }
}

TEST(ToolTip, ForNoWordsThereIsNone) {
    EXPECT_TRUE(toolTipText({}).isEmpty());
}

TEST(ToolTip, ALabelThatIsCutShowsItsNameToTheLetter) {
    const QString name = "com.ben&jerry <b>tool</b>";
    ElidedLabel label(name, TextStyle::row());
    label.resize(20, 20);
    label.show();
    QHelpEvent event(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(&label, &event);
    EXPECT_EQ(readIn(QToolTip::text()), name);
}

TEST(ToolTip, AFailedPathShowsToTheLetter) {
    Uninstaller::Failure failure;
    failure.url = FileURL("/Users/alex/<i>a</i> & b");
    const FailuresModel model({failure});
    EXPECT_EQ(readIn(model.index(0).data(Qt::ToolTipRole).toString()), "/Users/alex/<i>a</i> & b");
}

TEST(ToolTip, ASelectedRowShowsToTheLetter) {
    SummaryList list(QStringLiteral("Selected rows"));
    list.setRows({{QStringLiteral("npm - node_modules in <h1>x & y"), 1, std::nullopt}});
    EXPECT_EQ(readIn(list.list()->model()->index(0, 0).data(Qt::ToolTipRole).toString()),
              "npm - node_modules in <h1>x & y");
}

} // namespace
} // namespace quillane
