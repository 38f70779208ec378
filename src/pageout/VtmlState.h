#pragma once
// The one interpreter's state, shared by the page language (Vtml.cpp) and the data driver
// (Pb.cpp). Not for reports: they go through Vtml.h.
#include <QDate>
#include <QList>
#include <QStringList>
#include "pageout/VtmlField.h"
#include "store/Money.h"

class PageSurface;
class ReportRows;
class ReportForm;

constexpr int kVtmlMaxLines = 1001;
constexpr int kVtmlMaxFields = 21;
// Page and running totals are drawn and cleared for these fields only.
constexpr int kVtmlTotalFields = 20;

struct VtmlState {
    QStringList lines;
    QList<VtmlField> fields;
    bool failed = false;
    QString error;
    QString context;          // the line or field being run, for the message

    int AreaWidth = 0, AreaHeight = 0;
    int CurX = 0, CurY = 0;
    int XOffset = 0, YOffset = 0;
    int Zoubun = 0;
    int DataX = 0, DataY = 0;
    int RowsPerPage = 0, RowsOnPage = 0;
    int PageNo = 1;
    int AlignMode = 1;

    Money PageTotal[kVtmlMaxFields];
    Money RunningTotal[kVtmlMaxFields];
    bool NoHeadRule = false, NoTotals = false, DataEnded = false;
    QString GroupField;
    ReportRows* rows = nullptr;
    ReportForm* form = nullptr;
    bool rowsAtEnd = false;
    bool hasPrevGroup = false;
    QString prevGroup;

    PageSurface* surface = nullptr;   // only while VtmlPrint runs
    bool ShrinkOff = false;
    QDate today;                      // invalid: the real date
};

VtmlState& vtml();

// Stops the document: the first failure's message is kept, later steps do nothing.
void vtmlFail(const QString& message);
inline bool vtmlFailed() { return vtml().failed; }
void vtmlFailOverflow();
void vtmlFailArgument();
// A 16-bit store of the interpreter: v rounded half to even; out of range fails with overflow.
bool set16(int& dst, double v);
// ShrinkMode on and the report's ShrinkOff not set.
bool shrinkActive();

// Steps shared with the driver.
void vtmlText(const QString& text);     // the drawing step of every text
void vtmlRule();                        // as the tag LINE
void vtmlCL();                          // as the tag CL
void vtmlLeft();                        // as the tag LEFT
void vtmlFont(const QString& name);     // as the tag FONT
void vtmlSize(int points);              // as the tag SIZE, with the shrink
double vtmlTextWidth(const QString& text);

// The data driver.
bool pbStart();                         // the rows before the first page; false: failed
void pbMeasureFields();
bool pbPageBody();                      // true when the data is finished
