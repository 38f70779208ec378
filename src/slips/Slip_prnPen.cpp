#include "slips/Slip_prnPen.h"

#include <cmath>
#include "entry/ChoiceLists.h"
#include "entry/Convert.h"
#include "pageout/PageOutput.h"
#include "pageout/PageSurface.h"
#include "pageout/Vtml.h"
#include "shell/Session.h"
#include "store/Sql.h"

PaperPen::PaperPen()
{
    PageOutput* out = currentPageOutput();
    surface_ = out ? out->surface() : nullptr;
    // The same shrink as the page language's own text, so the form stays under its data.
    scale_ = session().ShrinkMode && !VtmlShrinkOff() ? 0.9 : 1.0;
}

void PaperPen::font(const QString& name, int points)
{
    if (!surface_) return;
    surface_->setFontName(name);
    surface_->setFontSize(scale_ < 1.0 ? int(std::lround(points * scale_)) : points);
}

double PaperPen::width(const QString& text) const
{
    return surface_ ? surface_->textWidth(text) / scale_ : 0.0;
}

void PaperPen::text(int x, int y, const QString& text)
{
    if (surface_ && !text.isEmpty()) surface_->drawText(x * scale_, y * scale_, text);
}

void PaperPen::textRight(int right, int y, const QString& t)
{
    text(int(std::lround(right - width(t))), y, t);
}

void PaperPen::textCentre(int left, int right, int y, const QString& t)
{
    text(int(std::lround((left + right - width(t)) / 2.0)), y, t);
}

void PaperPen::line(int x1, int y1, int x2, int y2)
{
    if (surface_) surface_->drawLine(x1 * scale_, y1 * scale_, x2 * scale_, y2 * scale_);
}

void PaperPen::box(int left, int top, int right, int bottom)
{
    line(left, top, right, top);
    line(right, top, right, bottom);
    line(right, bottom, left, bottom);
    line(left, bottom, left, top);
}

void PaperPen::dashes(int left, int right, int y)
{
    for (int x = left; x < right; x += 240) line(x, y, std::min(x + 120, right), y);
}

PrintedCompany readPrintedCompany(const QSqlDatabase& db)
{
    PrintedCompany c;
    Query q(db, QStringLiteral("SELECT * FROM Com"));
    if (!q.next()) return c;
    auto text = [&](const QString& column) { return NullToEmpty(q.value(column)).trimmed(); };
    c.name = text(QStringLiteral("Kaisya"));
    const QString yubin = text(QStringLiteral("Yubin"));
    const QString first = (yubin.isEmpty() ? QString() : QStringLiteral("〒") + yubin + QLatin1Char(' '))
                          + text(QStringLiteral("Addr1"));
    if (!first.trimmed().isEmpty()) c.address << first.trimmed();
    if (!text(QStringLiteral("Addr2")).isEmpty()) c.address << text(QStringLiteral("Addr2"));
    QStringList phone;
    if (!text(QStringLiteral("Tel")).isEmpty()) phone << QStringLiteral("TEL ") + text(QStringLiteral("Tel"));
    if (!text(QStringLiteral("Fax")).isEmpty()) phone << QStringLiteral("FAX ") + text(QStringLiteral("Fax"));
    c.phone = phone.join(QStringLiteral("  "));
    const QStringList kinds = fixedListTexts(FixedList::Yokin);
    for (int i = 1; i <= 4; ++i) {
        const QString bank = text(QStringLiteral("Bank%1").arg(i));
        if (bank.isEmpty()) continue;
        const int kind = q.value(QStringLiteral("shurui%1").arg(i)).toInt();
        QStringList parts{bank, text(QStringLiteral("Mise%1").arg(i))};
        if (kind >= 1 && kind <= kinds.size()) parts << kinds[kind - 1];
        parts << text(QStringLiteral("koza%1").arg(i));
        parts.removeAll(QString());
        c.banks.insert(i, parts.join(QLatin1Char(' ')));
    }
    return c;
}
