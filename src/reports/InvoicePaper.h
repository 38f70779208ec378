#pragma once
// The preprinted invoice form drawn on plain paper: title, the company's letterhead, the
// labels of the period, the columns, the boxes of the three amounts and the rules. The data of
// the invoice keep their places; this only draws what the preprinted paper would carry.
#include <QSqlDatabase>

// `tor`: the customer, whose transfer account is the one named when it has one.
void drawInvoicePaper(const QSqlDatabase& db, qint64 tor);
