#pragma once
// MeiT, the working table of the period cut-off list: one row for each customer, supplier or
// staff member with the sums of a date range by line kind, the cost and the margin. Each run
// empties and refills it, and reads it back, in one unit of work, so two stations running
// the list at once never see each other's half.
#include <QDate>
#include <QList>
#include <QString>
#include "store/Money.h"

struct MeiTRow {
    qint64 Code = 0;
    QString Namae;
    Money UGaku, NGaku, HGaku, KGaku, SGaku, Arari;

    // Sales (or purchases) net of returns, discounts and expenses: the "税抜合計" column.
    Money net() const { return UGaku + HGaku + NGaku + KGaku; }
    // Margin over the net in percent; 0 when the net is 0.
    double rate() const;
};

enum class MeiTResult { Done, NoSlips, Failed };

struct MeiTRequest {
    QString code;          // "URI" customers, "KAI" suppliers, "TAN" staff
    QDate from, to;
    int order = 1;         // 1 by code, 2 by sales, 3 by code with every customer
    short office = 0;
};

// The run: empties MeiT, with order 3 puts in every customer at zero (from Tor, whatever the
// code), adds the sums of the range's live slips by partner and line kind, and reads it back in
// the order asked. NoSlips when the range has no lines; Failed with *error, and MeiT as it
// was, when the store failed.
MeiTResult FillMeiT(const MeiTRequest& r, QList<MeiTRow>* rows, QString* error);
