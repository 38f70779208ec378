#include "reports/QtSummaryPrints.h"
#include <QDate>
#include "entry/Convert.h"
#include "pageout/Grd.h"
#include "pageout/PrintRegistry.h"
#include "pageout/QtPageOutputs.h"
#include "reports/Chouha.h"
#include "reports/RepoGeppou.h"
#include "reports/RepoGeppouCopy.h"
#include "reports/RepoNippou.h"

namespace {

const QString kNothing = QStringLiteral("対象がありません。");

bool dateOption(const PrintRequest& r, const QString& name, QDate* date, QString* error)
{
    *date = QDate::fromString(r.options.value(name), QStringLiteral("yyyyMMdd"));
    if (date->isValid()) return true;
    *error = QStringLiteral("--%1 は YYYYMMDD の日付で指定してください。").arg(name);
    return false;
}

// A whole number option, `fallback` when it is not given; false for anything but digits.
bool numberOption(const PrintRequest& r, const QString& name, qint64 fallback, qint64* value, QString* error)
{
    if (!r.options.contains(name)) {
        *value = fallback;
        return true;
    }
    bool ok = false;
    *value = r.options.value(name).toLongLong(&ok);
    if (!ok) *error = QStringLiteral("--%1 は数字で指定してください。").arg(name);
    return ok;
}

bool oneOf(const PrintRequest& r, const QString& name, const QStringList& allowed, QString* error)
{
    if (r.options.contains(name) && !allowed.contains(r.options.value(name))) {
        *error = QStringLiteral("--%1 は %2 のどれかです。").arg(name, allowed.join(QLatin1Char('|')));
        return false;
    }
    return true;
}

MemoryGridCells memoryCells() { return MemoryGridCells(pageTextWidth); }

} // namespace

bool printProducts(const PrintRequest& r, QString* error)
{
    QDate from, to;
    qint64 partner = 0;
    if (!oneOf(r, QStringLiteral("mode"), {QStringLiteral("Uri"), QStringLiteral("Kai")}, error)
        || !dateOption(r, QStringLiteral("from"), &from, error) || !dateOption(r, QStringLiteral("to"), &to, error)
        || !numberOption(r, QStringLiteral("partner"), 0, &partner, error))
        return false;
    if (r.checkOnly) return true;
    RepoNippou report(r.options.value(QStringLiteral("mode")));
    if (!report.load(from, to, partner, error)) return false;
    if (report.count() == 0) return *error = kNothing, false;
    MemoryGridCells cells = memoryCells();
    Grd grd(&cells);
    RepoNippou::setUp(grd);
    if (!report.fill(grd)) return false;
    if (!r.xlsx.isEmpty()) return exportCells(cells, r.xlsx, error);
    return report.print(grd);
}

bool printMonthly(const PrintRequest& r, QString* error)
{
    const QString missing = RepoGeppou::checkFields(r.options.value(QStringLiteral("month")),
                                                    r.options.value(QStringLiteral("sime")));
    if (!missing.isEmpty()) return *error = missing, false;
    qint64 month = 0, sime = 0, split = 0;
    GeppouRequest q;
    if (!numberOption(r, QStringLiteral("month"), 0, &month, error) || !numberOption(r, QStringLiteral("sime"), 0, &sime, error)
        || !numberOption(r, QStringLiteral("customer"), 0, &q.customer, error)
        || !numberOption(r, QStringLiteral("dest"), 0, &q.dest, error)
        || !oneOf(r, QStringLiteral("split"), {QStringLiteral("0"), QStringLiteral("1")}, error)
        || !numberOption(r, QStringLiteral("split"), 0, &split, error))
        return false;
    q.month = int(month);
    q.sime = int(sime);
    q.split = split == 1;
    if (r.checkOnly) return true;
    if (!r.xlsx.isEmpty()) {
        RepoGeppou report;
        if (!report.load(q, error)) return false;
        if (report.rows().isEmpty()) return *error = kNothing, false;
        MemoryGridCells cells = memoryCells();
        report.grid().toCells(cells);
        return exportCells(cells, r.xlsx, error);
    }
    int sheets = 0;
    if (!MonthlyCopy::printAll(q, &sheets, error)) return false;
    if (sheets == 0) return *error = kNothing, false;
    return true;
}

bool printCutoff(const PrintRequest& r, QString* error)
{
    QDate from, to;
    qint64 order = 1;
    if (!oneOf(r, QStringLiteral("code"), {QStringLiteral("URI"), QStringLiteral("KAI"), QStringLiteral("TAN")}, error)
        || !dateOption(r, QStringLiteral("from"), &from, error) || !dateOption(r, QStringLiteral("to"), &to, error)
        || !oneOf(r, QStringLiteral("order"), {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")}, error)
        || !numberOption(r, QStringLiteral("order"), 1, &order, error))
        return false;
    if (r.checkOnly) return true;
    Chouha list(r.options.value(QStringLiteral("code")));
    switch (list.run(from, to, int(order), error)) {
    case MeiTResult::Failed:
        return false;
    case MeiTResult::NoSlips:
        *error = QStringLiteral("対象の伝票がありません。");
        return false;
    case MeiTResult::Done:
        break;
    }
    if (!r.xlsx.isEmpty()) return list.exportTo(r.xlsx, error);
    return list.print();
}
