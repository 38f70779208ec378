#include "pageout/QtPageSurface.h"
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QHash>
#include <QImageReader>
#include <QPainter>
#include <QPen>

namespace {

// A4 upright, for a page whose document never said its size.
constexpr double kDefaultWidth = 11906;
constexpr double kDefaultHeight = 16838;
constexpr int kTwipsPerPoint = 20;
constexpr int kTwipsPerPixel = 15;

QString familyFor(const QString& name)
{
    static QHash<QString, QString> known = {
        {QStringLiteral("ＭＳ 明朝"), QStringLiteral("IPAexMincho")},
        {QStringLiteral("ＭＳ Ｐ明朝"), QStringLiteral("IPAexMincho")},
        {QStringLiteral("MS Mincho"), QStringLiteral("IPAexMincho")},
        {QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAexGothic")},
        {QStringLiteral("ＭＳ Ｐゴシック"), QStringLiteral("IPAexGothic")},
        {QStringLiteral("MS Gothic"), QStringLiteral("IPAexGothic")},
    };
    auto it = known.constFind(name);
    if (it != known.constEnd()) return *it;
    const QString family = QFontDatabase::hasFamily(name) ? name : QStringLiteral("IPAexMincho");
    known.insert(name, family);
    return family;
}

}  // namespace

QFont pageFont(const QString& name, int points)
{
    QFont f(familyFor(name));
    f.setPixelSize(qMax(1, points) * kTwipsPerPoint);
    // Metrics must not depend on the screen: the same page measures alike on paper and in PDF.
    f.setHintingPreference(QFont::PreferNoHinting);
    f.setStyleStrategy(QFont::PreferOutline);
    return f;
}

void PageDrawing::paint(QPainter& p) const
{
    // Half a point: a hairline would all but vanish on a fine printer.
    p.setPen(QPen(Qt::black, 10));
    for (const Step& s : steps) {
        switch (s.kind) {
        case Step::Text:
            p.setFont(s.font);
            p.drawText(QPointF(s.a.x(), s.a.y() + QFontMetricsF(s.font).ascent()), s.text);
            break;
        case Step::Line:
            p.drawLine(s.a, s.b);
            break;
        case Step::Picture:
            p.drawImage(QRectF(s.a, QSizeF(s.image.width() * kTwipsPerPixel, s.image.height() * kTwipsPerPixel)), s.image);
            break;
        }
    }
}

QtPageSurface::QtPageSurface() : fontName_(QStringLiteral("ＭＳ 明朝"))
{
    page_.size = QSizeF(kDefaultWidth, kDefaultHeight);
    refont();
}

QtPageSurface::~QtPageSurface() = default;

void QtPageSurface::refont()
{
    font_ = pageFont(fontName_, points_);
    metrics_ = std::make_unique<QFontMetricsF>(font_);
}

void QtPageSurface::setPageSize(int w, int h)
{
    // A page of no size cannot be printed; the last good size stays.
    if (w > 0 && h > 0) page_.size = QSizeF(w, h);
}

void QtPageSurface::setFontName(const QString& name)
{
    fontName_ = name;
    refont();
}

void QtPageSurface::setFontSize(int points)
{
    points_ = points;
    refont();
}

double QtPageSurface::textWidth(const QString& text) { return metrics_->horizontalAdvance(text); }

double QtPageSurface::textHeight(const QString&) { return metrics_->height(); }

void QtPageSurface::drawText(double x, double y, const QString& text)
{
    if (text.isEmpty()) return;
    PageDrawing::Step s;
    s.kind = PageDrawing::Step::Text;
    s.a = QPointF(x, y);
    s.text = text;
    s.font = font_;
    page_.steps << s;
}

void QtPageSurface::drawLine(double x1, double y1, double x2, double y2)
{
    PageDrawing::Step s;
    s.kind = PageDrawing::Step::Line;
    s.a = QPointF(x1, y1);
    s.b = QPointF(x2, y2);
    page_.steps << s;
}

bool QtPageSurface::pictureSize(const QString& file, double* w, double* h)
{
    QImageReader reader(file);
    const QSize size = reader.canRead() ? reader.size() : QSize();
    if (!size.isValid()) return false;
    *w = size.width() * kTwipsPerPixel;
    *h = size.height() * kTwipsPerPixel;
    return true;
}

void QtPageSurface::drawPicture(double x, double y, const QString& file)
{
    PageDrawing::Step s;
    s.kind = PageDrawing::Step::Picture;
    s.a = QPointF(x, y);
    s.image = QImage(file);
    if (!s.image.isNull()) page_.steps << s;
}

bool QtPageSurface::endPage()
{
    const bool ok = emitPage(page_);
    page_.steps.clear();
    if (ok) ++ended_;
    return ok;
}

void QtPageSurface::discardPage() { page_.steps.clear(); }
