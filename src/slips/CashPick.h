#pragma once
// The pick list of a partner's deposit or payment slips behind F6 in the cash number field.
#include <QList>
#include <QString>

struct CashListRow {
    QString number;   // the number in "######"
    QString date;     // year 年 month 月 day 日 and the weekday
};

// The office's slips of one partner, newest first; `kind` is "Dny" or "Dsh". These slips have
// no head row: one entry per number.
QList<CashListRow> cashListRows(const QString& kind, qint64 partner, short office);
