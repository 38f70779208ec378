#pragma once
// The rules of the lookup list: which statement a table key runs, what its four columns
// show, and how the keyboard pages through 15 lines of it. The window only draws this.
#include <QList>
#include <QSqlDatabase>
#include <QString>
#include <QVariantList>

class QSqlRecord;

struct HelpLine {
    QString hCode, hKana, hRyaku, hNamae;
};

struct HelpStatement {
    QString sql;
    QVariantList binds;
    bool valid = false;   // false: the key names no table of the store
};

class HelpList {
public:
    static constexpr int PageRows = 15;

    QString Table;
    QString Filter1, Filter2;
    QString HinFilter;        // a condition on Hin written by the calling form, never typed text
    int RowCount = 0;
    int TopRow = 0;
    int CurRow = 0;
    QString Pattern = QStringLiteral("*");
    bool Hit = false;
    QString HitCode;

    // Sets the arguments, clears the reading filter and runs the list in its first order.
    void Init(const QString& table, const QString& filter1, const QString& filter2);
    // Runs the list sorted by `sortColumn`. A failing statement leaves an empty list and
    // returns false; lastError() then says why.
    bool RunQuery(const QString& sortColumn);
    QString lastError() const { return error_; }

    // The lines on screen, at most 15, from TopRow on.
    QList<HelpLine> page() const;
    const QList<HelpLine>& rows() const { return rows_; }
    // Caption of the third column head.
    QString head3() const;
    QString sortColumn() const { return sort_; }

    // The keys of the reading box. enter() returns true when the window closes.
    void keyUp();
    void keyDown();
    void pageUp();
    void pageDown();
    void escape();
    bool enter(const QString& kanaText);

    // The statement of a table key, with the reading pattern bound as a value.
    static HelpStatement statement(const QString& table, const QString& filter1, const QString& filter2,
                                   const QString& hinFilter, const QString& pattern, const QString& sortColumn);
    // The pattern as a LIKE argument: "*" and "?" keep their wildcard sense, everything else is
    // taken literally (a "%" or a quote finds only itself), and a reading begins with it.
    static QString likeArgument(const QString& pattern);
    static QString initialSort(const QString& table);

private:
    HelpLine lineOf(const QSqlRecord& rec) const;

    QList<HelpLine> rows_;
    QString sort_;
    QString error_;
};
