#include "reports/LedgerReport.h"
#include <QSqlError>
#include <QSqlRecord>
#include "entry/Convert.h"
#include "entry/Dates.h"
#include "entry/Recordset.h"
#include "shell/Session.h"
#include "store/Sql.h"

HeldRows::HeldRows(QStringList columns, QList<QVariantList> rows) : columns_(std::move(columns)), rows_(std::move(rows))
{
    for (int i = 0; i < columns_.size(); ++i) {
        const QString key = columns_[i].toLower();
        if (!index_.contains(key)) index_.insert(key, i);
    }
}

namespace {
QString bareName(const QString& column)
{
    const int dot = column.lastIndexOf(QLatin1Char('.'));
    return (dot < 0 ? column : column.mid(dot + 1)).toLower();
}
}  // namespace

int HeldRows::columnIndex(const QString& column) const
{
    auto it = index_.constFind(column.toLower());
    if (it == index_.constEnd()) it = index_.constFind(bareName(column));
    return it == index_.constEnd() ? -1 : *it;
}

QVariant HeldRows::at(int row, const QString& column) const
{
    if (row < 0 || row >= rows_.size()) return {};
    const int c = columnIndex(column);
    if (c < 0) return {};
    const QVariant& v = rows_[row].at(c);
    return v.isNull() ? QVariant() : v;
}

void HeldRows::setMoneyColumns(const QStringList& columns)
{
    money_ = QList<bool>(columns_.size(), false);
    for (const QString& c : columns) {
        const int i = columnIndex(c);
        if (i >= 0) money_[i] = true;
    }
}

QVariant HeldRows::value(const QString& column) const
{
    const QVariant v = at(cur_, column);
    const int c = columnIndex(column);
    if (v.isNull() || c < 0 || c >= money_.size() || !money_[c]) return v;
    return moneyVariant(Money::fromStore(v));
}

bool HeldRows::next()
{
    if (cur_ < int(rows_.size())) ++cur_;
    return cur_ < int(rows_.size());
}

bool HeldRows::hasColumn(const QString& column) const { return columnIndex(column) >= 0; }


bool readHeldRows(const QSqlDatabase& db, const QString& sql, const QVariantList& binds, HeldRows* rows,
                  QString* error)
{
    Query q(db, sql, binds);
    if (!q.ok()) {
        if (error) *error = StoreErrorText(q.error());
        return false;
    }
    const QSqlRecord rec = q.raw().record();
    QStringList columns;
    for (int i = 0; i < rec.count(); ++i) columns << rec.fieldName(i);
    QList<QVariantList> data;
    while (q.next()) {
        QVariantList row;
        row.reserve(rec.count());
        for (int i = 0; i < rec.count(); ++i) row << q.value(i);
        data << row;
    }
    if (q.raw().lastError().isValid()) {
        if (error) *error = StoreErrorText(q.raw().lastError());
        return false;
    }
    *rows = HeldRows(columns, data);
    return true;
}

int fiscalCalendarYear(int month)
{
    const Session& s = session();
    return month < s.sTuki ? s.Nendo + 1 : s.Nendo;
}

QDate fiscalDate(int month, int day) { return DateFromParts(fiscalCalendarYear(month), month, day); }

void fiscalMonthRange(int month, QDate* from, QDate* to)
{
    QDate f, t;
    PeriodOfMonth(session().Sime, fiscalCalendarYear(month), month, f, t);
    *from = f;
    *to = t;
}

QString moneyText(const QVariant& storeValue, const QString& pattern)
{
    return FormatNumber(Money::fromStore(storeValue), pattern);
}

QString moneyText(Money value, const QString& pattern) { return FormatNumber(value, pattern); }

QString textLine(const QString& text)
{
    return text.contains(QLatin1Char('>')) ? QStringLiteral("<>") + text : text;
}

VtmlField reportField(const QString& caption, const QString& name, const QString& kind, const QString& format,
                      short gap, bool total, short fontSize)
{
    VtmlField f;
    f.Caption = caption;
    f.Name = name;
    f.Kind = kind;
    f.Format = format;
    f.Gap = gap;
    f.Total = total ? -1 : 0;
    f.FontSize = fontSize;
    return f;
}
