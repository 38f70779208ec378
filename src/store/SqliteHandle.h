#pragma once
// The SQLite connection behind a Qt connection, for what the driver does not offer (the wait
// on another station's lock, copying a whole file in place). Store-internal.
class QSqlDatabase;
struct sqlite3;

// nullptr when the connection is not open or not SQLite.
sqlite3* sqliteHandle(const QSqlDatabase& db);
