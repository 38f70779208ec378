#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QProcess>
#include "ledgers/LedgerCommands.h"
#include "pageout/ExcelFixture.h"
#include "pageout/PageFixture.h"
#include "pageout/Excel.h"
#include "pageout/PrintRegistry.h"
#include "pageout/QtPrintCommand.h"
#include "pageout/ReportRows.h"
#include "shell/InstanceLock.h"
#include "store/Sql.h"
#include "store/Store.h"
#include "support/TempCompany.h"

namespace {

struct Console {
    QStringList out, err;
    int run(const QStringList& args)
    {
        CommandConsole c;
        c.out = [this](const QString& s) { out << s; };
        c.err = [this](const QString& s) { err << s; };
        c.readLine = [](QString*) { return false; };
        const int rc = runPrintCommand(args, c);
        EXPECT_FALSE(session().MasterDb.isOpen());
        EXPECT_FALSE(processInstanceLock().held());
        return rc;
    }
};

// A report of the company's offices, registered as the reports register theirs.
void registerOffices()
{
    PrintReportEntry e;
    e.name = QStringLiteral("offices");
    e.usage = QStringLiteral("営業所の一覧");
    e.xlsx = true;
    e.options = {QStringLiteral("from")};
    e.run = [](const PrintRequest& r, QString* error) {
        bool digits = false;
        if (r.options.contains("from") && (r.options.value("from").toInt(&digits), !digits)) {
            *error = QStringLiteral("--from は数字で指定してください。");
            return false;
        }
        if (r.checkOnly) return true;
        auto rows = queryRows(session().MasterDb, QStringLiteral("SELECT Code, Namae FROM Eig ORDER BY Code"));
        if (r.xlsx.isEmpty())
            return printDocument(rows.get(), {makeField("営業所", "Namae", "S", "20")},
                                 {"<AREA>11906,16838", "<FREE>600,300,営業所一覧 " + session().EigNamae, "<LOCATE>600,1000",
                                  "<DTPOS>", "<ZOUBUN>300", "<DTCNT>40"});
        ExcelBook book;
        book.open();
        for (int row = 1; rows->next(); ++row) {
            book.setCell(row, 1, rows->value(QStringLiteral("Code")));
            book.setCell(row, 2, rows->value(QStringLiteral("Namae")));
        }
        return book.saveAs(r.xlsx, error);
    };
    registerPrintReport(e);
}

QString pdfText(const QString& file)
{
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    p.waitForFinished(30000);
    return QString::fromUtf8(p.readAllStandardOutput());
}

TEST(PrintCommand, BadArgumentsAreRefusedWithTheReasonAndExit2)
{
    registerVtmlPrintReport();
    registerOffices();
    QTemporaryDir dir;
    const QString doc = dir.filePath("doc.txt");
    writeFile(doc, "<FREE>100,100,見本\n");
    struct Case {
        QStringList args;
        QString reason;
    } cases[] = {
        {{"print"}, "帳票の名前を指定してください。"},
        {{"print", "nosuch", "--pdf", "x.pdf"}, "nosuch という帳票はありません。"},
        {{"print", "vtml", "--pdf", "x.pdf"}, "vtml には --in を指定してください。"},
        {{"print", "vtml", "--in", doc}, "--pdf ファイル か --xlsx ファイル のどちらか一つを指定してください。"},
        {{"print", "vtml", "--in", doc, "--xlsx", "b.xlsx"}, "vtml はエクセルファイルには出力できません。--pdf を指定してください。"},
        {{"print", "vtml", "--in", doc, "--pdf", "a.pdf", "--month", "4"}, "vtml には --month という指定はありません。"},
        {{"print", "vtml", "--in", doc, "--in", doc, "--pdf", "a.pdf"}, "--in が二度指定されています。"},
        {{"print", "vtml", "--in", doc, "--pdf"}, "--pdf の後に値を指定してください。"},
        {{"print", "offices", "--pdf", "a.pdf", "--office", "x"}, "--office には営業所コード（数字）を指定してください。"},
        // A value the report refuses is refused before the start-up: no company is needed here.
        {{"print", "offices", "--from", "x", "--pdf", "a.pdf"}, "--from は数字で指定してください。"},
    };
    for (const Case& c : cases) {
        Console con;
        EXPECT_EQ(con.run(c.args), 2) << c.args.join(' ').toStdString();
        EXPECT_EQ(con.err.value(0), c.reason);
        EXPECT_TRUE(con.out.isEmpty());
    }
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{"doc.txt"});
}

TEST(PrintCommand, VtmlRendersAFileOfLinesWithoutACompany)
{
    registerVtmlPrintReport();
    QTemporaryDir dir;
    const QString doc = dir.filePath("doc.txt");
    writeFile(doc, "<AREA>11906,8419\r\n<FONT>ＭＳ ゴシック\n<SIZE>14\n<FREE>1000,1000,納品書控え\n");
    Console con;
    const QString pdf = dir.filePath("out.pdf");
    EXPECT_EQ(con.run({"print", "vtml", "--in", doc, "--pdf", pdf}), 0) << con.err.join('\n').toStdString();
    EXPECT_EQ(con.out, QStringList{pdf + " に 1 ページを出力しました。"});
    EXPECT_TRUE(pdfText(pdf).contains("納品書控え"));

    // A document that stops: exit 1, the reason on standard error, no file.
    writeFile(doc, "見出し\n<LOCATE>100\n");
    Console bad;
    const QString none = dir.filePath("none.pdf");
    EXPECT_EQ(bad.run({"print", "vtml", "--in", doc, "--pdf", none}), 1);
    EXPECT_EQ(bad.err, QStringList{"エラー：5 帳票の行の引数が正しくありません。「<LOCATE>100」"});
    EXPECT_FALSE(QFile::exists(none));

    Console missing;
    EXPECT_EQ(missing.run({"print", "vtml", "--in", dir.filePath("nothere.txt"), "--pdf", none}), 1);
    EXPECT_EQ(missing.err, QStringList{"入力ファイル " + dir.filePath("nothere.txt") + " を読めません。"});
}

TEST(PrintCommand, AReportOfTheCompanyStartsLikeBatchAndWritesPdfOrXlsx)
{
    registerOffices();
    TempCompany co(2026, 4);
    ASSERT_TRUE(co.open());
    ASSERT_EQ(execSql(session().MasterDb,
                      QStringLiteral("INSERT INTO Eig (Code, Namae, DurNo, DsrNo, DshNo, DnyNo, SeikyuNo) VALUES (2, '大阪支店', 1, 1, 1, 1, 1)")),
              ErrorClass::None);
    CloseStore();

    Console pdf;
    EXPECT_EQ(pdf.run({"print", "offices", "--office", "2", "--pdf", "eig.pdf"}), 0) << pdf.err.join('\n').toStdString();
    const QString text = pdfText(co.file("eig.pdf"));
    EXPECT_TRUE(text.contains("営業所一覧 大阪支店")) << text.toStdString();
    EXPECT_TRUE(text.contains("本社"));

    Console xlsx;
    EXPECT_EQ(xlsx.run({"print", "offices", "--xlsx", "eig.xlsx"}), 0) << xlsx.err.join('\n').toStdString();
    const SheetXml sheet(co.file("eig.xlsx"));
    EXPECT_EQ(sheet.cell("A2"), "2");
    EXPECT_EQ(sheet.cell("B2"), "大阪支店");

    Console office;
    EXPECT_EQ(office.run({"print", "offices", "--office", "9", "--pdf", "nine.pdf"}), 2);
    EXPECT_EQ(office.err, QStringList{"営業所 9 は登録されていません。"});
    EXPECT_FALSE(QFile::exists(co.file("nine.pdf")));
}

}  // namespace
