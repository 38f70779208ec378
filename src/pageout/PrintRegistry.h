#pragma once
// The reports that `velmora print REPORT ... (--pdf FILE | --xlsx FILE)` knows. Each report
// registers one entry (from app/PrintReports.cpp); the command does the start-up of
// `velmora batch`, then runs the entry, which draws the same pages through the same report
// class as the screen's print.
#include <QList>
#include <QMap>
#include <QString>
#include <functional>

struct PrintRequest {
    QMap<QString, QString> options;   // "--month 4" -> options["month"] = "4"
    QString pdf;                      // --pdf FILE, or empty
    QString xlsx;                     // --xlsx FILE, or empty
};

struct PrintReportEntry {
    QString name;                     // "invoices", "ledger", ...
    QString usage;                    // one line for `velmora print --help`
    QStringList options;              // the options it accepts (without "--"); others are refused
    bool needsCompany = true;         // false for `vtml`, which reads only its input file
    // Runs the report. False with *error (the message for standard error).
    std::function<bool(const PrintRequest&, QString* error)> run;
};

void registerPrintReport(const PrintReportEntry& e);
const QList<PrintReportEntry>& printReports();
const PrintReportEntry* findPrintReport(const QString& name);
