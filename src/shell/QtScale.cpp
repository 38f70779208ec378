#include "shell/QtScale.h"
#include <QFontDatabase>
#include <QApplication>
#include <QEvent>
#include <QFont>
#include <QLayout>
#include <QWidget>
#include "shell/Session.h"

namespace {

const char* const kScaled = "velmoraScale";

QSize scaled(const QSize& s, double f)
{
    auto one = [f](int v) { return v >= QWIDGETSIZE_MAX ? v : qRound(v * f); };
    return QSize(one(s.width()), one(s.height()));
}

QFont scaledFont(QFont font, double f)
{
    if (font.pointSizeF() > 0) font.setPointSizeF(font.pointSizeF() * f);
    else if (font.pixelSize() > 0) font.setPixelSize(qRound(font.pixelSize() * f));
    return font;
}

void scaleGeometry(QWidget* w, double f)
{
    if (w->minimumSize() != QSize(0, 0)) w->setMinimumSize(scaled(w->minimumSize(), f));
    if (w->maximumSize() != QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)) w->setMaximumSize(scaled(w->maximumSize(), f));
    QWidget* parent = w->parentWidget();
    if (w->isWindow()) {
        if (w->testAttribute(Qt::WA_Resized)) w->resize(scaled(w->size(), f));
    } else if (parent && !parent->layout()) {
        // A control placed by coordinates: position and size both follow the scale.
        const QRect g = w->geometry();
        w->setGeometry(qRound(g.x() * f), qRound(g.y() * f), qRound(g.width() * f), qRound(g.height() * f));
    }
    if (QLayout* l = w->layout()) {
        const QMargins m = l->contentsMargins();
        l->setContentsMargins(qRound(m.left() * f), qRound(m.top() * f), qRound(m.right() * f), qRound(m.bottom() * f));
        if (l->spacing() > 0) l->setSpacing(qRound(l->spacing() * f));
    }
}

void tabStopOff(QWidget* w)
{
    const Qt::FocusPolicy p = w->focusPolicy();
    if (p & Qt::TabFocus) w->setFocusPolicy(static_cast<Qt::FocusPolicy>(p & ~Qt::TabFocus));
}

class ScaleOnShow : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* o, QEvent* e) override
    {
        if (e->type() == QEvent::Show && o->isWidgetType()) {
            auto* w = static_cast<QWidget*>(o);
            const Qt::WindowType t = w->windowType();
            if (w->isWindow() && (t == Qt::Window || t == Qt::Dialog) && !w->property(kScaled).isValid())
                scaleForm(w);
        }
        return false;
    }
};

} // namespace

void scaleForm(QWidget* form)
{
    if (!form) return;
    Session& s = session();
    if (s.ScreenScale <= Money()) s.ScreenScale = Money::fromYen(1);
    const QList<QWidget*> children = form->findChildren<QWidget*>();
    if (!form->property(kScaled).isValid()) {
        const double f = s.ScreenScale.toDouble();
        form->setProperty(kScaled, f);
        if (f != 1.0) {
            // Every font is read before any is changed and then set on its own widget:
            // inheritance cannot be trusted here, a style sheet stops it.
            QList<QFont> fonts;
            for (QWidget* w : children) fonts << w->font();
            form->setFont(scaledFont(form->font(), f));
            for (int i = 0; i < children.size(); ++i) children[i]->setFont(scaledFont(fonts[i], f));
            scaleGeometry(form, f);
            for (QWidget* w : children) scaleGeometry(w, f);
        }
    }
    tabStopOff(form);
    for (QWidget* w : children) tabStopOff(w);
}

void installFormScaling()
{
    static ScaleOnShow* filter = nullptr;
    if (filter || !qApp) return;
    filter = new ScaleOnShow(qApp);
    qApp->installEventFilter(filter);
}

void installJapaneseFonts()
{
    // "ＭＳ 明朝" and "ＭＳ ゴシック" are fixed-pitch: every half-width letter is half an em, and
    // the forms pad codes and figures with blanks on that rule, on screen as on paper. The IPA
    // fonts are the fixed-pitch ones; IPAex (proportional Latin) serves the "Ｐ" names and
    // stands in when the IPA fonts are missing.
    auto firstInstalled = [](const QString& fixedPitch, const QString& fallback) {
        return QFontDatabase::hasFamily(fixedPitch) ? fixedPitch : fallback;
    };
    QFont::insertSubstitution(QStringLiteral("ＭＳ 明朝"), firstInstalled(QStringLiteral("IPAMincho"), QStringLiteral("IPAexMincho")));
    QFont::insertSubstitution(QStringLiteral("ＭＳ ゴシック"), firstInstalled(QStringLiteral("IPAGothic"), QStringLiteral("IPAexGothic")));
    QFont::insertSubstitution(QStringLiteral("ＭＳ Ｐ明朝"), QStringLiteral("IPAexMincho"));
    QFont::insertSubstitution(QStringLiteral("ＭＳ Ｐゴシック"), QStringLiteral("IPAexGothic"));
    QApplication::setFont(QFont(QStringLiteral("ＭＳ ゴシック"), 11));
}
