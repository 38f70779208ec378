#include "support/RecordingSurface.h"

namespace {
QString num(double v) { return QString::number(v, 'g', 10); }

bool halfWidth(QChar c) { return c.unicode() < 0x80 || (c.unicode() >= 0xFF61 && c.unicode() <= 0xFF9F); }
}  // namespace

void RecordingSurface::setPageSize(int w, int h) { log << QStringLiteral("AREA %1,%2").arg(w).arg(h); }

void RecordingSurface::setFontName(const QString& name)
{
    fontName = name;
    log << QStringLiteral("FONT ") + name;
}

void RecordingSurface::setFontSize(int points)
{
    fontSize = points;
    log << QStringLiteral("SIZE %1").arg(points);
}

double RecordingSurface::textWidth(const QString& text)
{
    double w = 0;
    for (QChar c : text) w += halfWidth(c) ? fontSize * 10 : fontSize * 20;
    return w;
}

double RecordingSurface::textHeight(const QString&) { return fontSize * 24; }

void RecordingSurface::drawText(double x, double y, const QString& text)
{
    log << QStringLiteral("T %1,%2 %3").arg(num(x), num(y), text);
}

void RecordingSurface::drawLine(double x1, double y1, double x2, double y2)
{
    log << QStringLiteral("L %1,%2 %3,%4").arg(num(x1), num(y1), num(x2), num(y2));
}

bool RecordingSurface::pictureSize(const QString& file, double* w, double* h)
{
    if (!pictures.contains(file)) return false;
    *w = pictures[file].width() * 15;
    *h = pictures[file].height() * 15;
    return true;
}

void RecordingSurface::drawPicture(double x, double y, const QString& file)
{
    log << QStringLiteral("P %1,%2 %3").arg(num(x), num(y), file);
}

bool RecordingSurface::endPage()
{
    if (failAtPage == ended + 1) return false;
    ++ended;
    log << QStringLiteral("END");
    return true;
}

void RecordingSurface::discardPage() { log << QStringLiteral("DROP"); }

QString RecordingSurface::errorText() const { return QStringLiteral("エラー：プリンタが応答しません。"); }

QStringList RecordingSurface::page(int n) const
{
    QStringList out;
    int at = 1;
    for (const QString& e : log) {
        if (e == QLatin1String("END")) {
            if (++at > n) break;
            continue;
        }
        if (at == n) out << e;
    }
    return out;
}

QStringList RecordingSurface::only(const QString& prefix) const
{
    QStringList out;
    for (const QString& e : log)
        if (e.startsWith(prefix)) out << e;
    return out;
}

QStringList RecordingSurface::texts() const
{
    QStringList out;
    for (const QString& e : log)
        if (e.startsWith(QLatin1String("T "))) out << e.section(QLatin1Char(' '), 2);
    return out;
}
