#include <gtest/gtest.h>
#include <QDate>
#include "pageout/ReportForm.h"
#include "pageout/ReportRows.h"
#include "pageout/PageFixture.h"

namespace {

// The recording surface measures a half-width character at size 10 as 100 twips, a full-width
// one as 200, and every text as 240 high.
TEST(Vtml, LinesDrawWhereTheLanguageSays)
{
    struct Case {
        const char* what;
        QStringList lines;
        QStringList drawn;   // "T" and "L" entries of the page
    } cases[] = {
        {"a plain line with > takes the text before it as a tag", {"a>b"}, {"T 0,0 b"}},
        {"an empty tag and an unknown tag draw their argument", {"<>x", "<GRDBKGRD>", "<FREE>0,300,y"},
         {"T 0,0 x", "T 100,0 ", "T 0,300 y"}},
        {"texts of one line follow each other", {"<LOCATE>50,10", "AB", "C"}, {"T 50,10 AB", "T 250,10 C"}},
        {"FREE ignores its x under CENTER and centres on the area",
         {"<AREA>1000,2000", "<CENTER>", "<FREE>50,100,AB", "<LEFT>", "<FREE>50,400,AB"},
         {"T 400,100 AB", "T 50,400 AB"}},
        {"LEFT puts the position back to the left edge", {"<LOCATE>300,20", "<LEFT>", "A"}, {"T 0,20 A"}},
        {"RIGHT with a text wider than the area stands left of the page",
         {"<AREA>1000,1000", "<RIGHT>", "XXXXXXXXXXXX"}, {"T -200,0 XXXXXXXXXXXX"}},
        {"CL after CL advances by 285", {"<ZOUBUN>100", "<CL>", "<CL>", "A"}, {"T 0,385 A"}},
        {"the tallest text of a line sets its advance", {"<ZOUBUN>100", "A", "<CL>", "B", "<SIZE>20", "C", "<CL>", "D"},
         {"T 0,0 A", "T 0,240 B", "T 100,240 C", "T 0,720 D"}},
        {"numbers keep only digits, point and minus", {"<LOCATE>12pt,3a4", "A", "<LOCATE>x-5,7.6", "B"},
         {"T 12,34 A", "T -5,8 B"}},
        {"the last argument of FREE keeps its commas", {"<FREE>10,20,1,234,567"}, {"T 10,20 1,234,567"}},
        {"FOOTER counts lines up from the bottom", {"<AREA>1000,5000", "<ZOUBUN>200", "<FOOTER>2", "A"}, {"T 0,4600 A"}},
        {"a rule takes the offsets at its left end only",
         {"<AREA>2000,3000", "<XOFFSET>100", "<YOFFSET>50", "<LOCATE>0,500", "<LINE>", "A"},
         {"L 100,550 2000,550", "T 100,650 A"}},
    };
    for (const Case& c : cases) {
        PageRun run;
        ASSERT_TRUE(run.lines(c.lines)) << c.what;
        EXPECT_EQ(run.drawn(1), c.drawn) << c.what;
        EXPECT_EQ(run.rec().ended, 1) << c.what;
    }
}

// Under the shrink positions, rules and sizes are scaled by 0.9, the offsets are not; a printer
// keeps its own paper under the shrink or the kept page setup, but centres on the area.
TEST(Vtml, ShrinkAndKeptPageSetup)
{
    struct Case {
        const char* what;
        bool shrinkOff, keep, preview, ownPaper;
        QStringList expected;
    } cases[] = {
        {"a printer under shrink keeps its paper: the text at 1000 stands at 1620", false, false, false, true,
         {"SIZE 10", "T 1620,450 A", "L 720,450 1800,450", "SIZE 4", "T 1584,810 AB"}},
        {"the preview takes the area even under shrink", false, false, true, false,
         {"AREA 2000,3000", "SIZE 10", "T 1620,450 A", "L 720,450 1800,450", "SIZE 4", "T 1584,810 AB"}},
        {"a PDF file has no paper but the area", false, false, false, false,
         {"AREA 2000,3000", "SIZE 10", "T 1620,450 A", "L 720,450 1800,450", "SIZE 4", "T 1584,810 AB"}},
        {"ShrinkOff: everything as given", true, false, false, true,
         {"AREA 2000,3000", "SIZE 11", "T 1720,500 A", "L 720,500 2000,500", "SIZE 5", "T 1670,900 AB"}},
        {"a kept page setup on a printer", true, true, false, true,
         {"SIZE 11", "T 1720,500 A", "L 720,500 2000,500", "SIZE 5", "T 1670,900 AB"}},
        {"a PDF file has no page setup to keep", true, true, false, false,
         {"AREA 2000,3000", "SIZE 11", "T 1720,500 A", "L 720,500 2000,500", "SIZE 5", "T 1670,900 AB"}},
    };
    for (const Case& c : cases) {
        PageRun run;
        session().ShrinkMode = true;
        session().KeepPageSetup = c.keep;
        VtmlSetShrinkOff(c.shrinkOff);
        run.rec().preview = c.preview;
        run.rec().ownPaper = c.ownPaper;
        ASSERT_TRUE(run.lines({"<AREA>2000,3000", "<SIZE>11", "<XOFFSET>720", "<FREE>1000,500,A", "<LOCATE>0,500",
                               "<LINE>", "<SIZE>5", "<CENTER>", "<FREE>0,900,AB"}))
            << c.what;
        QStringList got = run.rec().log;
        got.removeAll(QStringLiteral("END"));
        EXPECT_EQ(got, c.expected) << c.what;
    }
}

TEST(Vtml, ZoubunAndTheAreaCarryIntoTheNextDocument)
{
    PageRun run;
    ASSERT_TRUE(run.lines({"<AREA>3000,1000", "<ZOUBUN>500"}));
    // No ZOUBUN, no text before the first CL: the earlier document's advance counts.
    ASSERT_TRUE(run.lines({"<CL>", "<CENTER>", "AB"}));
    EXPECT_EQ(run.rec().page(2), (QStringList{"T 1400,500 AB"}));
}

TEST(Vtml, DateStampInTheFormsAndTheEra)
{
    struct Case {
        short hiz;
        QString arg, text;
    } cases[] = {
        {2, "1", "2026年5月3日 日曜"}, {1, "1", "平成38年5月3日 日曜"}, {2, "2", "2026.5.3"}, {1, "2", "38.5.3"},
        {2, "3", "5.3"}, {2, "4", ""},   // no form: an empty text, still drawn
    };
    for (const Case& c : cases) {
        PageRun run;
        session().Hiz = c.hiz;
        VtmlSetToday(QDate(2026, 5, 3));
        ASSERT_TRUE(run.lines({"<DATE>" + c.arg, "X"}));
        EXPECT_EQ(run.rec().texts(), (QStringList{c.text, "X"})) << c.arg.toStdString();
    }
}

TEST(Vtml, PaintPlacesPicturesByTheirFitFlags)
{
    struct Case {
        QString line;
        QStringList drawn;
    } cases[] = {
        // 100 x 50 pixels: moved right by 62 and down by 50 pixels of 15 twips.
        {"<PAINT>True,True,1000,2000, logo.png ", {"P 1930,2750 logo.png"}},
        {"<PAINT>0,-1,1000,2000,logo.png", {"P 1000,2750 logo.png"}},
        {"<PAINT>false,false,1000,2000,logo.png", {"P 1000,2000 logo.png"}},
        {"<PAINT>True,False,1000,2000,wide.png", {"P 1000,2000 wide.png"}},   // wider than 162 pixels: not moved
        {"<PAINT>True,True,1000,2000,missing.png", {}},
    };
    for (const Case& c : cases) {
        PageRun run;
        run.rec().pictures = {{"logo.png", QSize(100, 50)}, {"wide.png", QSize(200, 50)}};
        ASSERT_TRUE(run.lines({"<XOFFSET>500", c.line})) << c.line.toStdString();
        EXPECT_EQ(run.rec().only("P "), c.drawn) << c.line.toStdString();
        EXPECT_TRUE(run.told().isEmpty());
    }
}

TEST(Vtml, BkgrdCallsTheReportForm)
{
    struct Form : ReportForm {
        void BKGRD() override { PbText(QStringLiteral("背景")); }
    } form;
    PageRun run;
    ASSERT_TRUE(run.print(nullptr, {}, {"<LOCATE>10,10", "<BKGRD>ignored"}, &form));
    EXPECT_EQ(run.rec().texts(), QStringList{"背景"});
}

// A document that cannot be drawn stops with a message on its last line, and nothing of it
// comes out.
TEST(Vtml, ErrorsStopTheDocumentAndDrawNothingHalf)
{
    const QString wrong = "エラー：5 帳票の行の引数が正しくありません。";
    const QString range = "エラー：6 位置または数値が範囲（-32768～32767）を超えました。";
    struct Case {
        QStringList lines;
        QString message;
    } cases[] = {
        {{"A", "<FREE>100"}, wrong}, {{"<LOCATE>100"}, wrong}, {{">abc"}, wrong}, {{"<PAINT>maybe,1,0,0,a.png"}, wrong},
        {{"<LOCATE>40000,0"}, range}, {{"<FREE>32000,0,XXXXXXXX"}, range}, {{"<XOFFSET>30000", "<FREE>3000,0,A"}, range},
        {{"<LOCATE>0,32700", "<ZOUBUN>100", "<CL>"}, range},
    };
    for (const Case& c : cases) {
        PageRun run;
        const QString message = c.message + "「" + c.lines.last() + "」";
        EXPECT_FALSE(run.lines(c.lines)) << message.toStdString();
        EXPECT_EQ(run.told(), QStringList{message});
        EXPECT_EQ(vtmlLastError(), message);
        EXPECT_EQ(run.rec().ended, 0);
        EXPECT_EQ(run.rec().log.last(), "DROP");
    }
}

TEST(Vtml, BoundsOfLinesAndFields)
{
    PageRun run;
    VtmlClear();
    for (int i = 0; i < 1001; ++i) ASSERT_TRUE(VtmlAddLine(QStringLiteral("<LOCATE>0,0")));
    EXPECT_TRUE(run.print());
    EXPECT_FALSE(VtmlAddLine(QStringLiteral("line 1002")));
    EXPECT_FALSE(run.print());
    EXPECT_EQ(run.told(), QStringList{"エラー：9 帳票の行が多すぎます（1001 行まで）。「line 1002」"});

    PageRun fields;
    VtmlClear();
    VtmlField f;
    for (int i = 0; i < 21; ++i) ASSERT_TRUE(VtmlAddField(f));
    f.Caption = QStringLiteral("二十二");
    EXPECT_FALSE(VtmlAddField(f));
    EXPECT_FALSE(fields.print());
    EXPECT_EQ(fields.told(), QStringList{"エラー：9 帳票の項目が多すぎます（21 項目まで）。「二十二」"});
    EXPECT_TRUE(fields.rec().log.isEmpty());
}

TEST(Vtml, NoOutputOrAFailingPrinterStopsTheRun)
{
    ScriptedDialogs dialogs;
    EXPECT_FALSE(printDocument(nullptr, {}, {"A"}));   // no output is current
    RecordingOutput out;
    out.rec.failAtPage = 1;
    EXPECT_FALSE(printTo(out, [] { return printDocument(nullptr, {}, {"A"}); }));
    EXPECT_TRUE(out.abandoned);
    EXPECT_FALSE(out.finished);
    EXPECT_EQ(dialogs.of("Tell"), (QStringList{"エラー：印刷先が選ばれていません。", "エラー：プリンタが応答しません。"}));
}

}  // namespace
