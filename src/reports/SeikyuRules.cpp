#include "reports/SeikyuRules.h"

#include "entry/Convert.h"
#include "store/Sql.h"

SeikyuCheck checkSeikyu(const QString& month, const QString& sime)
{
    const double m = ToNum(month);
    if (m < 1 || m > 12) return {SeikyuRefusal::Month, QStringLiteral("範囲は１から１２です。")};
    const double d = ToNum(sime);
    if (d < 1 || d > 31) return {SeikyuRefusal::Sime, QStringLiteral("範囲は１から３１です。")};
    return {};
}

QString seikyuTorName(const QSqlDatabase& db, const QString& code)
{
    if (!HasText(code)) return QString();
    bool ok = true;
    const qint32 number = ToInt32(DigitText(code), &ok);
    if (!ok) return QString();
    return NullToEmpty(scalar(db, QStringLiteral("SELECT Namae FROM Tor WHERE Code = ?"), {number})).trimmed();
}
