#pragma once
// The installer's table zSysFunc and the user's options in UserOP, as their two forms edit
// them: rows of a code and a text.
#include <optional>
#include <QString>
#include "store/Options.h"

class Recordset;

// Adds or changes the row of `code` in one statement (whatever the screen's state), and puts
// the recordset on it. False when the store refused, which has been told.
bool saveSysFuncRow(Recordset& rs, qint32 code, const QString& contents);
// "コード : <code>\n\n<contents>\n\nを削除してよろしいですか？" of the current row; empty without one.
QString sysFuncDeleteQuestion(const Recordset& rs);

// Writes both options in one unit: a missing row is added. A refusal of the store is told,
// and then nothing is written.
bool saveOptions(const QString& backupPath, const QString& backupAtExit);
