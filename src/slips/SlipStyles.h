#pragma once
// The printed styles a company offers for its delivery slips ("Nou") and invoices ("Sei"):
// built-in ones listed in zSysFunc 385 / 395, further ones in 1101..1199 / 1201..1299.
#include <optional>
#include <QList>
#include <QString>

struct SlipStyleEntry {
    int value = 0;
    QString name;
    bool operator==(const SlipStyleEntry&) const = default;
};

// "納品書選択" for "Nou", "請求書選択" for "Sei".
QString slipStyleTitle(const QString& which);
// Row 385 (395) cut into its entries: "#" is none; else entries separated by ",", each a
// one-digit number, one separating character and the name.
QList<SlipStyleEntry> parseStyleContents(const QString& contents);
// A row of 1101..1199 (1201..1299): the digits before "-" and the name after it. A row
// without "-" is not understood and left out.
std::optional<SlipStyleEntry> parseStyleRow(const QString& contents);
// Every style of the window; nothing when row 385 (395) is missing, which closes the window.
std::optional<QList<SlipStyleEntry>> loadSlipStyles(const QString& which);
// True when row 385 exists: F9 then asks for the style.
bool slipStyleQuestionOn();
