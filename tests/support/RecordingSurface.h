#pragma once
// A page surface that keeps what was drawn where, for tests of every report. Text is measured
// by a fixed rule, so positions can be worked out by hand: at size p a half-width character
// (ASCII, half-width kana) is p*10 twips wide, any other p*20; every text is p*24 high.
//
// The log holds one entry a step:
//   "T x,y text"      text with its top left corner at (x, y)
//   "L x1,y1 x2,y2"   a rule
//   "P x,y file"      a picture
//   "AREA w,h"        the page size set
//   "FONT name", "SIZE p"
//   "END"             a page ended; "DROP" the page under way dropped
#include <QMap>
#include <QSize>
#include <QStringList>
#include "pageout/PageOutput.h"
#include "pageout/PageSurface.h"

class RecordingSurface : public PageSurface {
public:
    QStringList log;
    bool preview = false;          // acts as the preview window
    bool ownPaper = false;         // acts as a printer with its own paper
    int failAtPage = 0;            // endPage of this page (from 1) fails
    QMap<QString, QSize> pictures; // readable pictures: file -> size in pixels
    QString fontName = QStringLiteral("ＭＳ 明朝");
    int fontSize = 10;
    int ended = 0;

    void setPageSize(int w, int h) override;
    void setFontName(const QString& name) override;
    void setFontSize(int points) override;
    double textWidth(const QString& text) override;
    double textHeight(const QString& text) override;
    void drawText(double x, double y, const QString& text) override;
    void drawLine(double x1, double y1, double x2, double y2) override;
    bool pictureSize(const QString& file, double* w, double* h) override;
    void drawPicture(double x, double y, const QString& file) override;
    bool endPage() override;
    void discardPage() override;
    QString errorText() const override;
    bool isPreview() const override { return preview; }
    bool hasOwnPaper() const override { return ownPaper; }

    // The entries of one page (from 1), without the END.
    QStringList page(int n) const;
    // Only the entries that start with `prefix` ("T ", "L ").
    QStringList only(const QString& prefix) const;
    // The texts drawn, in order, without positions.
    QStringList texts() const;
};

// An output over a recording surface.
class RecordingOutput : public PageOutput {
public:
    RecordingSurface rec;
    bool finished = false;
    bool abandoned = false;
    PageSurface* surface() override { return &rec; }
    bool finish(QString*) override
    {
        finished = true;
        return true;
    }
    void abandon() override { abandoned = true; }
    int pages() const override { return rec.ended; }
};
