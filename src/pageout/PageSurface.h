#pragma once
// What the page language draws on. All positions and lengths are twips (1,440 to the inch),
// origin at the top left of the page. The printer, the preview window and a PDF file are Qt
// surfaces (velmora_ui); tests use a recording surface that keeps what was drawn where.
#include <QString>

class PageSurface {
public:
    virtual ~PageSurface() = default;
    // AREA: the page size in twips. A preview surface takes it at any time (a late AREA, after
    // the page's text, must still size the window); a printer or PDF applies it to the next page.
    virtual void setPageSize(int widthTwips, int heightTwips) = 0;
    virtual void setFontName(const QString& name) = 0;
    virtual void setFontSize(int points) = 0;
    // Measures in the current font, in twips.
    virtual double textWidth(const QString& text) = 0;
    virtual double textHeight(const QString& text) = 0;
    // Draws text with its top left corner at (x, y).
    virtual void drawText(double x, double y, const QString& text) = 0;
    // A straight black line.
    virtual void drawLine(double x1, double y1, double x2, double y2) = 0;
    // The size of a picture file in twips, false when it cannot be read as a picture.
    virtual bool pictureSize(const QString& file, double* widthTwips, double* heightTwips) = 0;
    virtual void drawPicture(double x, double y, const QString& file) = 0;
    // Ends the page being drawn. The next drawing starts a fresh page. False when the surface
    // failed (printer error, disk full); the document stops there.
    virtual bool endPage() = 0;
    // Drops the document under way, the page being drawn and the pages it has ended: a
    // document that stopped on an error prints nothing half.
    virtual void discardPage() {}
    // The document under way came to its end whole; its pages may go out. A printer or a file
    // holds a document's pages until then.
    virtual void endDocument() {}
    // Why endPage failed, in the system's wording.
    virtual QString errorText() const { return {}; }
    // True for the preview window (AREA under shrink sizes only the preview).
    virtual bool isPreview() const { return false; }
    // True when the paper is the printer's own, chosen in the print dialog; the preview and a
    // PDF file take their page size from the document (a grid print adds its paper's AREA).
    virtual bool hasOwnPaper() const { return false; }
};
