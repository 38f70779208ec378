#pragma once
// For the report tests: readable failures, the grid cells a clerk reads, a posted slip cancelled,
// and F9/F10 without a printer or a spreadsheet program (each preview page counted and closed,
// each sheet noted).
#include <ostream>
#include <QStringList>
#include <QTableWidget>
#include <QTimer>
#include <QWidget>
#include "pageout/Excel.h"
#include "pageout/QtPageOutputs.h"
#include "shell/Session.h"
#include "store/Money.h"

static inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
static inline void PrintTo(const QStringList& l, std::ostream* os) { *os << '[' << l.join(" ; ").toStdString() << ']'; }

inline QString gridCell(const QTableWidget* list, int row, int col)
{
    const QTableWidgetItem* i = list->item(row, col);
    return i ? i->text().trimmed() : QString();
}

// Yen as the store keeps money.
inline QVariant yen(double y) { return Money::fromDouble(y).toStore(); }

// Statements on the company's store; a failure fails the test.
void exec(const QString& sql, const QVariantList& binds = {});
QVariant one(const QString& sql, const QVariantList& binds = {});
// The session of the test companies: year 2026 from April, office 1, tax 10 % since October 2019.
void useFiscal2026();
// Ledger processing of every marked slip; an error fails the test.
void ledgerRun();

// A posted slip cancelled as the slip screen cancels it: head and lines turn negative and wait
// for the next ledger run, the four amounts negated, the cost keeping its sign.
void cancelPosted(const QString& head, const QString& line, int dno, int eig = 1);

struct CaughtOutputs {
    int pages = 0;
    QStringList sheets;
    CaughtOutputs()
    {
        session().PreviewMode = true;
        setPreviewPageHook([this](QWidget* w) {
            ++pages;
            QTimer::singleShot(0, w, &QWidget::close);
        });
        setSpreadsheetOpener([this](const QString& path) {
            sheets << path;
            return true;
        });
    }
    ~CaughtOutputs()
    {
        setPreviewPageHook({});
        setSpreadsheetOpener({});
        session().PreviewMode = false;
    }
};
