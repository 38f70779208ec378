#include "masters/CompanyRules.h"

#include "entry/Convert.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {
// A number of only ASCII digits; -1 otherwise.
int digitsValue(const QString& text)
{
    if (text.isEmpty()) return -1;
    for (QChar c : text)
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) return -1;
    return text.toInt();
}
}  // namespace

QString periodMonth(const QString& kai)
{
    return kai.mid(4, 2);
}

StartPeriod checkStartPeriod(const QString& sKai, int nendo, int sime)
{
    StartPeriod p;
    const int month = digitsValue(sKai.mid(4, 2));
    const int day = digitsValue(sKai.mid(6, 2));
    if (sKai.size() != 8 || month < 1 || month > 12 || day < 1 || day > 31) {
        p.message = QStringLiteral("開始会計期間の年度設定が間違ってます。");
        return p;
    }
    const int year = digitsValue(sKai.left(4));
    if (year != nendo) {
        p.message = QStringLiteral("ここで、対象年度は変更できません。");
        p.otherYear = true;
        return p;
    }
    int first = month;
    if (sime < day) ++first;
    if (first == 13) first = 1;
    p.start = QString::number(first).rightJustified(2, QLatin1Char('0'));
    // A day past the month's end runs on into the next month, as the old date routine did.
    const QDate from = QDate(year, month, 1).addDays(day - 1);
    p.eKai = from.addYears(1).addDays(-1).toString(QStringLiteral("yyyyMMdd"));
    p.fin = periodMonth(p.eKai);
    return p;
}

bool saveCompany(const QSqlDatabase& db, const ColumnValues& com, const RateChange& rates, QSqlError* error)
{
    UnitOfWork unit(db);
    if (!unit.active()) {
        if (error) *error = unit.error();
        return false;
    }
    ErrorClass e = UpdateRows(db, QStringLiteral("Com"), com, {}, error);
    const QString date = QString::number(rates.changeDate.year()).rightJustified(4, QLatin1Char('0'))
                         + QString::number(rates.changeDate.month()).rightJustified(2, QLatin1Char('0'))
                         + QString::number(rates.changeDate.day()).rightJustified(2, QLatin1Char('0'));
    const ColumnValues change = {{QStringLiteral("contents"), date}};
    const ColumnValues newRate = {{QStringLiteral("contents"), NumText(rates.newRateText.trimmed())}};
    if (e == ErrorClass::None) e = UpdateRows(db, QStringLiteral("UserOP"), change, {{QStringLiteral("Code"), 725}}, error);
    if (e == ErrorClass::None) e = UpdateRows(db, QStringLiteral("UserOP"), newRate, {{QStringLiteral("Code"), 726}}, error);
    if (e != ErrorClass::None) return false;
    if (!unit.commit()) {
        if (error) *error = unit.error();
        return false;
    }
    Session& s = session();
    s.TaxChangeDate = rates.changeDate;
    s.Zeiritu = rates.zeiritu;
    s.TaxRateNew = ToCur(rates.newRateText);
    return true;
}
