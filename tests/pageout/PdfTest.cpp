#include <gtest/gtest.h>
#include <QDir>
#include <QPageLayout>
#include <QPrinter>
#include <QProcess>
#include <QRawFont>
#include <QTemporaryDir>
#include "pageout/PageFixture.h"
#include "pageout/QtPageOutputs.h"
#include "pageout/ReportRows.h"

namespace {

// What a poppler tool says about a file.
QString tool(const QString& program, const QStringList& args)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(30000)) return QStringLiteral("(%1 did not run)").arg(program);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// One document of fields over rows and its lines.
bool drawDocument(ReportRows* rows, const QList<VtmlField>& fields, const QStringList& lines)
{
    VtmlClear();
    for (const VtmlField& f : fields) VtmlAddField(f);
    PbSetRows(rows);
    for (const QString& l : lines) VtmlAddLine(l);
    return VtmlPrint();
}

// An invoice-like document of two pages: a Mincho heading and Gothic rows of names and money.
bool drawInvoice()
{
    auto rows = listRows({"Namae", "Gaku"}, {{"山田商店", moneyVariant(Money::fromYen(120000))},
                                             {"株式会社ベルモラ", moneyVariant(Money::fromYen(3500))},
                                             {"丸三食品", moneyVariant(Money::fromYen(98765))}});
    VtmlField name = makeField("得意先名", "Namae", "S", "30");
    name.FontName = QStringLiteral("ＭＳ ゴシック");
    return drawDocument(rows.get(), {name, makeField("金額", "Gaku", "N", "#,###,##0", 0, 1)},
                        {"<AREA>15600,8880", "<FONT>ＭＳ 明朝", "<SIZE>16", "<CENTER>", "<FREE>0,300,御請求書", "<LEFT>",
                         "<SIZE>11", "<LOCATE>0,1200", "<DTPOS>", "<ZOUBUN>300", "<DTCNT>2"});
}

TEST(Pdf, JapaneseTextIsRealTextInTheIpaexFontsOnPagesOfTheDocumentsSize)
{
    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    const QString file = dir.filePath("請求書.pdf");
    std::unique_ptr<PageOutput> out = makePdfOutput(file);
    ASSERT_TRUE(out);
    ASSERT_TRUE(printTo(*out, drawInvoice));
    EXPECT_EQ(out->pages(), 2);
    EXPECT_TRUE(dialogs.log.isEmpty());

    const QString text = tool("pdftotext", {"-layout", file, "-"});
    for (const char* s : {"御請求書", "得意先名", "山田商店", "株式会社ベルモラ", "丸三食品", "120,000", "頁計：", "累計：", "222,265"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(s))) << s << "\n" << text.toStdString();
    EXPECT_EQ(text.count(QStringLiteral("御請求書")), 2);   // the heading repeats on each page

    const QString info = tool("pdfinfo", {file});
    EXPECT_TRUE(info.contains(QRegularExpression("Pages:\\s+2"))) << info.toStdString();
    EXPECT_TRUE(info.contains(QRegularExpression("Page size:\\s+780 x 444 pts"))) << info.toStdString();
    const QString fonts = tool("pdffonts", {file});
    EXPECT_TRUE(fonts.contains("IPAMincho")) << fonts.toStdString();
    EXPECT_TRUE(fonts.contains("IPAGothic")) << fonts.toStdString();

    // Figures of different lengths end at one right edge: blanks, digits and commas are of
    // one width in the forms' fonts.
    const QString boxes = tool("pdftotext", {"-bbox", "-f", "1", "-l", "1", file, "-"});
    QList<double> rightEdges;
    for (const char* figure : {"120,000", "3,500", "123,500"}) {
        const QRegularExpression word(QStringLiteral("xMax=\"([0-9.]+)\"[^>]*>%1</word>").arg(QString::fromUtf8(figure)));
        const QRegularExpressionMatch m = word.match(boxes);
        ASSERT_TRUE(m.hasMatch()) << figure << boxes.toStdString();
        rightEdges << m.captured(1).toDouble();
    }
    EXPECT_NEAR(rightEdges[0], rightEdges[1], 0.05);
    EXPECT_NEAR(rightEdges[0], rightEdges[2], 0.05);
    // Only the finished file is in the folder, no temporary one.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"請求書.pdf"});
}

// Ideographs that share their glyph with a radical (金, 山, 食, 頁 and some two hundred
// more) read back as the ideographs, not as the radicals.
TEST(Pdf, IdeographsSharingARadicalsGlyphReadBackAsThemselves)
{
    const QRawFont gothic = QRawFont::fromFont(QFont(QStringLiteral("IPAexGothic")));
    QString ideographs;
    for (char16_t cp = 0x2F00; cp <= 0x2FD5; ++cp) {
        const QString i = QString(QChar(cp)).normalized(QString::NormalizationForm_KC);
        if (gothic.supportsCharacter(i.at(0))) ideographs += i;   // 戶 is not in the font
    }
    ASSERT_GT(ideographs.size(), 200);
    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    const QString file = dir.filePath("kanji.pdf");
    std::unique_ptr<PageOutput> out = makePdfOutput(file);
    ASSERT_TRUE(out);
    ASSERT_TRUE(printTo(*out, [&] {
        VtmlClear();
        VtmlAddLine(QStringLiteral("<AREA>16800,11880"));
        VtmlAddLine(QStringLiteral("<FONT>ＭＳ ゴシック"));
        VtmlAddLine(QStringLiteral("<SIZE>10"));
        for (qsizetype i = 0; i < ideographs.size(); i += 40)
            VtmlAddLine(QStringLiteral("<FREE>300,%1,").arg(300 + i / 40 * 400) + ideographs.mid(i, 40));
        return VtmlPrint();
    }));
    QString text = tool("pdftotext", {file, "-"});
    text.remove(QRegularExpression("\\s"));
    EXPECT_EQ(text, ideographs);
}

// The print dialog's answer decides: cancelled, nothing; a printer (here its PDF file), the
// pages on it, on the printer's own paper.
TEST(Pdf, ThePrinterIsWhatThePrintDialogChose)
{
    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    const QString file = dir.filePath("printer.pdf");
    setPrinterChooser([](QPrinter&) { return false; });
    EXPECT_FALSE(makePrinterOutput());
    setPrinterChooser([&](QPrinter& p) {
        p.setOutputFormat(QPrinter::PdfFormat);
        p.setOutputFileName(file);
        return true;
    });
    std::unique_ptr<PageOutput> out = makePrinterOutput();
    setPrinterChooser({});
    ASSERT_TRUE(out);
    EXPECT_TRUE(out->surface()->hasOwnPaper());
    ASSERT_TRUE(printTo(*out, drawInvoice));
    const QString text = tool("pdftotext", {file, "-"});
    EXPECT_TRUE(text.contains("株式会社ベルモラ"));
    EXPECT_TRUE(text.contains("金額")) << text.toStdString();
    EXPECT_TRUE(tool("pdfinfo", {file}).contains(QRegularExpression("Pages:\\s+2")));
}

TEST(Pdf, NoHalfFile)
{
    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    // The reason in the clerk's words.
    QDir(dir.path()).mkdir("taken.pdf");
    const struct {
        QString file, message;
    } unwritable[] = {
        {dir.filePath("nowhere/out.pdf"), "保存先のフォルダがありません。"},
        {dir.filePath("taken.pdf"), "同じ名前のフォルダがあります。"},
    };
    for (const auto& c : unwritable) {
        QString error;
        EXPECT_FALSE(makePdfOutput(c.file, &error));
        EXPECT_EQ(error, "エラー：PDFファイルを書き込めませんでした。（" + c.file + "）" + c.message);
    }
    QDir(dir.path()).rmdir("taken.pdf");

    // A run that stops on its second page leaves no file, although one page was done.
    std::unique_ptr<PageOutput> out = makePdfOutput(dir.filePath("stopped.pdf"));
    ASSERT_TRUE(out);
    EXPECT_FALSE(printTo(*out, [] {
        VtmlClear();
        VtmlAddLine(QStringLiteral("最初の頁"));
        if (!VtmlPrint()) return false;
        VtmlClear();
        VtmlAddLine(QStringLiteral("<FREE>1"));
        return VtmlPrint();
    }));
    EXPECT_EQ(out->pages(), 1);

    // Nothing drawn at all: no file either, and the clerk hears why.
    std::unique_ptr<PageOutput> empty = makePdfOutput(dir.filePath("empty.pdf"));
    ASSERT_TRUE(empty);
    EXPECT_FALSE(printTo(*empty, [] { return true; }));
    EXPECT_EQ(dialogs.of("Tell").last(), "印刷するページがありません。PDFファイルは作成しませんでした。");

    EXPECT_TRUE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

// Rows of a list that the store stops giving with an error after `count` rows when `breaks`.
struct StoreRows : ReportRows {
    int at = 0;
    int count;
    bool breaks;
    StoreRows(int n, bool b) : count(n), breaks(b) {}
    bool next() override { return ++at <= count; }
    QVariant value(const QString&) const override { return QStringLiteral("行%1").arg(at); }
    bool hasColumn(const QString&) const override { return true; }
    bool ok() const override { return !(breaks && at > count); }
    QString error() const override { return QStringLiteral("エラー：11 データベースのファイルが壊れています。"); }
};

// A list headed by `title`, two rows a page.
bool drawList(const QString& title, int rows, bool breaks)
{
    StoreRows data(rows, breaks);
    return drawDocument(&data, {makeField("名称", "Namae", "S", "20")},
                        {"<AREA>11906,16838", "<FREE>600,300," + title, "<LOCATE>600,1000", "<DTPOS>", "<ZOUBUN>300",
                         "<DTCNT>2"});
}

// The pages of a document that stops half way never come out: not in a file of a run that
// goes on with the next document, not on a printer whose run stops there.
TEST(Pdf, ADocumentThatStopsHalfWayLeavesNoneOfItsPages)
{
    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    const QString file = dir.filePath("run.pdf");
    std::unique_ptr<PageOutput> out = makePdfOutput(file);
    ASSERT_TRUE(out);
    // The second customer's list stops on its third page; the run goes on with the third.
    ASSERT_TRUE(printTo(*out, [] {
        const bool first = drawList(QStringLiteral("一番目"), 1, false);
        const bool second = drawList(QStringLiteral("二番目"), 5, true);
        const bool third = drawList(QStringLiteral("三番目"), 1, false);
        return first && !second && third;
    }));
    EXPECT_EQ(out->pages(), 2);
    const QString text = tool("pdftotext", {file, "-"});
    EXPECT_TRUE(text.contains("一番目") && text.contains("三番目")) << text.toStdString();
    EXPECT_FALSE(text.contains("二番目")) << text.toStdString();
    EXPECT_TRUE(tool("pdfinfo", {file}).contains(QRegularExpression("Pages:\\s+2")));
    EXPECT_EQ(dialogs.of("Tell"), QStringList{"エラー：11 データベースのファイルが壊れています。"});

    const QString printed = dir.filePath("printer.pdf");
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(printed);
    std::unique_ptr<PageOutput> job = makePrinterOutput(printer);
    EXPECT_FALSE(printTo(*job, [] { return drawList(QStringLiteral("四番目"), 5, true); }));
    EXPECT_FALSE(QFile::exists(printed));
}

// The size of page 1 of a PDF file, in points.
QSizeF pdfPageSize(const QString& file)
{
    const QRegularExpressionMatch m =
        QRegularExpression("Page size:\\s+([0-9.]+) x ([0-9.]+) pts").match(tool("pdfinfo", {file}));
    return m.hasMatch() ? QSizeF(m.captured(1).toDouble(), m.captured(2).toDouble()) : QSizeF();
}

// A printer keeps the paper of its dialog where the document does not size the page (no
// AREA, the shrink, the kept page setup); a PDF file has no paper but the document's.
TEST(Pdf, APrinterKeepsItsOwnPaperWhereTheDocumentLeavesItAndAPdfTakesTheDocumentsPage)
{
    const QSizeF b4Wide = QPageSize(QPageSize::B4).size(QPageSize::Point).transposed();
    const QSizeF area(780, 444);   // 15600 x 8880 twips
    struct Case {
        const char* what;
        bool printer, shrink, keep, area;
        QSizeF page;
    } cases[] = {
        {"a printer, no AREA", true, false, false, false, b4Wide},
        {"a printer, AREA", true, false, false, true, area},
        {"a printer under the shrink", true, true, false, true, b4Wide},
        {"a printer with the page setup kept", true, false, true, true, b4Wide},
        {"a PDF under the shrink", false, true, false, true, area},
        {"a PDF with the page setup kept", false, false, true, true, area},
    };
    for (const Case& c : cases) {
        QTemporaryDir dir;
        ScriptedDialogs dialogs;
        const QString file = dir.filePath("page.pdf");
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file);
        printer.setPageLayout(QPageLayout(QPageSize(QPageSize::B4), QPageLayout::Landscape, QMarginsF()));
        std::unique_ptr<PageOutput> out = c.printer ? makePrinterOutput(printer) : makePdfOutput(file);
        session().ShrinkMode = c.shrink;
        session().KeepPageSetup = c.keep;
        const bool ok = printTo(*out, [&] {
            VtmlClear();
            if (c.area) VtmlAddLine(QStringLiteral("<AREA>15600,8880"));
            VtmlAddLine(QStringLiteral("<FREE>600,600,見本"));
            return VtmlPrint();
        });
        session().ShrinkMode = false;
        session().KeepPageSetup = false;
        ASSERT_TRUE(ok) << c.what;
        const QSizeF got = pdfPageSize(file);
        EXPECT_NEAR(got.width(), c.page.width(), 1) << c.what;
        EXPECT_NEAR(got.height(), c.page.height(), 1) << c.what;
    }
}

// An output that has been finished takes no further document: a clear message, the file as
// it was.
TEST(Pdf, AFinishedOutputRefusesTheNextDocument)
{
    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    const QString file = dir.filePath("done.pdf");
    std::unique_ptr<PageOutput> out = makePdfOutput(file);
    ASSERT_TRUE(out);
    ASSERT_TRUE(printTo(*out, drawInvoice));
    EXPECT_FALSE(printTo(*out, drawInvoice));
    EXPECT_EQ(dialogs.of("Tell"), QStringList{"エラー：印刷先が選ばれていません。"});
    EXPECT_TRUE(tool("pdfinfo", {file}).contains(QRegularExpression("Pages:\\s+2")));
}

}  // namespace
