#include <gtest/gtest.h>
#include <QApplication>
#include <QImage>
#include <QTest>
#include <QTimer>
#include "pageout/Grd.h"
#include "pageout/PageFixture.h"
#include "pageout/QtPageOutputs.h"
#include "pageout/ReportRows.h"

namespace {

// Shows each page as the clerk would see it, then closes it by the window's own close.
struct Clerk {
    QList<QImage> pages;
    QStringList titles;
    QList<QSize> sizes;
    QList<bool> escapeIgnored;
    Clerk()
    {
        setPreviewPageHook([this](QWidget* w) {
            QTimer::singleShot(0, w, [this, w] {
                titles << w->windowTitle();
                sizes << w->size();
                pages << w->grab().toImage();
                QTest::keyClick(w, Qt::Key_Escape);
                escapeIgnored << w->isVisible();
                w->close();
            });
        });
    }
    ~Clerk() { setPreviewPageHook({}); }
};

int darkPixels(const QImage& img)
{
    int n = 0;
    for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x)
            if (qGray(img.pixel(x, y)) < 128) ++n;
    return n;
}

// The report's output in PreviewMode: each page in turn in the modal window, sized to the page,
// also where a grid gives the paper's size after the text of its page.
TEST(Preview, APageAtATimeInAModalWindowSizedToThePage)
{
    ScriptedDialogs dialogs;
    Clerk clerk;
    session().PreviewMode = true;
    auto rows = listRows({"Namae"}, {{"りんご"}, {"みかん"}});
    MemoryGridCells cells([](const QString&, double points, const QString& text) { return text.size() * points * 10; });
    Grd grd(&cells);
    grd.GrdInit(1);
    grd.GrdAddColumn(grdColumn("名称", "Namae", "S", "20"));
    grd.GrdSetHeaders();
    ASSERT_TRUE(grd.GrdFill(rows.get(), nullptr));
    grd.paper = QStringLiteral("15");
    auto document = listRows({"Namae"}, {{"一"}, {"二"}, {"三"}, {"四"}, {"五"}});
    std::unique_ptr<PageOutput> out = makeReportOutput();
    ASSERT_TRUE(printTo(*out, [&] {
        return printDocument(document.get(), {makeField("名前", "Namae", "S", "10")},
                             {"<AREA>8400,5940", "<FONT>ＭＳ 明朝", "<SIZE>20", "<FREE>600,300,見本の帳票", "<SIZE>10",
                              "<LOCATE>600,1500", "<DTPOS>", "<ZOUBUN>300", "<DTCNT>2"})
               && grd.GrdPrint(QStringLiteral("一覧"), QString(), 0);
    }));
    session().PreviewMode = false;
    // Five rows, two a page: three pages, then the grid's one, each shown and closed in turn.
    EXPECT_EQ(out->pages(), 4);
    EXPECT_EQ(clerk.titles, QStringList(4, "printTest"));
    // twips / 15 at 96 dots an inch
    EXPECT_EQ(clerk.sizes, (QList<QSize>{QSize(560, 396), QSize(560, 396), QSize(560, 396), QSize(1120, 976)}));
    EXPECT_EQ(clerk.escapeIgnored, QList<bool>(4, true));   // no keys of its own
    for (const QImage& page : clerk.pages) EXPECT_GT(darkPixels(page), 200);
    EXPECT_FALSE(QApplication::activeModalWidget());
}

}  // namespace
