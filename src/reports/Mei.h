#pragma once
// The working table Mei of the partner ledgers: the sales or purchase lines and the money
// received or paid of one ledger view, merged so that one statement can order them by date.
// Each fill empties the table first; the caller runs the fill and the read of the rows in one
// unit of work and rolls it back once the rows are held, so no other station ever sees the
// table filled, let alone half filled.
#include <QDate>
#include <QSqlDatabase>
#include <QString>

// What the ledger range screen hands to the viewer.
struct LedgerRange {
    QString view = QStringLiteral("Tdc");   // Tdc, Sdc, Jdc, Hdc
    bool byMonth = true;                    // closing month; false: a range of dates
    qint64 partner = 0;                     // 0: all
    qint64 nou = 0;                         // destination, 0: none
    int month = 0;
    int startMonth = 0, startDay = 0, endMonth = 0, endDay = 0;

    bool customerView() const { return view == QLatin1String("Tdc") || view == QLatin1String("Jdc"); }
    // Rows are taken by closing month only for one partner in month mode; all partners of a
    // month are taken by the dates of that month.
    bool byGetudo() const { return byMonth && partner != 0; }
    // First and last date read: the typed range in date mode, the month's range otherwise.
    QDate from() const;
    QDate to() const;
};

// The view's name: "得意先元帳", "仕入先元帳", "得意先受注台帳", "仕入先発注台帳"; "" for another code.
QString ledgerViewName(const QString& view);

// Fill Mei for Tdc or Sdc. False with "エラー：" and the store's text on failure; Mei is then
// as the statements that ran left it, and the caller's unit of work rolls it back.
bool FillMeiByMonth(const QSqlDatabase& db, const LedgerRange& range, short EigCode, QString* error);
bool FillMeiByDate(const QSqlDatabase& db, const LedgerRange& range, short EigCode, QString* error);
