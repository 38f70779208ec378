#pragma once
// "入金伝票処理" / "支払伝票処理": the deposit and payment screen. The head runs under
// mBureaucrat, six money rows below it, and beside them the partner's twelve months with the
// balance. Every rule lives in CashSlipEditor and CashRegister; this form copies its widgets
// to the editor, calls it, and shows what it left.
#include <functional>
#include <QHash>
#include "slips/CashSlipEditor.h"
#include "slips/QtSlipScreenForm.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

class Cashier_frm : public SlipScreenForm {
    Q_OBJECT
public:
    // The grid's columns, in the order of a row.
    enum GridField { dKubun, dNaiyou, dGaku, GridFieldCount };
    // Head boxes (ebox) and lists (cbox), in the controller's order.
    enum Box { DnoBox, YearBox, MonthBox, DayBox, NNoBox };
    enum List { ClassList, PartnerList, NouList, TanList };
    enum Command { ClearCmd, DeleteCmd, ListCmd, SaveCmd, CloseCmd, CommandCount };

    // The kind ("Dny"/"Dsh") comes from the session's MenuKey at load.
    explicit Cashier_frm(QWidget* parent = nullptr);
    ~Cashier_frm() override;

    // Opens the screen on a saved slip of `kind` ("Dny" or "Dsh") as if its number had been
    // typed and Enter pressed; a number without rows opens a new slip under it. The caller
    // sets session().SlipCaller first: closing the screen goes back there. nullptr for
    // another kind.
    static Cashier_frm* openSlip(const QString& kind, long dno);
    // The number typed into the number field and Enter, on the screen as it stands.
    void showNumber(long dno);
    // Another kind on this screen: captions, lists and everything shown start afresh.
    void setKind(const QString& kind);

    void Register(const QString& mode) override;
    void clearDisplay() override;
    void doFunctionKey(int keyCode) override;

    CashSlipEditor& editor() { return ed_; }
    QLineEdit* box(Box b) const { return ebox_[b]; }
    QComboBox* list(List l) const { return cbox_[l]; }
    QWidget* cell(GridField f, int row) const { return cells_[row][f]; }
    QLabel* Gakukei() const { return gakukei_; }
    QLineEdit* dKurikoshi() const { return kurikoshi_; }
    QLabel* dZandaka() const { return zandaka_; }
    QLabel* monthCaption(int line) const { return months_[line]; }
    QLabel* Refers(int line) const { return refers_[line]; }
    QLabel* Results(int line) const { return results_[line]; }
    QLabel* titleLabel() const { return title_; }
    QLabel* dateCaption() const { return dateCaption_; }
    QLabel* nouCaption() const { return nouCaption_; }
    QPushButton* command(Command c) const { return commands_[c]; }

    // Lookups and plain message boxes go through SlipScreens (QtSlipScreens.h).
    // The list of a partner's deposit or payment slips; answers a number as text or "".
    using CashListPicker = std::function<QString(const QString& kind, qint64 partner)>;
    static void setCashListPicker(CashListPicker f);

protected:
    SlipHeadEditor& headEditor() override { return ed_; }
    void pushHead() override;
    void pullAll() override;
    bool listLeft(int index) override;
    void focusFirstRow() override { focusCell(dKubun, 0); }
    bool ownHeadKey(bool isList, int index, int key, int shift, bool forward) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;

private:
    // Layout (QtCashierLayout.cpp).
    void build();
    QWidget* buildHead();
    QWidget* buildGrid();
    QWidget* buildPanel();
    QWidget* buildFoot();
    void showKindCaptions();

    // Widgets <-> editor.
    void pushRows();
    void pushAll() { pushHead(); pushRows(); }
    void pullHead();
    void pullRows();
    void pullPanel();

    void saveSlip();
    void deleteSlip();
    void pickCashSlipFromList();
    void carryOverEnter();

    // The grid (QtCashierGrid.cpp).
    bool gridKey(GridField f, int row, int keyCode);
    void gridLeft(GridField f, int row);
    void focusCell(GridField f, int row);
    void rowDelete(int row);
    void rowInsert(int row);

    CashSlipEditor ed_;
    QLabel *dateCaption_ = nullptr, *classCaption_ = nullptr, *partnerCaption_ = nullptr;
    QLabel *nouCaption_ = nullptr, *refersHead_ = nullptr, *resultsHead_ = nullptr;
    QWidget* cells_[CashSlipEditor::RowCount][GridFieldCount] = {};
    QLabel* gakukei_ = nullptr;
    QLineEdit* kurikoshi_ = nullptr;
    QLabel* zandaka_ = nullptr;
    QLabel* months_[CashPanel::MonthCount] = {};
    QLabel* refers_[CashPanel::MonthCount] = {};
    QLabel* results_[CashPanel::MonthCount] = {};
    QPushButton* commands_[CommandCount] = {};
    QHash<QObject*, std::pair<GridField, int>> gridOf_;
};
