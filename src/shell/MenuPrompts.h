#pragma once
// What the menu does itself, without a screen of its own: the one-line memo, the screen scale,
// the password, the office change and the exit-time backup switch. All on the session's store
// through the common dialogs.
#include <QString>

// "摘要": the memo of Tek, at most 36 characters. Empty input leaves the store as it was.
void MemoPrompt();
// "画面スケール": stored in zSysFunc code 1 within 0.7..2; the running session keeps its scale.
void ScalePrompt();
// The text stored for a typed scale: digits, "." and "-" kept, then held within 0.7..2.
QString ClampScaleText(const QString& typed);
// "パスワード": stored in zSysFunc code 123 after a confirmation; the session keeps its own.
void PasswordPrompt();
// Space: the next office by code after the current one, the first after the last.
// False (nothing changed) with no office or one.
bool ChangeOffice();
// UserOP code 15 is 1: copy the files at the regular exit.
bool BackupAtExit();
