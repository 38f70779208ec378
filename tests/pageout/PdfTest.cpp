#include <gtest/gtest.h>
#include <QDir>
#include <QPageLayout>
#include <QPrinter>
#include <QProcess>
#include <QRawFont>
#include <QTemporaryDir>
#include "pageout/PageFixture.h"
#include "pageout/QtPageOutputs.h"

namespace {

// What a poppler tool says about a file.
QString tool(const QString& program, const QStringList& args)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(30000)) return QStringLiteral("(%1 did not run)").arg(program);
    return QString::fromUtf8(p.readAllStandardOutput());
}

// The size of page 1 of a PDF file, in points.
QSizeF pdfPageSize(const QString& file)
{
    const QRegularExpressionMatch m =
        QRegularExpression("Page size:\\s+([0-9.]+) x ([0-9.]+) pts").match(tool("pdfinfo", {file}));
    return m.hasMatch() ? QSizeF(m.captured(1).toDouble(), m.captured(2).toDouble()) : QSizeF();
}

// An invoice-like document of two pages: a Mincho heading and Gothic rows of names and money.
bool drawInvoice()
{
    auto rows = listRows({"Namae", "Gaku"}, {{"山田商店", moneyVariant(Money::fromYen(120000))},
                                             {"株式会社ベルモラ", moneyVariant(Money::fromYen(3500))},
                                             {"丸三食品", moneyVariant(Money::fromYen(98765))}});
    VtmlField name = makeField("得意先名", "Namae", "S", "30");
    name.FontName = QStringLiteral("ＭＳ ゴシック");
    return printDocument(rows.get(), {name, makeField("金額", "Gaku", "N", "#,###,##0", 0, 1)},
                         {"<AREA>15600,8880", "<FONT>ＭＳ 明朝", "<SIZE>16", "<CENTER>", "<FREE>0,300,御請求書", "<LEFT>",
                          "<SIZE>11", "<LOCATE>0,1200", "<DTPOS>", "<ZOUBUN>300", "<DTCNT>2"});
}

// A list headed by `title`, two rows a page, whose rows the store stops giving after the last
// when `breaks`.
bool drawList(const QString& title, int rows, bool breaks)
{
    QList<QVariantList> names;
    for (int i = 1; i <= rows; ++i) names << QVariantList{QStringLiteral("行%1").arg(i)};
    FailingRows data(listRows({"Namae"}, names), breaks ? rows : rows + 1);
    return printDocument(&data, {makeField("名称", "Namae", "S", "20")},
                         {"<AREA>11906,16838", "<FREE>600,300," + title, "<LOCATE>600,1000", "<DTPOS>", "<ZOUBUN>300",
                          "<DTCNT>2"});
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
    // A finished output takes no further document: a clear message, the file as it was.
    EXPECT_FALSE(printTo(*out, drawInvoice));
    EXPECT_EQ(dialogs.of("Tell"), QStringList{"エラー：印刷先が選ばれていません。"});

    const QString text = tool("pdftotext", {"-layout", file, "-"});
    for (const char* s : {"御請求書", "得意先名", "山田商店", "株式会社ベルモラ", "丸三食品", "120,000", "頁計：", "累計：", "222,265"})
        EXPECT_TRUE(text.contains(QString::fromUtf8(s))) << s << "\n" << text.toStdString();
    EXPECT_EQ(text.count(QStringLiteral("御請求書")), 2);   // the heading repeats on each page
    EXPECT_TRUE(tool("pdfinfo", {file}).contains(QRegularExpression("Pages:\\s+2")));
    EXPECT_EQ(pdfPageSize(file), QSizeF(780, 444));
    const QString fonts = tool("pdffonts", {file});
    EXPECT_TRUE(fonts.contains("IPAMincho") && fonts.contains("IPAGothic")) << fonts.toStdString();
    // Only the finished file is in the folder, no temporary one.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"請求書.pdf"});
}

// Ideographs that share their glyph with a radical (金, 山, 食, 頁 and some two hundred
// more) read back as the ideographs, not as the radicals: from our PDF files and from the PDF
// file of the print dialog.
TEST(Pdf, IdeographsSharingARadicalsGlyphReadBackAsThemselves)
{
    const QRawFont gothic = QRawFont::fromFont(QFont(QStringLiteral("IPAexGothic")));
    QString ideographs;
    for (char16_t cp = 0x2F00; cp <= 0x2FD5; ++cp) {
        const QString i = QString(QChar(cp)).normalized(QString::NormalizationForm_KC);
        if (gothic.supportsCharacter(i.at(0))) ideographs += i;   // 戶 is not in the font
    }
    ASSERT_GT(ideographs.size(), 200);
    QStringList lines{"<AREA>16800,11880", "<FONT>ＭＳ ゴシック", "<SIZE>10"};
    for (qsizetype i = 0; i < ideographs.size(); i += 40)
        lines << QStringLiteral("<FREE>300,%1,").arg(300 + i / 40 * 400) + ideographs.mid(i, 40);
    for (const bool printer : {false, true}) {
        QTemporaryDir dir;
        ScriptedDialogs dialogs;
        const QString file = dir.filePath("kanji.pdf");
        QPrinter chosen(QPrinter::HighResolution);
        chosen.setOutputFormat(QPrinter::PdfFormat);
        chosen.setOutputFileName(file);
        std::unique_ptr<PageOutput> out = printer ? makePrinterOutput(chosen) : makePdfOutput(file);
        ASSERT_TRUE(printTo(*out, [&] { return printDocument(nullptr, {}, lines); }));
        QString text = tool("pdftotext", {file, "-"});
        text.remove(QRegularExpression("\\s"));
        EXPECT_EQ(text, ideographs) << printer;
    }
}

// The print dialog's answer decides: cancelled, nothing; a printer (here its PDF file) keeps
// the paper of its dialog where the document does not size the page. Which surface keeps its
// paper under the shrink is the recording surface's test.
TEST(Pdf, APrinterKeepsItsOwnPaperWhereTheDocumentLeavesItAndAPdfTakesTheDocumentsPage)
{
    setPrinterChooser([](QPrinter&) { return false; });
    EXPECT_FALSE(makePrinterOutput());
    const QSizeF b4Wide = QPageSize(QPageSize::B4).size(QPageSize::Point).transposed();
    const QSizeF area(780, 444);   // 15600 x 8880 twips
    struct Case {
        const char* what;
        bool printer, area;
        QSizeF page;
    } cases[] = {
        {"a printer, no AREA", true, false, b4Wide},
        {"a printer, AREA", true, true, area},
        {"a PDF, AREA", false, true, area},
    };
    for (const Case& c : cases) {
        QTemporaryDir dir;
        ScriptedDialogs dialogs;
        const QString file = dir.filePath("page.pdf");
        setPrinterChooser([&](QPrinter& p) {
            p.setOutputFormat(QPrinter::PdfFormat);
            p.setOutputFileName(file);
            p.setPageLayout(QPageLayout(QPageSize(QPageSize::B4), QPageLayout::Landscape, QMarginsF()));
            return true;
        });
        std::unique_ptr<PageOutput> out = c.printer ? makePrinterOutput() : makePdfOutput(file);
        ASSERT_TRUE(out);
        EXPECT_EQ(out->surface()->hasOwnPaper(), c.printer);
        QStringList lines{"<FREE>600,600,見本"};
        if (c.area) lines.prepend("<AREA>15600,8880");
        ASSERT_TRUE(printTo(*out, [&] { return printDocument(nullptr, {}, lines); })) << c.what;
        const QSizeF got = pdfPageSize(file);
        EXPECT_NEAR(got.width(), c.page.width(), 1) << c.what;
        EXPECT_NEAR(got.height(), c.page.height(), 1) << c.what;
    }
    setPrinterChooser({});
}

// No half file, no half document: what cannot be written is refused with the reason; the
// pages of a document that stops never come out; a run that stops leaves nothing.
TEST(Pdf, NoHalfFile)
{
    QTemporaryDir dir;
    ScriptedDialogs dialogs;
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

    // The second customer's list stops on its third page; the run goes on with the third.
    const QString file = dir.filePath("run.pdf");
    std::unique_ptr<PageOutput> out = makePdfOutput(file);
    ASSERT_TRUE(out);
    ASSERT_TRUE(printTo(*out, [] {
        const bool first = drawList(QStringLiteral("一番目"), 1, false);
        const bool second = drawList(QStringLiteral("二番目"), 5, true);
        const bool third = drawList(QStringLiteral("三番目"), 1, false);
        return first && !second && third;
    }));
    EXPECT_EQ(out->pages(), 2);
    const QString text = tool("pdftotext", {file, "-"});
    EXPECT_TRUE(text.contains("一番目") && text.contains("三番目") && !text.contains("二番目")) << text.toStdString();
    EXPECT_EQ(dialogs.of("Tell"), QStringList{"エラー：11 データベースのファイルが壊れています。"});

    // A run that stops on its second document leaves no file, though a page was done.
    const auto stops = [] { return drawList("最初", 1, false) && drawList("四番目", 5, true); };
    std::unique_ptr<PageOutput> stopped = makePdfOutput(dir.filePath("stopped.pdf"));
    ASSERT_TRUE(stopped);
    EXPECT_FALSE(printTo(*stopped, stops));
    EXPECT_EQ(stopped->pages(), 1);

    // Nothing drawn at all: no file either, and the clerk hears why.
    std::unique_ptr<PageOutput> empty = makePdfOutput(dir.filePath("empty.pdf"));
    ASSERT_TRUE(empty);
    EXPECT_FALSE(printTo(*empty, [] { return true; }));
    EXPECT_EQ(dialogs.of("Tell").last(), "印刷するページがありません。PDFファイルは作成しませんでした。");
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"run.pdf"});
}

}  // namespace
