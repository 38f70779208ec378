#pragma once
// Runs documents on a recording output and keeps what was told.
#include <ostream>
#include <QStringList>
#include "pageout/PageOutput.h"
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
    bool lines(const QStringList& l)
    {
        VtmlClear();
        for (const QString& s : l) VtmlAddLine(s);
        return print();
    }
    bool print()
    {
        ScopedPageOutput scope(&out);
        ok = VtmlPrint();
        return ok;
    }
    RecordingSurface& rec() { return out.rec; }
    QStringList told() const { return dialogs.of(QStringLiteral("Tell")); }
};

// Readable failures: texts as UTF-8, lists one entry a line.
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
inline void PrintTo(const QStringList& l, std::ostream* os)
{
    *os << "{\n";
    for (const QString& s : l) *os << "  \"" << s.toStdString() << "\"\n";
    *os << "}";
}
