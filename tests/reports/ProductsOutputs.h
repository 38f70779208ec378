#pragma once
// F9 and F10 from a summary screen without a printer or a spreadsheet program: the preview's
// pages are kept and closed as a clerk closes them, and the sheet written is noted.
#include <QImage>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include "pageout/Excel.h"
#include "pageout/QtPageOutputs.h"
#include "shell/Session.h"

struct ClerkOutputs {
    QList<QImage> pages;
    QStringList sheets;

    ClerkOutputs()
    {
        session().PreviewMode = true;
        setPreviewPageHook([this](QWidget* w) {
            QTimer::singleShot(0, w, [this, w] {
                pages << w->grab().toImage();
                w->close();
            });
        });
        setSpreadsheetOpener([this](const QString& path) {
            sheets << path;
            return true;
        });
    }
    ~ClerkOutputs()
    {
        setPreviewPageHook({});
        setSpreadsheetOpener({});
        session().PreviewMode = false;
    }
};

// A data cell of a screen's grid as the clerk reads it.
inline QString gridCell(const QTableWidget* list, int row, int col)
{
    const QTableWidgetItem* i = list->item(row, col);
    return i ? i->text().trimmed() : QString();
}
