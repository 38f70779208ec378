#pragma once
// The template of a new company: MASTER.db and <year>/SLIP.db with every table, one company
// row, office 1, the system rows and the menu.
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

// The fiscal year that contains `date` for a year starting in `startMonth`.
int fiscalYearOf(const QDate& date, int startMonth);
