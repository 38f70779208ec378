#pragma once
// The template of a new company: MASTER.db and <year>/SLIP.db with every table, one company
// row, office 1, the system rows and the menu.
#include <QString>

struct NewCompanyOptions {
    int year = 0;            // fiscal year; 0: the one that contains today
    int startMonth = 4;      // first month of the fiscal year
    QString company = QStringLiteral("株式会社ヴェルモラ商事");
};

// Creates the company in `dir` (made when missing). Refuses, changing nothing, when `dir`
// already holds a store. On failure `error` says why and nothing is left behind.
bool createCompany(const QString& dir, const NewCompanyOptions& opt, QString* error);

// The fiscal year that contains `date` for a year starting in `startMonth`.
int fiscalYearOf(const QDate& date, int startMonth);
