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

TEST(Preview, APageAtATimeInAModalWindowSizedToThePage)
{
    ScriptedDialogs dialogs;
    Clerk clerk;
    auto rows = listRows({"Namae"}, {{"一"}, {"二"}, {"三"}, {"四"}, {"五"}});
    std::unique_ptr<PageOutput> out = makePreviewOutput();
    ASSERT_TRUE(printTo(*out, [&] {
        VtmlClear();
        VtmlAddField(makeField("名前", "Namae", "S", "10"));
        PbSetRows(rows.get());
        for (const char* l : {"<AREA>8400,5940", "<FONT>ＭＳ 明朝", "<SIZE>20", "<FREE>600,300,見本の帳票", "<SIZE>10",
                              "<LOCATE>600,1500", "<DTPOS>", "<ZOUBUN>300", "<DTCNT>2"})
            VtmlAddLine(QString::fromUtf8(l));
        return VtmlPrint();
    }));
    // Five rows, two a page: three pages, each shown and closed in turn.
    EXPECT_EQ(out->pages(), 3);
    EXPECT_EQ(clerk.titles, QStringList({"printTest", "printTest", "printTest"}));
    EXPECT_EQ(clerk.sizes, QList<QSize>(3, QSize(560, 396)));   // twips / 15 at 96 dots an inch
    EXPECT_EQ(clerk.escapeIgnored, QList<bool>(3, true));        // no keys of its own
    for (const QImage& page : clerk.pages) EXPECT_GT(darkPixels(page), 200);
    EXPECT_TRUE(QApplication::topLevelWidgets().isEmpty() || !QApplication::activeModalWidget());
}

TEST(Preview, AGridsLateAreaSizesTheWindow)
{
    ScriptedDialogs dialogs;
    Clerk clerk;
    session().PreviewMode = true;
    MemoryGridCells cells([](const QString&, double points, const QString& text) { return text.size() * points * 10; });
    Grd grd(&cells);
    grd.GrdInit(1);
    GrdColumn c;
    c.Caption = QStringLiteral("名称");
    c.Kind = QStringLiteral("S");
    c.Format = QStringLiteral("20");
    c.Name = QStringLiteral("Namae");
    grd.GrdAddColumn(c);
    grd.GrdSetHeaders();
    auto rows = listRows({"Namae"}, {{"りんご"}, {"みかん"}});
    ASSERT_TRUE(grd.GrdFill(rows.get(), nullptr));
    grd.paper = QStringLiteral("15");
    std::unique_ptr<PageOutput> out = makeReportOutput();
    EXPECT_TRUE(printTo(*out, [&] { return grd.GrdPrint(QStringLiteral("一覧"), QString(), 0); }));
    session().PreviewMode = false;
    EXPECT_EQ(clerk.sizes, QList<QSize>{QSize(1120, 976)});
}

}  // namespace
