#include <gtest/gtest.h>
#include <QDir>
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

// An invoice-like document of two pages: a Mincho heading and Gothic rows of names and money.
bool drawInvoice()
{
    static std::unique_ptr<ReportRows> rows;
    rows = listRows({"Namae", "Gaku"}, {{"山田商店", moneyVariant(Money::fromYen(120000))},
                                        {"株式会社ベルモラ", moneyVariant(Money::fromYen(3500))},
                                        {"丸三食品", moneyVariant(Money::fromYen(98765))}});
    VtmlClear();
    VtmlField name = makeField("得意先名", "Namae", "S", "30");
    name.FontName = QStringLiteral("ＭＳ ゴシック");
    VtmlAddField(name);
    VtmlAddField(makeField("金額", "Gaku", "N", "#,###,##0", 0, 1));
    PbSetRows(rows.get());
    for (const char* l : {"<AREA>15600,8880", "<FONT>ＭＳ 明朝", "<SIZE>16", "<CENTER>", "<FREE>0,300,御請求書",
                          "<LEFT>", "<SIZE>11", "<LOCATE>0,1200", "<DTPOS>", "<ZOUBUN>300", "<DTCNT>2"})
        VtmlAddLine(QString::fromUtf8(l));
    return VtmlPrint();
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
    QString error;
    EXPECT_FALSE(makePdfOutput(dir.filePath("nowhere/out.pdf"), &error));
    EXPECT_TRUE(error.startsWith("エラー：PDFファイルを書き込めませんでした。")) << error.toStdString();

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

}  // namespace
