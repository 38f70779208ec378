#pragma once
// Answers the common dialogs from a script, in order, and records every question.
#include <QStringList>
#include <QList>
#include "shell/Dialogs.h"

class ScriptedDialogs : public Dialogs {
public:
    ScriptedDialogs() { prev_ = setDialogs(this); }
    ~ScriptedDialogs() override { setDialogs(prev_); }

    QList<bool> askAnswers;       // taken in order; "yes" when the script runs out
    QStringList requestAnswers;   // taken in order; the default text when it runs out
    QStringList log;              // "Ask:...", "Tell:...", "Request:...", "Wait:...", "Hide:", "Box:title|text"

    bool Ask(const QString& m, const QString&, const QString&) override
    {
        log << "Ask:" + m;
        return askAnswers.isEmpty() ? true : askAnswers.takeFirst();
    }
    void Tell(const QString& m) override { log << "Tell:" + m; }
    QString Request(const QString& m, const QString& d) override
    {
        log << "Request:" + m;
        return requestAnswers.isEmpty() ? d : requestAnswers.takeFirst();
    }
    void ShowWait(const QString& m) override { log << "Wait:" + m; }
    void HideWait() override { log << "Hide:"; }
    void MessageBox(const QString& t, const QString& m) override { log << "Box:" + t + "|" + m; }

    QStringList of(const QString& kind) const
    {
        QStringList r;
        for (const QString& l : log)
            if (l.startsWith(kind + ":")) r << l.mid(kind.size() + 1);
        return r;
    }

private:
    Dialogs* prev_ = nullptr;
};
