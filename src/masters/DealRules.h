#pragma once
// Customers (Tor) and suppliers (Sir): what the one form for both checks before it opens,
// before it saves and before it deletes, and its save that survives another station taking
// the same code.
#include <optional>
#include <QSqlDatabase>
#include <QString>
#include "masters/MasterRows.h"

class Recordset;

struct DealKind {
    QString menuKey;        // "Tor" / "Sir"
    QString title;
    QString classTable;     // "Tbn" / "Sbn"
    QString classColumn;    // "TbnCode" / "SbnCode"
    QString contactColumn;  // "Ttantou" / "Stantou"
    QString noClassMessage; // "得意先分類が登録されていません。" ...
    QString slipHead, slipMoney, slipColumn;   // Dur/Dny by TorCode, Dsr/Dsh by SirCode
    QString inSlipsMessage;
    QString deleteQuestion;
    bool customer = false;
};

// By the session's kind word; nullptr for any other.
const DealKind* dealKind(const QString& menuKey);

// CheckTbnSbn: the refusal when the class table has no row; empty when the form may open.
QString classMissingMessage(const QSqlDatabase& db, const DealKind& kind);

// The highest code plus one; 1 on an empty table.
qint64 nextFreeCode(const QSqlDatabase& db, const DealKind& kind);

// The customer's stored closing day; nothing when the customer does not exist yet.
std::optional<int> storedTorSime(const QSqlDatabase& db, qint64 code);

// The checks before saving, in their order: the customer's closing day, then the class.
struct DealCheck {
    QString message;        // empty: the row may be saved
    bool onSime = false;    // the field to go back to: the closing day, else the class
};
DealCheck dealSaveCheck(const DealKind& kind, const QString& simeText, std::optional<int> classCode);

// The refusal when the partner stands on a slip of the year; empty when it may go. A check
// that cannot run refuses with the store's error.
QString dealSlipRefusal(const QSqlDatabase& db, const DealKind& kind, qint64 code);

// Side labels: the company's account number of a bank index 1..4, and a partner's short name.
QString bankText(const QSqlDatabase& db, int bankCode);
QString partnerRyaku(const QSqlDatabase& db, const QString& table, qint64 code);

struct DealSaveOutcome {
    bool saved = false;
    bool codeChanged = false;   // another station had taken the code
    qint64 code = 0;
};
// Register: with "NEW" a new row, otherwise the row of the code is edited (none is added).
// A code taken meanwhile moves the new row to the next free code, with "マスターは、No." and the
// code "で登録しました。". Any other failure drops the save; a store that stays locked says so.
DealSaveOutcome registerDeal(Recordset& rs, const DealKind& kind, const QString& mode, qint64 code,
                             const ColumnValues& values);
