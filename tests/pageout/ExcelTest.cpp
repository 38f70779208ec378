#include <gtest/gtest.h>
#include <QDate>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include "pageout/Excel.h"
#include "pageout/ExcelFixture.h"
#include "pageout/PageFixture.h"
#include "pageout/ReportRows.h"
#include "support/TempCompany.h"

namespace {

// Serial day number of a date in a sheet.
QString serial(const QDate& d) { return QString::number(QDate(1899, 12, 30).daysTo(d)); }

// The export of a ledger: a heading row, then dates, kinds, codes, names and figures.
TEST(Excel, ValuesAndTheDateFormatLandInTheirCells)
{
    QTemporaryDir dir;
    ScriptedDialogs dialogs;
    ExcelBook book;
    ASSERT_TRUE(book.open());
    EXPECT_EQ(dialogs.of("Wait"), QStringList{"エクセルファイルを作成しています。"});
    book.setCell(1, 1, QStringLiteral("日  付"));
    book.setCell(2, 1, QStringLiteral("2026-04-01"));   // a date as the store keeps it
    book.setFormat(2, 1, QStringLiteral("yyyy/mm/dd"));
    book.setCell(2, 2, QStringLiteral("売上"));
    book.setCell(2, 3, QStringLiteral("0000000000123"));
    book.setCell(2, 4, QVariant());                       // Null: the cell stays empty
    book.setCell(2, 5, 12);
    book.setCell(2, 6, moneyVariant(Money::fromRaw(12345678)));
    book.setCell(3, 1, QDate(2026, 4, 30));
    book.setFormat(3, 1, QStringLiteral("yyyy/mm/dd"));
    book.setCell(3, 2, QStringLiteral("2026-04-30"));   // a date text without a date format stays text
    QString error;
    const QString file = dir.filePath("元帳.xlsx");
    ASSERT_TRUE(book.saveAs(file, &error)) << error.toStdString();

    const SheetXml sheet(file);
    ASSERT_TRUE(sheet.ok);
    EXPECT_EQ(sheet.cell("A1"), "日  付");
    EXPECT_EQ(sheet.cell("A2"), serial(QDate(2026, 4, 1)));
    EXPECT_EQ(sheet.format("A2"), "yyyy/mm/dd");
    EXPECT_EQ(sheet.cell("B2"), "売上");
    EXPECT_EQ(sheet.cell("C2"), "0000000000123");
    EXPECT_FALSE(sheet.has("D2"));
    EXPECT_EQ(sheet.cell("E2"), "12");
    EXPECT_EQ(sheet.cell("F2"), "1234.5678");
    EXPECT_EQ(sheet.cell("A3"), serial(QDate(2026, 4, 30)));
    EXPECT_EQ(sheet.format("A3"), "yyyy/mm/dd");
    EXPECT_EQ(sheet.cell("B3"), "2026-04-30");
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{"元帳.xlsx"});
    // Other stations read the sheet from a shared folder: not a private temporary file's mode.
    EXPECT_TRUE(QFile::permissions(file) & QFileDevice::ReadGroup);
}

TEST(Excel, TheFileNameTakesThePathExcelFolderAndATimeStamp)
{
    TempCompany co(0);
    struct Case {
        QByteArray pathExcel;   // "-": no file
        QString folder;
    } cases[] = {
        {"-", ""},
        {"", ""},
        {"/data/excel/\n", "/data/excel/"},
        {"/data/excel\nsecond line\n", "/data/excel/"},
    };
    for (const Case& c : cases) {
        QFile::remove("PathExcel");
        if (c.pathExcel != "-") writeFile("PathExcel", c.pathExcel);
        const QString name = excelFileName(QStringLiteral("元帳"));
        EXPECT_TRUE(name.startsWith(c.folder + "元帳")) << name.toStdString();
        EXPECT_TRUE(QRegularExpression("^元帳\\d{14}\\.xlsx$").match(name.mid(c.folder.size())).hasMatch()) << name.toStdString();
    }
}

// Saved under the folder of PathExcel and opened, or, without a program for it, told where it
// is; a folder that is not there is told and leaves nothing.
TEST(Excel, SaveOpensTheFileOrTellsWhereItIsAndFailsWithoutAHalfFile)
{
    TempCompany co(0);
    QDir().mkdir("xls");
    QStringList opened;
    bool desktopHasProgram = true;
    setSpreadsheetOpener([&](const QString& p) {
        opened << p;
        return desktopHasProgram;
    });
    struct Case {
        const char* folder;
        bool program, saved;
        QString tell;   // %1: the file
    } cases[] = {
        {"xls", true, true, ""},
        {"xls", false, true, "エクセルファイルを保存しました。\n%1"},
        {"gone", true, false, "エラー：エクセルファイルを保存できませんでした。（%1）保存先のフォルダがありません。"},
    };
    for (const Case& c : cases) {
        writeFile("PathExcel", QFile::encodeName(QDir::current().filePath(c.folder)) + "\n");
        desktopHasProgram = c.program;
        ScriptedDialogs dialogs;
        ExcelBook book;
        book.open();
        book.setCell(1, 1, QStringLiteral("商品別売上集計"));
        QString path, error;
        EXPECT_EQ(book.save(QStringLiteral("売上"), &path, &error), c.saved) << c.folder;
        EXPECT_EQ(dialogs.of("Tell"), c.tell.isEmpty() ? QStringList() : QStringList{c.tell.arg(path)}) << c.folder;
        EXPECT_EQ(opened.contains(path), c.saved);
        if (!c.saved) {
            EXPECT_EQ(error, c.tell.arg(path));
        }
    }
    setSpreadsheetOpener({});
    EXPECT_FALSE(QDir("gone").exists());
    const QStringList left = QDir("xls").entryList(QDir::Files | QDir::Hidden);
    EXPECT_EQ(left.size(), 2);
    for (const QString& f : left) EXPECT_TRUE(f.startsWith("売上")) << f.toStdString();
}

}  // namespace
