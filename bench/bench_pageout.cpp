// A long ledger-like report through the page language to a PDF file: 10,000 rows of code,
// name, quantity and amount, 50 a page with page and running totals. Prints the time of
// reading the same rows from SQLite alone beside the time of the whole report, and the pages
// per second.
// Usage: bench_pageout [rows] (default 10000)
#include <cstdio>
#include <cstdlib>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include "pageout/PageOutput.h"
#include "pageout/QtPageOutputs.h"
#include "pageout/ReportRows.h"
#include "pageout/Vtml.h"

namespace {

const QString kSql = QStringLiteral("SELECT Code, Namae, Suu, Gaku FROM Rep ORDER BY Code");

bool fillRows(QSqlDatabase& db, int n)
{
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("CREATE TABLE Rep (Code INTEGER PRIMARY KEY, Namae TEXT, Suu INTEGER, Gaku INTEGER)")))
        return false;
    db.transaction();
    q.prepare(QStringLiteral("INSERT INTO Rep VALUES (?, ?, ?, ?)"));
    for (int i = 1; i <= n; ++i) {
        q.addBindValue(i);
        q.addBindValue(QStringLiteral("得意先その%1 株式会社").arg(i));
        q.addBindValue(i % 97);
        q.addBindValue(qint64(i % 9973) * 12345);   // ten-thousandths of a yen
        if (!q.exec()) return false;
    }
    return db.commit();
}

VtmlField field(const QString& caption, const QString& name, const QString& kind, const QString& format, short total)
{
    VtmlField f;
    f.Caption = caption;
    f.Name = name;
    f.Kind = kind;
    f.Format = format;
    f.Gap = 120;
    f.Total = total;
    return f;
}

bool report(ReportRows* rows)
{
    VtmlClear();
    VtmlAddField(field(QStringLiteral("コード"), QStringLiteral("Code"), QStringLiteral("N"), QStringLiteral("######"), 0));
    VtmlAddField(field(QStringLiteral("得意先名"), QStringLiteral("Namae"), QStringLiteral("S"), QStringLiteral("30"), 0));
    VtmlAddField(field(QStringLiteral("数量"), QStringLiteral("Suu"), QStringLiteral("N"), QStringLiteral("###,##0"), 1));
    VtmlAddField(field(QStringLiteral("金額"), QStringLiteral("Gaku"), QStringLiteral("N"), QStringLiteral("###,###,##0"), 1));
    PbSetRows(rows);
    for (const char* l : {"<AREA>11906,16838", "<FONT>ＭＳ 明朝", "<SIZE>14", "<CENTER>", "<FREE>0,600,売上一覧表", "<LEFT>",
                          "<SIZE>10", "<LOCATE>9000,900", "<DATE>1", "<LOCATE>9000,1150", "<PAGE>", "<FONT>ＭＳ ゴシック",
                          "<XOFFSET>600", "<LOCATE>0,1600", "<DTPOS>", "<ZOUBUN>260", "<DTCNT>50"})
        VtmlAddLine(QString::fromUtf8(l));
    return VtmlPrint();
}

}  // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const int n = argc > 1 ? std::atoi(argv[1]) : 10000;
    QTemporaryDir dir;
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bench"));
    db.setDatabaseName(dir.filePath(QStringLiteral("bench.db")));
    if (!db.open() || !fillRows(db, n)) {
        std::fprintf(stderr, "could not make the rows\n");
        return 1;
    }

    QElapsedTimer t;
    t.start();
    qint64 read = 0;
    {
        auto rows = queryRows(db, kSql, {}, {QStringLiteral("Gaku")});
        while (rows->next())
            read += rows->value(QStringLiteral("Code")).toLongLong() + rows->value(QStringLiteral("Namae")).toString().size();
    }
    const double readMs = t.nsecsElapsed() / 1e6;

    const QString file = dir.filePath(QStringLiteral("report.pdf"));
    t.restart();
    std::unique_ptr<PageOutput> out = makePdfOutput(file);
    auto rows = queryRows(db, kSql, {}, {QStringLiteral("Gaku")});
    bool ok = false;
    {
        ScopedPageOutput scope(out.get());
        ok = out && report(rows.get());
    }
    const double drawMs = t.nsecsElapsed() / 1e6;
    QString error;
    ok = ok && out->finish(&error);
    const double reportMs = t.nsecsElapsed() / 1e6;
    if (!ok) {
        std::fprintf(stderr, "the report failed: %s %s\n", qPrintable(vtmlLastError()), qPrintable(error));
        return 1;
    }
    const int pages = out->pages();
    std::printf("rows %d, %d a page, %d pages, PDF %.1f MB (checksum %lld)\n", n, 50, pages,
                QFileInfo(file).size() / 1048576.0, read);
    std::printf("  reading the rows from SQLite           %9.1f ms\n", readMs);
    std::printf("  the pages drawn, rows read with them   %9.1f ms\n", drawMs);
    std::printf("  the PDF file finished and written      %9.1f ms\n", reportMs - drawMs);
    std::printf("  the whole report                       %9.1f ms   %7.1f pages/s   %7.0f rows/s\n", reportMs,
                pages / (reportMs / 1000), n / (reportMs / 1000));
    return 0;
}
