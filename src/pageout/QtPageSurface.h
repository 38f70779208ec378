#pragma once
// The Qt side of the page surface: fonts, measuring, and the drawing of one page kept as a
// list of steps, so the page can be drawn when it ends (a late AREA still sizes it) and drawn
// again (the preview repaints).
#include <QFont>
#include <QImage>
#include <QList>
#include <QPointF>
#include <QSizeF>
#include <memory>
#include "pageout/PageSurface.h"

class QFontMetricsF;
class QPainter;

// The font a document names, in twips (points x 20) so every surface measures alike.
// "ＭＳ 明朝" and "ＭＳ ゴシック" draw with IPA Mincho and IPA Gothic (fixed-pitch, as the
// forms' number columns need; the IPAex fonts where those are not installed), "ＭＳ Ｐ明朝" and
// "ＭＳ Ｐゴシック" with IPAex Mincho and IPAex Gothic; a name this machine does not have falls
// back to the Mincho, so Japanese text always has its glyphs.
QFont pageFont(const QString& name, int points);

// Puts right the text of a finished PDF file, so every ideograph copies and searches as itself
// (QtPdfText.cpp).
void fixPdfToUnicode(QByteArray& pdf);

struct PageDrawing {
    struct Step {
        enum Kind { Text, Line, Picture } kind = Text;
        QPointF a, b;
        QString text;
        QFont font;
        QImage image;
    };
    QList<Step> steps;
    QSizeF size;   // twips
    bool sized = false;   // the document has given the size (AREA)
    // Draws the page on a painter whose units are twips.
    void paint(QPainter& p) const;
};

class QtPageSurface : public PageSurface {
public:
    QtPageSurface();
    ~QtPageSurface() override;
    void setPageSize(int widthTwips, int heightTwips) override;
    void setFontName(const QString& name) override;
    void setFontSize(int points) override;
    double textWidth(const QString& text) override;
    double textHeight(const QString& text) override;
    void drawText(double x, double y, const QString& text) override;
    void drawLine(double x1, double y1, double x2, double y2) override;
    bool pictureSize(const QString& file, double* widthTwips, double* heightTwips) override;
    void drawPicture(double x, double y, const QString& file) override;
    bool endPage() override;
    void discardPage() override;
    QString errorText() const override { return error_; }
    int pagesEnded() const { return ended_; }

protected:
    // Puts out one finished page. False with error_ set when the device failed.
    virtual bool emitPage(const PageDrawing& page) = 0;
    QString error_;

private:
    void refont();
    PageDrawing page_;
    QString fontName_;
    int points_ = 10;
    QFont font_;
    std::unique_ptr<QFontMetricsF> metrics_;
    int ended_ = 0;
};
