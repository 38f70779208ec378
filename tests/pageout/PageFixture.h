#pragma once
// Runs documents on a recording output and keeps what was told.
#include <functional>
#include <memory>
#include <ostream>
#include <QFile>
#include <QStringList>
#include <gtest/gtest.h>
#include "pageout/Grd.h"
#include "pageout/PageOutput.h"
#include "pageout/ReportRows.h"
#include "pageout/Vtml.h"
#include "shell/Session.h"
#include "support/RecordingSurface.h"
#include "support/ScriptedDialogs.h"

inline VtmlField makeField(const QString& caption, const QString& name, const QString& kind, const QString& format,
                           short gap = 0, short total = 0)
{
    VtmlField f;
    f.Caption = caption;
    f.Name = name;
    f.Kind = kind;
    f.Format = format;
    f.Gap = gap;
    f.Total = total;
    return f;
}

inline GrdColumn grdColumn(const char* caption, const char* name, const char* kind, const char* format, short total = 0)
{
    GrdColumn c;
    c.Caption = QString::fromUtf8(caption);
    c.Name = QString::fromUtf8(name);
    c.Kind = QString::fromUtf8(kind);
    c.Format = QString::fromUtf8(format);
    c.Gap = 120;
    c.Total = total;
    return c;
}

// One document on the current output: its fields over `rows`, the report form, what `setup`
// sets after the clear (totals, flags), then its lines.
inline bool printDocument(ReportRows* rows, const QList<VtmlField>& fields, const QStringList& lines,
                          ReportForm* form = nullptr, const std::function<void()>& setup = {})
{
    VtmlClear();
    for (const VtmlField& f : fields) VtmlAddField(f);
    PbSetRows(rows);
    PbSetForm(form);
    if (setup) setup();
    for (const QString& l : lines) VtmlAddLine(l);
    return VtmlPrint();
}

// Rows that the store stops giving, with an error, after the first `readable`.
struct FailingRows : ReportRows {
    std::unique_ptr<ReportRows> rows;
    int readable, at = 0;
    FailingRows(std::unique_ptr<ReportRows> r, int n) : rows(std::move(r)), readable(n) {}
    bool next() override { return ++at <= readable && rows->next(); }
    QVariant value(const QString& c) const override { return rows->value(c); }
    bool hasColumn(const QString& c) const override { return rows->hasColumn(c); }
    bool ok() const override { return at <= readable; }
    QString error() const override { return QStringLiteral("エラー：11 データベースのファイルが壊れています。"); }
};

struct PageRun {
    RecordingOutput out;
    ScriptedDialogs dialogs;
    bool ok = false;

    PageRun()
    {
        session().ShrinkMode = false;
        session().KeepPageSetup = false;
        session().Hiz = 2;
        VtmlSetShrinkOff(false);
    }
    ~PageRun()
    {
        session().ShrinkMode = false;
        session().KeepPageSetup = false;
        VtmlSetToday({});
    }
    // A document of lines only, started with VtmlClear.
    bool lines(const QStringList& l) { return print(nullptr, {}, l); }
    // The document built so far.
    bool print()
    {
        ScopedPageOutput scope(&out);
        return ok = VtmlPrint();
    }
    bool print(ReportRows* rows, const QList<VtmlField>& fields, const QStringList& lines, ReportForm* form = nullptr,
               const std::function<void()>& setup = {})
    {
        ScopedPageOutput scope(&out);
        return ok = printDocument(rows, fields, lines, form, setup);
    }
    RecordingSurface& rec() { return out.rec; }
    QStringList told() const { return dialogs.of(QStringLiteral("Tell")); }
    int pages() const { return out.rec.ended; }
    // The texts and rules of a page (from 1) as logged, or its texts alone.
    QStringList drawn(int page) const
    {
        QStringList drawn;
        for (const QString& e : out.rec.page(page))
            if (e.startsWith(QLatin1String("T ")) || e.startsWith(QLatin1String("L "))) drawn << e;
        return drawn;
    }
    QStringList texts(int page) const
    {
        QStringList texts;
        for (const QString& e : out.rec.page(page))
            if (e.startsWith(QLatin1String("T "))) texts << e.section(QLatin1Char(' '), 2);
        return texts;
    }
};

inline void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    f.write(bytes);
}

// Readable failures: texts as UTF-8, lists one entry a line.
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
inline void PrintTo(const QStringList& l, std::ostream* os)
{
    *os << "{\n";
    for (const QString& s : l) *os << "  \"" << s.toStdString() << "\"\n";
    *os << "}";
}
