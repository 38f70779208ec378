#pragma once
// The printed delivery slip ("納品書") of a sales slip: the slip's rows and the company row
// as a page of the page language. SlipStyle chooses the layout: 2 adds the receipt copy
// ("受領書") on the lower half of the same sheet; any other number prints the slip alone.
#include <optional>
#include <QDate>
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>
#include "pageout/ReportForm.h"
#include "slips/Slip_prnPen.h"
#include "store/Money.h"

struct SlipPrintLine {
    QString code;          // as the screen shows it
    QString name;
    qint64 suu = 0;
    Money UTanka;
    Money UGaku;           // without tax
    Money ZeiGaku;
    short ZeiFlag = 0;
    // The amount as the slip screen shows it: tax-inclusive on an inside-tax line.
    Money shownAmount() const { return ZeiFlag == 2 ? UGaku + ZeiGaku : UGaku; }
};

struct SlipPrintData {
    long dno = 0;
    QDate date;
    qint64 tor = 0;
    QString torName;
    qint64 nou = 0;
    QString nouName;
    QString tekiyo;
    short Zeituuchi = 0;   // the customer's tax notification mode
    QList<SlipPrintLine> lines;
    Money net, zei;        // sums over the lines
    PrintedCompany company;
};

enum class SlipLayout { Alone, WithReceipt };
SlipLayout slipLayout(short style);

// The slip of the office; nothing when there is no such sales slip.
std::optional<SlipPrintData> readSlipForPrint(const QSqlDatabase& db, short office, long dno);
// "2026年5月15日", or in the era when the company shows years so.
QString slipDateText(const QDate& date, bool era);
// The page lines of the slip.
QStringList slipPageLines(const SlipPrintData& slip, SlipLayout layout, bool era);

class Slip_prn : public ReportForm {
public:
    explicit Slip_prn(const QSqlDatabase& db);
    // Prints the slip `dno` of the session's office in the session's SlipStyle on the current
    // page output. A slip that is not there or a failed page is told, and false with *error.
    bool PrintSlip(long dno, QString* error);
    // The rules and boxes of the form.
    void BKGRD() override;

private:
    QSqlDatabase db_;
    SlipLayout layout_ = SlipLayout::Alone;
};
