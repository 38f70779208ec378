#pragma once
// The table layouts of a company, in one place. Column types: S short, L long (INTEGER);
// M money (INTEGER ten-thousandths); D date (TEXT YYYY-MM-DD); T<n> text of n Shift JIS bytes
// (TEXT; the width is a limit of the entry fields, recorded here, not enforced by the store).
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

enum class StoreFile { Master, Slip };

struct ColumnDef {
    QString name;
    char type;      // 'S', 'L', 'M', 'D', 'T'
    int width;      // text width in bytes, 0 otherwise
};

struct TableDef {
    QString name;
    StoreFile file;
    QList<ColumnDef> columns;
    QStringList key;       // primary key columns; empty: no key (working and one-row tables)
    QStringList indexes;   // single-column indexes besides the key
    const ColumnDef* column(const QString& col) const;   // case-insensitive
};

// Every table of the master file and of the year's slip file.
const QList<TableDef>& storeTables();
const TableDef* findTableDef(const QString& name);       // case-insensitive

// CREATE TABLE / CREATE INDEX statements of one table, schema-qualified when `schema` is set.
QStringList createStatements(const TableDef& t, const QString& schema = {});

// Creates every table of `file` in the database (all or nothing). False on failure.
bool createTables(QSqlDatabase db, StoreFile file, QString* error = nullptr);
