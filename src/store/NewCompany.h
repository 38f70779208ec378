#pragma once
// The template of a new company: MASTER/MASTER.db (with MASTER.db at the root a relative link
// to it) and <year>/SLIP.db, with every table, one company row, office 1, the system rows and
// the menu.
#include <QDate>
#include <QList>
#include <QPair>
#include <QString>

struct NewCompanyOptions {
    int year = 0;            // fiscal year; 0: the one that contains today
    int startMonth = 4;      // first month of the fiscal year
    QString company = QStringLiteral("株式会社ヴェルモラ商事");
    // The menu rows of zSysFunc, group and caption in menu order; the shell knows the menu
    // (standardMenuRows() of shell/MenuCaptions.h).
    QList<QPair<int, QString>> menu;
};

// Creates the company in `dir` (made when missing). Refuses, changing nothing, when `dir`
// already holds a store. On failure `error` says why and nothing is left behind.
bool createCompany(const QString& dir, const NewCompanyOptions& opt, QString* error);

// Where a new company in `dir` keeps its master file: <dir>/MASTER/MASTER.db.
QString newCompanyMasterPath(const QString& dir);
// Removes what createCompany made in `dir` for `year` (the files and their folders when
// empty), for a caller whose filling of the new company failed.
void removeNewCompany(const QString& dir, int year);

// The fiscal year that contains `date` for a year starting in `startMonth`.
int fiscalYearOf(const QDate& date, int startMonth);
