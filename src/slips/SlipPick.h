#pragma once
// The pick lists of a partner's slips behind F6 in the number field of both slip screens.
#include <QList>
#include <QString>

struct SlipListRow {
    QString number;   // the number in "######"
    QString date;     // with the weekday: "y / m / d" on sales and purchases, "y 年 m 月 d 日" on money
    QString tekiyo;   // sales and purchases only
};

// The office's live slips of one partner, newest first; `kind` is "Dur", "Dsr", "Dny" or "Dsh".
// Deposits and payments have no head row: one entry per number.
QList<SlipListRow> slipListRows(const QString& kind, qint64 partner, short office);
