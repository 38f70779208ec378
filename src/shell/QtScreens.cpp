#include "shell/QtScreens.h"
#include <QHash>
#include <QPointer>
#include <QWidget>

namespace {
QHash<QString, ScreenFactory>& factories()
{
    static QHash<QString, ScreenFactory> f;
    return f;
}
QHash<QString, QPointer<QWidget>>& instances()
{
    static QHash<QString, QPointer<QWidget>> i;
    return i;
}
QHash<QString, OpeningCheck>& checks()
{
    static QHash<QString, OpeningCheck> c;
    return c;
}
}

void registerScreen(const QString& formName, ScreenFactory factory) { factories()[formName] = std::move(factory); }

bool screenExists(const QString& formName) { return factories().contains(formName); }

QWidget* screen(const QString& formName)
{
    auto f = factories().constFind(formName);
    if (f == factories().constEnd()) return nullptr;
    QPointer<QWidget>& inst = instances()[formName];
    if (!inst) inst = (*f)();
    return inst;
}

void registerOpeningCheck(const QString& formName, OpeningCheck check) { checks()[formName] = std::move(check); }

bool screenMayOpen(const QString& formName)
{
    const auto c = checks().constFind(formName);
    return c == checks().constEnd() || !*c || (*c)();
}

void forgetScreenInstances()
{
    for (QPointer<QWidget>& w : instances())
        if (w) delete w.data();
    instances().clear();
}
