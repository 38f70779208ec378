#include "slips/SlipStyles.h"

#include "entry/Convert.h"
#include "shell/Session.h"
#include "store/Sql.h"

namespace {
int leadingNumber(const QString& text)
{
    int i = 0;
    while (i < text.size() && text.at(i).isSpace()) ++i;
    int v = 0, digits = 0;
    for (; i < text.size() && text.at(i) >= QLatin1Char('0') && text.at(i) <= QLatin1Char('9') && digits < 9; ++i, ++digits)
        v = v * 10 + (text.at(i).unicode() - '0');
    return v;
}
}  // namespace

QString slipStyleTitle(const QString& which)
{
    return which == QLatin1String("Sei") ? QStringLiteral("請求書選択") : QStringLiteral("納品書選択");
}

QList<SlipStyleEntry> parseStyleContents(const QString& contents)
{
    QList<SlipStyleEntry> out;
    if (contents.trimmed() == QLatin1String("#")) return out;
    QString rest = contents;
    while (!rest.isEmpty()) {
        const int comma = rest.indexOf(QLatin1Char(','));
        const QString entry = comma < 0 ? rest : rest.left(comma);
        rest = comma < 0 ? QString() : rest.mid(comma + 1);
        // A last entry is taken only when there is something in it.
        if (comma < 0 && entry.trimmed().isEmpty()) break;
        out << SlipStyleEntry{leadingNumber(entry.left(1)), entry.mid(2)};
    }
    return out;
}

std::optional<SlipStyleEntry> parseStyleRow(const QString& contents)
{
    const int dash = contents.indexOf(QLatin1Char('-'));
    if (dash < 0) return std::nullopt;
    return SlipStyleEntry{leadingNumber(contents.left(dash)), contents.mid(dash + 1)};
}

std::optional<QList<SlipStyleEntry>> loadSlipStyles(const QString& which)
{
    const bool sei = which == QLatin1String("Sei");
    const QSqlDatabase db = session().MasterDb;
    Query head(db, QStringLiteral("SELECT Contents FROM zSysFunc WHERE Code=?"), {sei ? 395 : 385});
    if (!head.next()) return std::nullopt;
    QList<SlipStyleEntry> out = parseStyleContents(NullToEmpty(head.value(0)));
    Query more(db, QStringLiteral("SELECT Contents FROM zSysFunc WHERE Code>=? AND Code<=? ORDER BY Code"),
               {sei ? 1201 : 1101, sei ? 1299 : 1199});
    while (more.next())
        if (const auto e = parseStyleRow(NullToEmpty(more.value(0)))) out << *e;
    return out;
}

bool slipStyleQuestionOn()
{
    return scalar(session().MasterDb, QStringLiteral("SELECT Code FROM zSysFunc WHERE Code=385")).isValid();
}
