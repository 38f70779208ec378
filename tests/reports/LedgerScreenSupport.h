#pragma once
// For the report screens' tests: the preview pages (each closed at once) and the spreadsheets
// written, caught for the test's length.
#include <QStringList>
#include <QTimer>
#include <QWidget>
#include "pageout/Excel.h"
#include "pageout/QtPageOutputs.h"
#include "shell/Session.h"

struct ReportOutputCatcher {
    int pages = 0;
    QStringList sheets;
    ReportOutputCatcher()
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
    ~ReportOutputCatcher()
    {
        setPreviewPageHook({});
        setSpreadsheetOpener({});
    }
};
