#pragma once
// "元帳": the rows of one ledger view, newest first, 15 to a screen, with the month's figures
// of the partner above them. The form ListDaichou_frm shows what this class leaves in its
// members; the print, the spreadsheet and `velmora print ledger` read the same rows.
#include <QList>
#include <QString>
#include <QStringList>
#include "reports/LedgerReport.h"
#include "reports/Mei.h"

// Where a ledger row's date leads: the slip screen and kind, and the number.
struct LedgerSlipTarget {
    QString form;    // "Slip_frm" or "Cashier_frm"
    QString kind;    // "Dur", "Dsr", "Dny", "Dsh"
    qint64 Dno = 0;
};

struct LedgerScreenRow {
    QString Hizuke, Kubun, fHinNamae, fSuu, fTanka, fGaku;
    qint64 Dno = 0;      // kept for the double click on the date
    QString UriFlag;
};

class ListDaichou {
public:
    static constexpr int PageRows = 15;

    // The range screen's boxes: a closing month 1..13, a month 1..12, a day 1..31. "" when the
    // text passes (its value in *value), else the message.
    enum class RangeBox { Getudo, Month, Day };
    static QString checkRangeBox(RangeBox box, const QString& text, int* value);

    LedgerRange range;
    QString Title;
    QString TorName;
    QString tukiBox;              // month mode
    QString Range[2];             // date mode
    QString LabelHeader[7];
    QString LabelHValue[7];
    HeldRows rows;                // the row set, as OpenLedgerRows last read it
    int rowCount = 0;
    int barMax = 0;

    // Takes the range, fills the labels, the header and the rows. No rows: "対象がありません。".
    // False when the store failed; the error has then been told.
    bool Init(const LedgerRange& r);
    // Fills Mei (Tdc, Sdc) and reads the rows ordered by date, "DESC" or "" (oldest first), in
    // one unit of work that leaves the store as it was. False with the error said in the
    // system's wording.
    bool OpenLedgerRows(const QString& sort, QString* error);
    // The month's figures of the partner; "-" in all seven when it has no month row.
    void ShowLedgerHeader();
    // Fifteen rows from row `top`; rows past the end are blank.
    QList<LedgerScreenRow> ShowLedgerRows(int top) const;

    bool headerShown() const { return headerShown_; }
    bool supplierView() const { return !range.customerView(); }
    // The slip behind screen line `line` when the rows start at `top`; none for a blank line
    // and for the order views.
    bool slipOf(int top, int line, LedgerSlipTarget* target) const;

    // The kind of a row as the screen and the spreadsheet show it, and as the print does.
    QString kubunText(int row) const;
    QString kubunPrintText(int row) const;

    // The spreadsheet: oldest first, as the export reads it. False with the message when there
    // are no rows or the store failed; the rows are read newest first again either way.
    bool exportSheet(ReportSheet* sheet, QString* error);

    // The figures of the partner's month for the print's header row: label, value pairs at
    // their places; empty in date mode and for all partners.
    struct HeaderCell {
        int labelX;
        QString label;
        int valueX;
        QString value;
    };
    QList<HeaderCell> printHeader() const;
    // The period and partner line of the print.
    QString printPeriodLine() const;

private:
    bool openOrderRows(const QString& sort, QString* error);
    bool readHeader(Money v[7], bool* found) const;

    bool headerShown_ = false;
};
