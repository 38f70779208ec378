#pragma once
// The tables of code, reading, name and short name (classes, districts, ranks, staff): their
// captions, and the save that survives another station taking the same number.
#include <optional>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

class Recordset;

struct SimpleMasterKind {
    QString table;
    QString title;
    QStringList labels;       // of items 0..3 (and 4 for staff)
    bool hasKanaRyaku = true; // "Tni" keeps only code and name
    bool hasLevel = false;    // staff: TanLevel
    QString savedPrefix;      // "マスターは、No." / "担当者は、No."
    QString deleteSuffix;     // the two wordings of the delete question differ
};

// By MenuKey: "Hbn", "Sbn", "Tbn", "Cku", "Chi", "Tni"; "Tan" is the staff form. Unknown: null.
const SimpleMasterKind* simpleMasterKind(const QString& menuKey);

// The highest code plus one; nothing on an empty table.
std::optional<qint32> NextFreeCode(const QSqlDatabase& db, const QString& table);

// What the screen holds, as typed.
struct SimpleRow {
    QString code{}, kana{}, namae{}, ryaku{}, level{};
};

struct RegisterOutcome {
    bool saved = false;
    bool codeChanged = false;   // another station had taken the number
    QString code;               // the code text the row was saved under
};

// Saves the row: with "NEW" a new row, otherwise the row of that code (a new one when it is
// gone). A key taken meanwhile moves the row to the next free code and says so through Tell.
// A code beyond the 16-bit range, or a failure of the store, drops the save; a store that
// stays locked says so.
RegisterOutcome registerSimpleRow(Recordset& rs, const SimpleMasterKind& kind, const QString& mode, SimpleRow row);

// The question before deleting the current row of `rs`; empty when there is none.
QString deleteQuestion(const Recordset& rs, const SimpleMasterKind& kind);

// The refusal of a code field beyond the limit of the 16-bit code.
QString codeLimitMessage();
constexpr int kMaxMasterCode = 32000;
