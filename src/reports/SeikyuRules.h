#pragma once
// The rules of the invoice screen without its widgets: the checks of "発 行" and the names
// shown beside the customer boxes.
#include <QSqlDatabase>
#include <QString>

// Which box a refused run sends the focus back to.
enum class SeikyuRefusal { None, Month, Sime };

struct SeikyuCheck {
    SeikyuRefusal refusal = SeikyuRefusal::None;
    QString message;
};
// The target month must be 1 to 12 and the closing day 1 to 31, in that order.
SeikyuCheck checkSeikyu(const QString& month, const QString& sime);

// The customer's name for a typed code; blank for a code not found.
QString seikyuTorName(const QSqlDatabase& db, const QString& code);
