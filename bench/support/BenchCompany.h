// The companies the benchmarks run on, made and opened the same way by each of them.
#pragma once
#include <QString>
#include "demo/DemoCompany.h"
#include "shell/Dialogs.h"
#include "store/NewCompany.h"

// A new company made in `dir`, made the current folder and opened for the year of `o` as
// office 1; false (said on standard error) when it cannot be.
bool openNewCompany(const QString& dir, const NewCompanyOptions& o);

// The demo company made in `dir` and made the current folder; false (said) when it cannot be.
bool makeDemoCompany(const QString& dir, const DemoOptions& opt, DemoSummary* summary = nullptr);

// The current folder's company opened by the program's own start-up, as `velmora batch` opens
// it: the latest year, its months, tax rates and first office.
bool startCompany();
// Closes what startCompany opened.
void endCompany();

// Dialogs for a timed run: no window, questions answered `yes`, only errors printed.
class BenchDialogs : public Dialogs {
public:
    explicit BenchDialogs(bool yes) : yes_(yes) {}
    int failures = 0;
    bool Ask(const QString&, const QString&, const QString&) override { return yes_; }
    void Tell(const QString& m) override;
    QString Request(const QString&, const QString& d) override { return d; }
    void ShowWait(const QString&) override {}
    void HideWait() override {}
    void MessageBox(const QString&, const QString&) override {}

private:
    bool yes_;
};
