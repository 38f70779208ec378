#pragma once
// The pick list of a partner's slips behind F6 in the number field of the slip screen.
#include <QList>
#include <QString>

struct SlipListRow {
    QString number;   // the number in "######"
    QString date;     // year / month / day and the weekday
    QString tekiyo;
};

// The office's live slips of one partner, newest first; `kind` is "Dur" or "Dsr".
QList<SlipListRow> slipListRows(const QString& kind, qint64 partner, short office);
