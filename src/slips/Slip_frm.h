#pragma once
// "売上伝票処理" / "仕入伝票処理": the slip screen. The head runs under mBureaucrat, the grid
// shows six rows over fifteen lines. Every rule lives in SlipEditor and SlipRegister; this
// form copies its widgets to the editor, calls it, and shows what it left.
#include <functional>
#include <QHash>
#include "slips/QtSlipScreenForm.h"
#include "slips/SlipEditor.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QScrollBar;

class Slip_frm : public SlipScreenForm {
    Q_OBJECT
public:
    // The grid's columns, in the order of a row.
    enum GridField { fKubun, fHinCode, fHinNamae, fSuu, fSTanka, fTanka, fSGaku, fGaku, fZei, GridFieldCount };
    // Head boxes (ebox) and lists (cbox), in the controller's order.
    enum Box { DnoBox, YearBox, MonthBox, DayBox, SNoBox, TekiyoBox };
    enum List { ClassList, PartnerList, NouList, KubunList, TanList };
    enum Command { ClearCmd, DeleteCmd, LineDelCmd, LineInsCmd, ListCmd, SaveCmd, CloseCmd, CommandCount };

    // The kind ("Dur"/"Dsr") comes from the session's MenuKey at load.
    explicit Slip_frm(QWidget* parent = nullptr);
    ~Slip_frm() override;

    void Register(const QString& mode) override;
    void clearDisplay() override;
    void doFunctionKey(int keyCode) override;
    void clearLines();

    SlipEditor& editor() { return ed_; }
    QLineEdit* box(Box b) const { return ebox_[b]; }
    QComboBox* list(List l) const { return cbox_[l]; }
    QWidget* cell(GridField f, int row) const { return cells_[row][f]; }
    QLabel* zeiInfo(int row) const { return zeiInfo_[row]; }
    QLabel* lineNo(int row) const { return lineNo_[row]; }
    QScrollBar* Bar() const { return bar_; }
    QLabel* total(int i) const { return totals_[i]; }   // "税抜合計額" .. "粗利率"
    QLabel* simeLabel() const { return sime_; }
    QLabel* zeiLabel() const { return zei_; }
    QLabel* officeLabel() const { return office_; }
    QLabel* tipBox() const { return tip_; }
    QPushButton* command(Command c) const { return commands_[c]; }

    // A lookup list call answering the picked code, or "" (the lookup window by default);
    // shared with the deposit screen.
    using Lookup = std::function<QString(const SlipLookup&)>;
    static void setLookup(Lookup f);
    // The plain OK/Cancel box of the delete button (a message box by default).
    using PlainQuestion = std::function<bool(const QString& title, const QString& text)>;
    static void setPlainQuestion(PlainQuestion f);
    // The list of a partner's slips; answers a number as text or "". Until a list window is
    // installed, F6 in the number field ends after the partner lookup.
    using SlipListPicker = std::function<QString(const QString& kind, qint64 partner)>;
    static void setSlipListPicker(SlipListPicker f);

protected:
    SlipHeadEditor& headEditor() override { return ed_; }
    void pushHead() override;
    void pullAll() override;
    bool listLeft(int index) override;
    void focusFirstRow() override { focusCell(fKubun, 0); }
    bool ownHeadKey(bool isList, int index, int key, int shift, bool forward) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    QWidget* buildHead();
    QWidget* buildGrid();
    QWidget* buildFoot();

    // Widgets <-> editor.
    void pushRows();
    void pushAll() { pushHead(); pushRows(); }
    void pullHead();
    void pullLabels();
    void pullRows();
    void setSettlementColour();

    void officeChange();
    bool saveSlip(bool print);
    void deleteByKey();
    void deleteByButton();
    void pickSlipFromList();
    void deleteShownSlip();

    // The grid (QtSlipGridKeys.cpp).
    bool gridKey(GridField f, int row, int keyCode, int shift);
    void gridFocusIn(GridField f, int row);
    void gridLeft(GridField f, int row);
    void focusCell(GridField f, int row);
    void nextLine(int row);
    void productLookup(int row);
    void lineDelete(int row);
    void lineInsert(int row);
    void scrollBy(int delta);
    void showTip(const QString& text, QWidget* under);
    // The grid's steps all run on the editor between a push and a pull.
    template <class F> void onEditor(F f)
    {
        pushAll();
        f();
        pullAll();
    }

    SlipEditor ed_;
    QLabel *sime_ = nullptr, *zei_ = nullptr, *tip_ = nullptr;
    QLabel* nouCaption_ = nullptr;
    QWidget* cells_[SlipEditor::RowCount][GridFieldCount] = {};
    QLabel* zeiInfo_[SlipEditor::RowCount] = {};
    QLabel* lineNo_[SlipEditor::RowCount] = {};
    QScrollBar* bar_ = nullptr;
    QLabel* totals_[5] = {};
    QPushButton* commands_[CommandCount] = {};
    QHash<QObject*, std::pair<GridField, int>> gridOf_;
    int lastRow_ = 0;
};
