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

// The first of the families that this machine has.
QString firstInstalled(std::initializer_list<const char*> families)
{
    for (const char* f : families)
        if (QFontDatabase::hasFamily(QString::fromLatin1(f))) return QString::fromLatin1(f);
    return QString::fromLatin1(*families.begin());
}

// The forms name the fixed-pitch Windows fonts: their half-width characters are half an em,
// which the reports' number columns rely on (blanks, digits and commas of one width line the
// figures up at the right). IPA Mincho and IPA Gothic are fixed-pitch the same way; the IPAex
// fonts, of the same design, have proportional Latin and serve the proportional names.
QString familyFor(const QString& name)
{
    static QHash<QString, QString> known = [] {
        const QString mincho = firstInstalled({"IPAMincho", "IPAexMincho"});
        const QString gothic = firstInstalled({"IPAGothic", "IPAexGothic"});
        return QHash<QString, QString>{
            {QStringLiteral("ＭＳ 明朝"), mincho},
            {QStringLiteral("MS Mincho"), mincho},
            {QStringLiteral("ＭＳ ゴシック"), gothic},
            {QStringLiteral("MS Gothic"), gothic},
            {QStringLiteral("ＭＳ Ｐ明朝"), QStringLiteral("IPAexMincho")},
            {QStringLiteral("ＭＳ Ｐゴシック"), QStringLiteral("IPAexGothic")},
        };
    }();
    auto it = known.constFind(name);
    if (it != known.constEnd()) return *it;
    const QString family = QFontDatabase::hasFamily(name) ? name : known.value(QStringLiteral("ＭＳ 明朝"));
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
    if (w > 0 && h > 0) {
        page_.size = QSizeF(w, h);
        page_.sized = true;
    }
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
