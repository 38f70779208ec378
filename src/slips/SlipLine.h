#pragma once
// One slip line as the screen holds it, and one of the six grid rows that show the lines.
// The texts are what the grid shows; a value goes through its display format on the way to
// the store and loses its grouping commas on the way back.
#include <QString>
#include "store/Money.h"

struct SlipLine {
    short Kubun = -1;          // position in the line kind list, -1 unset
    QString HinCode;           // as typed or shown
    QString HinNamae;
    QString Suu = QStringLiteral("0");
    QString STanka = QStringLiteral("0");
    QString sGaku = QStringLiteral("0");
    QString UTanka = QStringLiteral("0");
    QString Gaku = QStringLiteral("0");   // tax-inclusive on ZeiFlag 2, else without tax
    short ZeiFlag = 0;
    Money Net;                 // saved as UGaku
    Money Zei;                 // saved as ZeiGaku

    // Empty lines are neither shown, nor checked, nor written.
    bool isEmpty() const;
    // A quantity with "*" belongs to the clerk: no automatic arithmetic on the line.
    bool clerkOwned() const { return Suu.contains(QLatin1Char('*')); }
};

struct SlipRow {
    int fKubun = -1;           // chosen entry of the row's kind list, -1 none
    QString fHinCode, fHinNamae, fSuu, fSTanka, fTanka, fSGaku, fGaku, fZei;
    QString ZeiInfo, LineNo;
};

// Display formats of the grid and the totals.
namespace SlipFormat {
inline const QString Suu = QStringLiteral("######");
inline const QString Tanka = QStringLiteral("#,###,##0.00");
inline const QString Gaku = QStringLiteral("###,###,##0");
inline const QString ZeiLine = QStringLiteral("###,###");    // a line computed or shown
inline const QString ZeiTotal = QStringLiteral("###,##0");   // refreshed by a total pass
inline const QString Total = QStringLiteral("##,###,##0");
inline const QString Rate = QStringLiteral("##0.00");
inline const QString Dno = QStringLiteral("#####0");
}

// A grid text read back: grouping commas and surrounding blanks dropped.
QString readCell(const QString& shown);
