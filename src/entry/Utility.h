#pragma once
// One-line lookups from a code to what a screen shows, so that every screen shows the same
// thing for a missing code: one blank, or the word "NoMatch".
#include <functional>
#include <QList>
#include <QString>
#include "entry/ChoiceLists.h"

// Name of a product; "NoMatch" when there is none.
QString HinName(const QString& code);
// The one name of the code as a list entry; empty when there is no row.
QList<ListEntry> TableName(const QString& table, qint64 code);
// The customer's name, with "･" and the shop name when it has one.
QList<ListEntry> TorNameList(qint64 code);
// Settlement captions of a partner code 0 (cash sales): "売掛" ("買掛" unless `side` is
// "URI") and "現金"; nothing for any other code.
QStringList SideCaption(const QString& side, qint64 code);
// Name of a code in a code table; one blank when there is none.
QString CodeName(const QString& table, qint64 code);
QString NouName(qint64 tor, qint64 nou);
QString NouShop(qint64 tor, qint64 nou);
QString NouNameShop(qint64 tor, qint64 nou);
// SeiFlag of the destination as text; "" when there is none.
QString NouBilling(qint64 tor, qint64 nou);
bool NouCodes(qint64 tor);
int TorClass(qint64 code);
int SirClass(qint64 code);

struct PartnerRecord {
    QString name = QStringLiteral(" ");
    int classCode = 0;
    QString className = QStringLiteral(" ");
    QString sime;                      // closing day as text
};
PartnerRecord TorRecord(qint64 code);
// The closing day is the supplier's own when SimeFlag is 2, the company's otherwise.
PartnerRecord SirRecord(qint64 code);
QString ChiName(qint64 code);

// Address of a postal code: up to five digits are old codes (Zip), longer ones Zip7. One row
// gives its address, none gives "", several let the user choose through the lookup list.
QString ZipAddress(const QString& code);
// The chooser of ZipAddress: (table, code) -> the chosen address, "" when none was taken.
using ZipChooser = std::function<QString(const QString& table, const QString& code)>;
void setZipChooser(ZipChooser chooser);

// Today and now as fourteen digits, YYYYMMDDhhmmss.
QString StampText();
