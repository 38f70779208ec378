#pragma once
// Marked lines that ledger processing cannot take into a ledger: a customer or supplier not in
// the masters, a closing month outside 1 to 13, a date that is not a date, an office not in
// Eig, a line of another office. The run still handles them as it always has (their marks go
// with the rest); this only says which slips and lines did not reach which ledger, so nothing
// is passed over in silence.
#include <QList>
#include <QString>

class LedgerRun;

struct UnreachedLine {
    QString ledger;   // "商品台帳", "得意先台帳", "仕入先台帳"
    QString slip;     // "売上伝票", "仕入伝票"
    qint64 dno = 0;   // negative: the cancelled image of an amended slip
    short office = 0;
    int eda = 0;
    QString reason;
    // False for the lines of another office: they are counted per office, not listed by slip.
    bool bySlip = true;
    bool operator==(const UnreachedLine&) const = default;
};

// The marked lines of the run that no posting of it will take; read before the postings.
QList<UnreachedLine> findUnreachedLines(LedgerRun& run);

// What the clerk reads: a heading and one line per slip, ledger and reason, with the line
// numbers; empty when every line was taken.
QString unreachedReport(const QList<UnreachedLine>& lines);
