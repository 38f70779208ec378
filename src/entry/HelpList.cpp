#include "entry/HelpList.h"

#include <algorithm>
#include <QSqlRecord>
#include "entry/Convert.h"
#include "store/Session.h"
#include "store/Money.h"
#include "store/Schema.h"
#include "store/Sql.h"

namespace {
bool oneOf(const QString& t, std::initializer_list<const char*> keys)
{
    return std::any_of(keys.begin(), keys.end(), [&](const char* k) { return t == QLatin1String(k); });
}

// A code argument: numbers are bound as numbers, anything else as text (which then matches
// no integer code).
QVariant codeArg(const QString& text)
{
    bool ok = false;
    const qlonglong n = text.trimmed().toLongLong(&ok);
    return ok ? QVariant(n) : QVariant(text);
}

// Prices as the list shows them: thousands marks, no decimals, nothing for zero.
QString price(const QVariant& v)
{
    return FormatRight(Money::fromStore(v), QStringLiteral("###,###,###,###,###")).trimmed();
}

QString field(const QSqlRecord& rec, const char* name)
{
    const int i = rec.indexOf(QLatin1String(name));
    return i < 0 ? QString() : NullToEmpty(rec.value(i));
}

const QString kLike = QStringLiteral("Kana LIKE ? ESCAPE '\\'");
}  // namespace

QString HelpList::initialSort(const QString& table)
{
    return oneOf(table, {"Tor", "Sir"}) ? QStringLiteral("Kana") : QStringLiteral("Code");
}

QString HelpList::likeArgument(const QString& pattern)
{
    QString out;
    for (QChar c : pattern) {
        if (c == QLatin1Char('*')) out += QLatin1Char('%');
        else if (c == QLatin1Char('?')) out += QLatin1Char('_');
        else if (c == QLatin1Char('%') || c == QLatin1Char('_') || c == QLatin1Char('\\'))
            out += QLatin1Char('\\') + QString(c);
        else out += c;
    }
    return out + QLatin1Char('%');
}

HelpStatement HelpList::statement(const QString& table, const QString& filter1, const QString& filter2,
                                  const QString& hinFilter, const QString& pattern, const QString& sortColumn)
{
    HelpStatement s;
    const TableDef* def = findTableDef(table);
    if (!def || !oneOf(sortColumn, {"Code", "Kana", "Ryaku", "Namae"})) return s;
    const bool filtered = pattern != QLatin1String("*");

    QString head;
    if (table == QLatin1String("Hin")) {
        head = QStringLiteral("SELECT * FROM Hin ");
    } else if (table == QLatin1String("Tka")) {
        head = QStringLiteral("SELECT Code,Namae,Kana,STanka,Tanka FROM Hin INNER JOIN Tka ON Hin.Code=Tka.HinCode  WHERE Tka.TorCode=?");
        s.binds << codeArg(filter1);
    } else if (table == QLatin1String("Ska")) {
        head = QStringLiteral("SELECT Code,Namae,Kana,Tanka,UTanka FROM Hin INNER JOIN Ska ON Hin.Code=Ska.HinCode  WHERE Ska.SirCode=?");
        s.binds << codeArg(filter1);
    } else if (table == QLatin1String("Nka")) {
        head = QStringLiteral("SELECT Code,Namae,Kana,STanka,Tanka FROM Hin INNER JOIN Nka ON Hin.Code=Nka.HinCode  WHERE Nka.TorCode=? AND Nka.NouCode=?");
        s.binds << codeArg(filter1) << codeArg(filter2);
    } else if (table == QLatin1String("Nou")) {
        head = QStringLiteral("SELECT TorCode,Code,Kana,Namae,Ryaku FROM Nou WHERE TorCode = ?");
        s.binds << codeArg(filter1);
    } else if (table == QLatin1String("Tor") || table == QLatin1String("Sir")) {
        const QString cls = table == QLatin1String("Tor") ? QStringLiteral("TbnCode") : QStringLiteral("SbnCode");
        head = QStringLiteral("SELECT Code,%1,Kana,Namae,Ryaku FROM %2 ").arg(cls, table);
        if (filter1 == QLatin1String("ALL")) {
            head += QStringLiteral("WHERE Code > 0 ");
        } else {
            head += QStringLiteral("WHERE %1 = ?").arg(cls);
            s.binds << codeArg(filter1);
        }
    } else {
        head = QStringLiteral("SELECT * FROM ") + def->name;
    }

    QString filter;
    if (filtered) {
        // Supplier prices have a WHERE of their own like the other joins.
        if (oneOf(table, {"Tor", "Sir", "Nou", "Bum", "Tka", "Nka", "Ska"}))
            filter = QStringLiteral(" AND ") + kLike + QLatin1Char(' ');
        else if (table == QLatin1String("Hin"))
            filter = QStringLiteral(" WHERE ") + kLike + (hinFilter.isEmpty() ? QString() : QStringLiteral(" AND ") + hinFilter);
        else
            filter = QStringLiteral(" WHERE ") + kLike + QLatin1Char(' ');
        s.binds << likeArgument(pattern);
    } else if (table == QLatin1String("Hin")) {
        if (!hinFilter.isEmpty()) filter = QStringLiteral("WHERE ") + hinFilter;
    } else if (oneOf(table, {"Zip", "Zip7"})) {
        filter = QStringLiteral(" WHERE Code=? ");
        s.binds << codeArg(filter1);
    }
    s.sql = head + filter + QStringLiteral(" ORDER BY ") + sortColumn;
    s.valid = true;
    return s;
}

void HelpList::Init(const QString& table, const QString& filter1, const QString& filter2)
{
    Table = table;
    Filter1 = filter1;
    Filter2 = filter2;
    rows_.clear();
    Pattern = QStringLiteral("*");
    TopRow = 0;
    CurRow = 0;
    Hit = false;
    HitCode.clear();
    RunQuery(initialSort(table));
}

bool HelpList::RunQuery(const QString& sortColumn)
{
    sort_ = sortColumn;
    rows_.clear();
    error_.clear();
    RowCount = 0;
    TopRow = 0;
    CurRow = 0;
    const HelpStatement s = statement(Table, Filter1, Filter2, HinFilter, Pattern, sortColumn);
    if (!s.valid) return false;
    Query q(session().MasterDb, s.sql, s.binds);
    while (q.next()) rows_ << lineOf(q.raw().record());
    if (!q.ok()) {
        rows_.clear();
        error_ = QStringLiteral("エラー：") + QString::number(sqliteCode(q.error())) + QLatin1Char(' ')
                 + q.error().databaseText();
        return false;
    }
    RowCount = int(rows_.size());
    return true;
}

HelpLine HelpList::lineOf(const QSqlRecord& rec) const
{
    HelpLine l;
    const bool hinLike = oneOf(Table, {"Hin", "Tka", "Nka", "Ska"});
    if (hinLike) {
        QString code = field(rec, "Code");
        l.hCode = ZeroStrip(code);
        l.hKana = field(rec, "Kana");
        l.hNamae = field(rec, "Namae");
        if (Table == QLatin1String("Ska"))
            l.hRyaku = price(rec.value(QStringLiteral("Tanka"))) + QLatin1Char('-') + price(rec.value(QStringLiteral("UTanka")));
        else
            l.hRyaku = price(rec.value(QStringLiteral("STanka"))) + QLatin1Char('-')
                       + price(rec.value(Table == QLatin1String("Hin") ? QStringLiteral("UTanka") : QStringLiteral("Tanka")));
    } else if (oneOf(Table, {"Zip", "Zip7"})) {
        l.hCode = field(rec, "Code");
        l.hNamae = field(rec, "Addr");
    } else {
        l.hCode = field(rec, "Code");
        l.hKana = field(rec, "Kana");
        l.hRyaku = field(rec, "Ryaku");
        l.hNamae = field(rec, "Namae");
    }
    return l;
}

QList<HelpLine> HelpList::page() const
{
    return rows_.mid(TopRow, PageRows);
}

QString HelpList::head3() const
{
    // The pairing looks reversed; it is the caption the clerks know.
    return oneOf(Table, {"Hin", "Tka", "Ska"}) ? QStringLiteral("略称 *3") : QStringLiteral("単価 *3");
}

void HelpList::keyUp()
{
    if (CurRow == 0) {
        if (TopRow > 0) --TopRow;
    } else {
        --CurRow;
    }
}

void HelpList::keyDown()
{
    if (CurRow == PageRows - 1) {
        if (TopRow + PageRows < RowCount) ++TopRow;
    } else if (CurRow + 1 < std::min(PageRows, RowCount - TopRow)) {
        ++CurRow;
    }
}

void HelpList::pageUp()
{
    TopRow = std::max(0, TopRow - PageRows);
}

void HelpList::pageDown()
{
    // Pages stay full: the last one ends on the last row.
    if (TopRow + 2 * PageRows <= RowCount) TopRow += PageRows;
    else TopRow = std::max(0, RowCount - PageRows);
}

void HelpList::escape()
{
    Hit = false;
}

bool HelpList::enter(const QString& kanaText)
{
    if (!kanaText.isEmpty()) {
        Pattern = QStringLiteral("*");
        QString sort = QStringLiteral("Kana");
        if (kanaText == QLatin1String("*1")) sort = QStringLiteral("Code");
        else if (kanaText == QLatin1String("*2")) sort = QStringLiteral("Kana");
        else if (kanaText == QLatin1String("*3")) sort = QStringLiteral("Ryaku");
        else if (kanaText == QLatin1String("*4")) sort = QStringLiteral("Namae");
        else if (kanaText != QLatin1String("*")) Pattern = kanaText;
        RunQuery(sort);
        return false;
    }
    const QList<HelpLine> lines = page();
    HitCode.clear();
    if (CurRow < lines.size()) {
        const HelpLine& l = lines[CurRow];
        HitCode = (oneOf(Table, {"Zip", "Zip7"}) ? l.hNamae : l.hCode).trimmed();
    }
    Hit = !HitCode.isEmpty();
    return true;
}
