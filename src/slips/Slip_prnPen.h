#pragma once
// The fixed parts of our printed forms (rules, boxes, captions, the company's letterhead),
// drawn from a report's BKGRD straight on the page being drawn: the page language itself has
// only a rule across the whole page. Positions are twips of the document's area and shrink as
// the page language shrinks its own drawing.
#include <QMap>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

class PageSurface;

class PaperPen {
public:
    // The surface of the current page output; not ready without one.
    PaperPen();
    bool ready() const { return surface_ != nullptr; }

    void font(const QString& name, int points);
    double width(const QString& text) const;
    void text(int x, int y, const QString& text);
    void textRight(int right, int y, const QString& text);
    void textCentre(int left, int right, int y, const QString& text);
    void line(int x1, int y1, int x2, int y2);
    void box(int left, int top, int right, int bottom);
    // A cutting line of short dashes.
    void dashes(int left, int right, int y);

private:
    PageSurface* surface_ = nullptr;
    double scale_ = 1.0;
};

// The issuer block of our forms, from the company row.
struct PrintedCompany {
    QString name;
    QStringList address;   // postal code and address, then the second line
    QString phone;         // "TEL ... FAX ..."
    QMap<int, QString> banks;   // "銀行 支店 普通 1234567" by account number 1..4, those given
};
PrintedCompany readPrintedCompany(const QSqlDatabase& db);
